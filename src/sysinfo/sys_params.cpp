#include "sysinfo/sys_params.h"

#include <cmath>

#include "platform/screen.h"
#include "platform/whole_numbers.h"

namespace kwo::sysinfo {

namespace {

using platform::FontRecord;
using platform::Text;

constexpr std::int32_t kBoldAbove = 550;
constexpr double kTwipsPerPoint = 20;

double PointSize(const FontRecord& font, std::int32_t twipsPerPixel) {
    const std::int64_t twips = std::abs(std::int64_t{font.height} * twipsPerPixel);
    return static_cast<double>(platform::Narrowed<std::int32_t>(twips)) / kTwipsPerPoint;
}

}  // namespace

KWOSysParams::KWOSysParams(component::Component& component) {
    component.SetProgramName();
    const platform::Platform& services = component.platform;
    mTwipsPerPixelY = platform::Rounded<std::int16_t>(services.screen.TwipsPerPixelY());
    services.fonts.QueryNonClient(mMetrics);
    for (platform::HostObjectRef& font : mFonts)
        font = services.fonts.MakeFont();

    LetAll(u"Name", [](const FontRecord& font) { return font.faceName; });
    LetAll(u"Italic", [](const FontRecord& font) { return font.italic != 0; });
    LetAll(u"Underline", [](const FontRecord& font) { return font.underline != 0; });
    LetAll(u"Strikethrough", [](const FontRecord& font) { return font.strikeOut != 0; });
    LetAll(u"Bold", [](const FontRecord& font) { return font.weight > kBoldAbove; });
    LetAll(u"Size", [&](const FontRecord& font) { return PointSize(font, mTwipsPerPixelY); });
}

platform::HostObjectRef KWOSysParams::SmCaptionFont() {
    // Intended: the caption font gets the name of the small caption font, through its default property, and no font is
    // returned.
    CaptionFont()->Let(u"Name", mFonts[kSmallCaption]->Get(u"Name"));
    return nullptr;
}

template <class ValueOf>
void KWOSysParams::LetAll(platform::TextView property, ValueOf&& valueOf) {
    const FontRecord* const records[kCount] = {&mMetrics.caption, &mMetrics.smallCaption, &mMetrics.menu,
                                               &mMetrics.status, &mMetrics.message};
    for (std::size_t i = 0; i < kCount; ++i)
        mFonts[i]->Let(property, platform::Variant(valueOf(*records[i])));
}

}  // namespace kwo::sysinfo
