#pragma once

#include <functional>

#include "platform/keyboard.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// Keys that are sent stand in the log: `Keys {TAB}` or, with Shift, `Keys +{TAB}`. SendInput can fail.
class SimulatedKeyboard final : public Keyboard {
public:
    explicit SimulatedKeyboard(World& world) : mWorld(world) {
        world.faults.Declare({{"SendInput", {5, Faults::kNoMemory}}});
    }

    void SendTab(bool backwards) override {
        const Call call(mWorld, "SendInput");
        if (call.Fails()) return;
        mWorld.log.Add(backwards ? "Keys +{TAB}" : "Keys {TAB}");
        if (onTab) onTab();
    }

    /// Runs at the end of each SendTab, as the control that gets the focus would.
    std::function<void()> onTab;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
