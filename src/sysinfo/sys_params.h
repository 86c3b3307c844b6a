#pragma once

#include <array>
#include <cstdint>

#include "component/component.h"
#include "platform/system_fonts.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

/// The fonts of the desktop as they were when the object was made. Each is shared with all who get it: a change shows
/// to the next one.
class KWOSysParams {
public:
    explicit KWOSysParams(component::Component& component);

    platform::HostObjectRef CaptionFont() const { return mFonts[kCaption]; }
    /// A null object; it gives the caption font the name of the small caption font.
    platform::HostObjectRef SmCaptionFont();
    platform::HostObjectRef MenuFont() const { return mFonts[kMenu]; }
    platform::HostObjectRef StatusFont() const { return mFonts[kStatus]; }
    platform::HostObjectRef MessageFont() const { return mFonts[kMessage]; }

private:
    enum : std::size_t { kCaption, kSmallCaption, kMenu, kStatus, kMessage, kCount };

    template <class ValueOf>
    void LetAll(platform::TextView property, ValueOf&& valueOf);

    std::int16_t mTwipsPerPixelY;
    platform::NonClientFonts mMetrics;
    bool mMetricsRead = false;
    std::array<platform::HostObjectRef, kCount> mFonts;
};

}  // namespace kwo::sysinfo
