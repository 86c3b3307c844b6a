#pragma once

#include <array>
#include <cstdint>

#include "component/component.h"
#include "platform/system_fonts.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

/// The fonts of the desktop, as they were when the object was created.
/// Each getter returns the same font object each time: a caller who changes it changes it for all.
class KWOSysParams {
public:
    /// Reads the fonts.
    /// If the system does not tell them, the fonts have empty names and the size 0. A font is bold from a weight of
    /// 551 on; its size is in points.
    /// Raises what creating a font object or setting its properties raises, and Overflow for a size out of range.
    /// `component` is not kept.
    explicit KWOSysParams(component::Component& component);

    /// The font of window captions.
    platform::HostObjectRef CaptionFont() const { return mFonts[kCaption]; }
    /// Returns the null object, and gives the caption font the name of the small caption font: see docs/intended.md.
    /// Raises what the font raises.
    platform::HostObjectRef SmCaptionFont();
    /// The font of menus.
    platform::HostObjectRef MenuFont() const { return mFonts[kMenu]; }
    /// The font of status bars.
    platform::HostObjectRef StatusFont() const { return mFonts[kStatus]; }
    /// The font of message boxes.
    platform::HostObjectRef MessageFont() const { return mFonts[kMessage]; }

private:
    enum : std::size_t { kCaption, kSmallCaption, kMenu, kStatus, kMessage, kCount };

    /// Sets one property of all fonts.
    template <class ValueOf>
    void LetAll(platform::TextView property, ValueOf&& valueOf);

    std::int16_t mTwipsPerPixelY;
    /// As the system told them when the object was created.
    platform::NonClientFonts mMetrics;
    std::array<platform::HostObjectRef, kCount> mFonts;
};

}  // namespace kwo::sysinfo
