#pragma once

#include <functional>
#include <map>

#include "platform/component_factory.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The automation classes on the desktop: those that a test has added.
/// Upper and lower case of names are the same.
/// The log shows `CreateObject "Name"`. CoCreateInstance can fail; the call then raises CannotCreateObject, as for an
/// unknown class.
class SimulatedComponentFactory final : public ComponentFactory {
public:
    using Maker = std::function<HostObjectRef()>;

    explicit SimulatedComponentFactory(World& world) : mWorld(world) {
        world.faults.Declare({{"CoCreateInstance", {-2147221164, Faults::kNoMemory}}});
    }

    HostObjectRef Create(TextView programmaticId) override;

    /// Adds a class, or replaces the one of that name. `maker` runs for each object.
    void Install(TextView programmaticId, Maker maker);

private:
    World& mWorld;
    std::map<Text, Maker> mMakers;  ///< by folded name
};

}  // namespace kwo::platform::simulated
