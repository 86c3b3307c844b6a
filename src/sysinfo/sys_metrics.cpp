#include "sysinfo/sys_metrics.h"

#include <cmath>

#include "platform/component_error.h"
#include "platform/conversions.h"
#include "platform/screen.h"
#include "platform/system_metrics.h"

namespace kwo::sysinfo {

namespace {

/// How a value of the system is returned.
enum class Kind { X, Y, None, Flag, Number };

struct Row {
    std::int32_t index;
    Kind kind;
};

constexpr Kind X = Kind::X;
constexpr Kind Y = Kind::Y;
// Intended: MinSpacingX is in pixels whatever the scale mode, unlike MinSpacingY.
constexpr Kind NONE = Kind::None;

constexpr Row kRows[] = {
#define DIMENSION(order, member, index, constant, axis) {index, axis},
#define FLAG(order, member, index, constant) {index, Kind::Flag},
#define NUMBER(order, type, member, index, constant) {index, Kind::Number},
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER
};

const Row& RowOf(Metric metric) {
    return kRows[static_cast<std::size_t>(metric)];
}

std::int32_t Product(std::int32_t pixels, std::int32_t twipsPerPixel) {
    const std::int64_t product = std::int64_t{pixels} * twipsPerPixel;
    if (product != static_cast<std::int32_t>(product)) platform::RaiseRuntime(platform::RuntimeError::Overflow);
    return static_cast<std::int32_t>(product);
}

}  // namespace

KWOSysMetrics::KWOSysMetrics(component::Component& component)
    : mComponent(component),
      mTwipsPerPixelX(static_cast<std::int32_t>(std::nearbyint(component.platform.screen.TwipsPerPixelX()))),
      mTwipsPerPixelY(static_cast<std::int32_t>(std::nearbyint(component.platform.screen.TwipsPerPixelY()))) {
    mComponent.SetProgramName();
}

void KWOSysMetrics::SetScaleMode(std::int16_t value) {
    // Intended: the guard looks at the stored mode, so one odd value is accepted and then stays.
    if (mScaleMode == kTwips || mScaleMode == kPixels) mScaleMode = value;
}

std::int32_t KWOSysMetrics::Dimension(Metric metric, const platform::Variant& scaleMode) {
    mEffectiveMode = platform::IsMissing(scaleMode) ? mScaleMode : mComponent.platform.conversions.ToInt16(scaleMode);
    const std::int32_t pixels = Long(metric);
    if (mEffectiveMode != kTwips) return pixels;
    switch (RowOf(metric).kind) {
        case Kind::X:
            return Product(pixels, mTwipsPerPixelX);
        case Kind::Y:
            return Product(pixels, mTwipsPerPixelY);
        default:
            return pixels;
    }
}

bool KWOSysMetrics::Flag(Metric metric) const {
    // The other bits tell which networks there are.
    if (metric == Metric::Network) return (Long(metric) & 1) != 0;
    return Long(metric) != 0;
}

std::int16_t KWOSysMetrics::Short(Metric metric) const {
    const std::int32_t value = Long(metric);
    if (value != static_cast<std::int16_t>(value)) platform::RaiseRuntime(platform::RuntimeError::Overflow);
    return static_cast<std::int16_t>(value);
}

std::int32_t KWOSysMetrics::Long(Metric metric) const {
    return mComponent.platform.metrics.Metric(RowOf(metric).index);
}

}  // namespace kwo::sysinfo
