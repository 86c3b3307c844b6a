#include "platform/simulated/component_classes.h"

#include "platform/component_error.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {

HostObjectRef ComponentClasses::Create(TextView programmaticId) {
    mWorld.log.Add("CreateObject " + Shown(programmaticId));
    const auto found = mMakers.find(Folded(programmaticId));
    if (mWorld.Fails("CoCreateInstance") || found == mMakers.end()) RaiseRuntime(RuntimeError::CannotCreateObject);
    return found->second();
}

void ComponentClasses::Install(TextView programmaticId, Maker maker) {
    mMakers[Folded(programmaticId)] = std::move(maker);
}

}  // namespace kwo::platform::simulated
