#include "sysinfo/sys_metrics.h"

#include "platform/conversions.h"
#include "platform/screen.h"
#include "platform/system_metrics.h"
#include "platform/whole_numbers.h"

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

}  // namespace

KWOSysMetrics::KWOSysMetrics(component::Component& component)
    : mComponent(component), mTwips(platform::TwipsPerPixel::Of(component.platform.screen)) {
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
            return platform::Narrowed<std::int32_t>(std::int64_t{pixels} * mTwips.x);
        case Kind::Y:
            return platform::Narrowed<std::int32_t>(std::int64_t{pixels} * mTwips.y);
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
    return platform::Narrowed<std::int16_t>(Long(metric));
}

std::int32_t KWOSysMetrics::Long(Metric metric) const {
    return mComponent.platform.metrics.Metric(RowOf(metric).index);
}

}  // namespace kwo::sysinfo
