#pragma once

#include <span>

#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/simulated_object.h"

namespace kwo::controls {

/// Gives `box` the members of a host's picture box, 2,000 by 3,000 twips, with the given font, form and handles.
inline void FurnishBox(platform::simulated::SimulatedObject& box, const platform::HostObjectRef& font,
                       const platform::HostObjectRef& form, std::int32_t context, std::int32_t window) {
    using platform::TextView;
    using platform::Variant;
    box.SetProperty(u"Font", font);
    box.SetProperty(u"Parent", form);
    box.SetProperty(u"hDC", context);
    box.SetProperty(u"hWnd", window);
    box.SetProperty(u"AutoRedraw", false);
    box.SetProperty(u"Width", 2000.0f);
    box.SetProperty(u"Height", 3000.0f);
    for (const TextView colour : {u"BackColor", u"ForeColor"})
        box.SetProperty(colour, std::int32_t{0});
    box.SetProperty(u"FillStyle", std::int16_t{1});
    box.SetProperty(u"FontTransparent", false);
    for (const TextView method : {u"Cls", u"Refresh", u"SetFocus", u"Line"})
        box.SetMethod(method, [](std::span<Variant>) -> Variant { return platform::Empty{}; });
    box.SetMethod(u"TextHeight", [](std::span<Variant>) -> Variant { return 195.0f; });
}

}  // namespace kwo::controls
