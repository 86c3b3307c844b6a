#pragma once

#include <cstdint>

#include "component/component.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

/// The members of the class, in the order of their slots.
enum class Metric : std::size_t {
#define DIMENSION(order, member, index, constant, axis) member,
#define FLAG(order, member, index, constant) member,
#define NUMBER(order, type, member, index, constant) member,
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER
};

/// The system's metrics. Dimensions are in pixels or twips; every scale mode but 1 means pixels.
class KWOSysMetrics {
public:
    static constexpr std::int16_t kTwips = 1;
    static constexpr std::int16_t kPixels = 3;

    explicit KWOSysMetrics(component::Component& component);

    std::int16_t ScaleMode() const { return mScaleMode; }
    void SetScaleMode(std::int16_t value);

    /// In the scale mode given, or in the stored one when that is missing. Raises Overflow and TypeMismatch.
    std::int32_t Dimension(Metric metric, const platform::Variant& scaleMode);
    bool Flag(Metric metric) const;
    /// Raises Overflow for what 16 bits do not hold.
    std::int16_t Short(Metric metric) const;
    std::int32_t Long(Metric metric) const;

private:
    component::Component& mComponent;
    std::int16_t mScaleMode = kPixels;
    std::int16_t mEffectiveMode = kPixels;
    std::int32_t mTwipsPerPixelX;
    std::int32_t mTwipsPerPixelY;
};

}  // namespace kwo::sysinfo
