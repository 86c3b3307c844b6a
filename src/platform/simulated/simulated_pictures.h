#pragma once

#include "platform/pictures.h"
#include "platform/simulated/simulated_conversions.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// Pictures are objects with the properties Type and Handle.
class SimulatedPictures final : public Pictures {
public:
    explicit SimulatedPictures(World& world) : mConversions(world.services.conversions) {}

    std::int32_t Type(HostObject& picture) override { return mConversions.ToInt32(picture.Get(u"Type")); }
    Handle NativeHandle(HostObject& picture) override { return mConversions.To32Bits(picture.Get(u"Handle")); }

private:
    SimulatedConversions& mConversions;
};

}  // namespace kwo::platform::simulated
