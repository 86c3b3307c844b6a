#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "component/component.h"
#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/text_codec.h"

namespace kwo::fault_tests {

using platform::Date;
using platform::Handle;
using platform::HostObjectRef;
using platform::Text;
using platform::TextView;
using platform::Variant;
using platform::simulated::SimulatedObject;

/// A fresh world for one round: a desktop, a component and the objects of a host. A stage of a class adds the object
/// under test.
class Stage {
public:
    Stage();
    virtual ~Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// What the properties of the object under test tell.
    virtual std::string State() { return {}; }
    /// Gives back what the caller owns by the members' rules, after each run.
    virtual void AfterRun() {}
    /// Releases the object under test, and every reference of the stage's own.
    virtual void Release() {}

    /// An object of the host. Who still holds it at the end is found out.
    std::shared_ptr<SimulatedObject> Make(TextView type, std::string label = {});
    /// Ends everything, and tells what was not given back; empty if nothing is left.
    std::string EndAndLookWhatIsLeft();

    /// The pointer before every run, which must be there again after it.
    static constexpr std::intptr_t kPointer = 77;

    platform::simulated::SimulatedDesktop desktop;
    std::optional<component::Component> component;

private:
    std::string LeftOnDesktop() const;

    std::vector<std::weak_ptr<SimulatedObject>> mObjects;
};

/// A message companion with the texts `u"text 1900"` and so on, for the stages that show messages.
void InstallCompanion(Stage& stage);

inline std::string Shown(TextView text) {
    return platform::simulated::Shown(text);
}
inline std::string Shown(const Variant& value) {
    return platform::simulated::Shown(value);
}
inline std::string Shown(bool value) {
    return value ? "True" : "False";
}

}  // namespace kwo::fault_tests
