#pragma once

#include <cstdint>

#include "component/component.h"
#include "platform/twips.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

/// The members of the class, in the order of the interface's slots, from platform/metrics.def.
/// A new one goes to the end.
enum class Metric : std::size_t {
#define DIMENSION(order, member, index, constant, axis) member,
#define FLAG(order, member, index, constant) member,
#define NUMBER(order, type, member, index, constant) member,
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER
};

/// The sizes and settings of the desktop.
/// Each call asks the system again; a value that the system does not know is 0. Sizes are in pixels or twips, by the
/// scale mode: 1 means twips, every other value pixels.
class KWOSysMetrics {
public:
    /// The scale modes, with the numbers that forms of the host use.
    static constexpr std::int16_t kTwips = 1;
    static constexpr std::int16_t kPixels = 3;

    /// Reads the twips per pixel of the screen, once.
    /// `component` must outlive the object. Sets the component's program name.
    explicit KWOSysMetrics(component::Component& component);

    /// The scale mode for calls that give none; 3 at first.
    std::int16_t ScaleMode() const { return mScaleMode; }
    /// Sets the scale mode while the old one is 1 or 3; any other value stays for good: see docs/intended.md.
    void SetScaleMode(std::int16_t value);

    /// A width or height, in `scaleMode` or, if that is missing, in the stored scale mode.
    /// MinSpacingX is always in pixels.
    /// Raises Overflow for a size that does not fit 32 bits or a scale mode that does not fit 16, and TypeMismatch for
    /// a scale mode that is not a number.
    std::int32_t Dimension(Metric metric, const platform::Variant& scaleMode);
    /// A setting that is true or false; for Network the first bit, because the others say which networks there are.
    bool Flag(Metric metric) const;
    /// A count. Raises Overflow if it does not fit 16 bits.
    std::int16_t Short(Metric metric) const;
    /// A number as the system returns it.
    std::int32_t Long(Metric metric) const;

private:
    component::Component& mComponent;
    std::int16_t mScaleMode = kPixels;
    /// The mode of the call that runs.
    std::int16_t mEffectiveMode = kPixels;
    const platform::TwipsPerPixel mTwips;
};

}  // namespace kwo::sysinfo
