#pragma once

#include "platform/conversions.h"
#include "platform/pictures.h"

namespace kwo::platform::simulated {

/// Pictures are objects with the properties Type and Handle.
class SimulatedPictures final : public Pictures {
public:
    explicit SimulatedPictures(Conversions& conversions) : mConversions(conversions) {}

    std::int32_t Type(HostObject& picture) override { return mConversions.ToInt32(picture.Get(u"Type")); }
    Handle NativeHandle(HostObject& picture) override { return mConversions.To32Bits(picture.Get(u"Handle")); }

private:
    Conversions& mConversions;
};

}  // namespace kwo::platform::simulated
