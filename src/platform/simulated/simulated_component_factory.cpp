#include "platform/simulated/simulated_component_factory.h"

#include "platform/component_error.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {

HostObjectRef SimulatedComponentFactory::Create(TextView programmaticId) {
    const Call call(mWorld, "CoCreateInstance");
    mWorld.log.Add("CreateObject " + Shown(programmaticId));
    const auto found = mMakers.find(Folded(programmaticId));
    if (call.Fails() || found == mMakers.end()) RaiseRuntime(RuntimeError::CannotCreateObject);
    return found->second();
}

void SimulatedComponentFactory::Install(TextView programmaticId, Maker maker) {
    mMakers[Folded(programmaticId)] = std::move(maker);
}

}  // namespace kwo::platform::simulated
