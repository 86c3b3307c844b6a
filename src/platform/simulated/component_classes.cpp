#include "platform/simulated/component_classes.h"

#include "platform/component_error.h"

namespace kwo::platform::simulated {

HostObjectRef ComponentClasses::Create(TextView programmaticId) {
    mWorld.log.Add("CreateObject " + Shown(programmaticId));
    const auto found = mMakers.find(Text(programmaticId));
    if (mWorld.Fails("CoCreateInstance") || found == mMakers.end()) RaiseRuntime(RuntimeError::CannotCreateObject);
    return found->second();
}

}  // namespace kwo::platform::simulated
