#pragma once

#include <functional>
#include <map>

#include "platform/component_factory.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The automation classes that are installed on the desktop: those that a test has put there. Names are found
/// without regard to case.
class SimulatedComponentFactory final : public ComponentFactory {
public:
    using Maker = std::function<HostObjectRef()>;

    explicit SimulatedComponentFactory(World& world) : mWorld(world) { world.faults.Declare({"CoCreateInstance"}); }

    HostObjectRef Create(TextView programmaticId) override;

    void Install(TextView programmaticId, Maker maker);

private:
    World& mWorld;
    std::map<Text, Maker> mMakers;  ///< by folded name
};

}  // namespace kwo::platform::simulated
