#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/accessibility.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// What a screen reader would read of the windows.
/// A desktop has no annotation service until a test installs one:
///
///     desktop.accessibility.Install();
///     EXPECT_EQ(desktop.accessibility.TakeCalls(), (Lines{"Begin 500 Role 43", "Set 500 Name \"Save\"", ...}));
///
/// Its calls are in a list of their own, so that the log tells the same with and without it. Calls that can fail:
/// CoCreateInstance, SetHwndProp, SetHwndPropStr and ClearHwndProps.
class SimulatedAccessibility final : public Accessibility {
public:
    explicit SimulatedAccessibility(World& world);

    bool Begin(Handle window, std::int32_t role) override;
    bool SetNumber(Handle window, Property property, std::int32_t number) override;
    bool SetText(Handle window, Property property, TextView text) override;
    void End(Handle window) noexcept override;
    /// Runs `onNotify`.
    void Notify(Handle window, std::uint32_t event) override;

    /// From now on there is a service.
    void Install() { mIsInstalled = true; }
    /// The calls since the last time: `Begin 500 Role 43`, `Set 500 State 8`, `Notify 500 0x800a`, `End 500`.
    std::vector<std::string> TakeCalls() { return std::exchange(mCalls, {}); }

    /// The code of a reader in this process.
    std::function<void(Handle window, std::uint32_t event)> onNotify;
    /// What a reader would read now, by window.
    std::map<Handle, std::map<Property, std::string>> annotations;

private:
    /// One call of the service; false if it refuses.
    bool Set(std::string_view name, std::string_view verb, Handle window, Property property, const std::string& value);

    World& mWorld;
    bool mIsInstalled = false;
    /// The service could not be created once.
    bool mIsRefused = false;
    std::vector<std::string> mCalls;
};

}  // namespace kwo::platform::simulated
