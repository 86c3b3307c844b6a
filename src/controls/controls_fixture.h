#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "component/component.h"
#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "support/raised.h"

namespace kwo::controls {

using Lines = std::vector<std::string>;
using platform::ComponentError;
using platform::HostObjectRef;
using platform::Text;
using platform::TextView;
using platform::Variant;
using platform::simulated::SimulatedObject;
using test_support::Raised;

/// A form with a picture box on a simulated desktop.
class ControlsTest : public testing::Test {
protected:
    static constexpr std::int32_t kContext = 77;
    static constexpr std::int32_t kWindow = 500;

    ControlsTest() {
        form = desktop.MakeObject(u"Form", "form");
        form->SetProperty(u"WindowState", std::int16_t{0});
        box = MakeBox(kContext, kWindow);
    }
    /// A form holds its active control, and that its form.
    ~ControlsTest() override { form->SetProperty(u"ActiveControl", HostObjectRef()); }

    std::shared_ptr<SimulatedObject> MakeBox(std::int32_t context, std::int32_t window) {
        auto made = desktop.MakeObject(u"PictureBox", "box");
        font = desktop.MakeObject(u"Font", "font");
        font->SetProperty(u"Bold", false);
        made->SetProperty(u"Font", HostObjectRef(font));
        made->SetProperty(u"Parent", HostObjectRef(form));
        made->SetProperty(u"hDC", context);
        made->SetProperty(u"hWnd", window);
        made->SetProperty(u"AutoRedraw", false);
        made->SetProperty(u"Width", 2000.0f);
        made->SetProperty(u"Height", 3000.0f);
        for (const TextView colour : {u"BackColor", u"ForeColor"})
            made->SetProperty(colour, std::int32_t{0});
        made->SetProperty(u"FillStyle", std::int16_t{1});
        made->SetProperty(u"FontTransparent", false);
        for (const TextView method : {u"Cls", u"Refresh", u"SetFocus", u"Line"})
            made->SetMethod(method, [](std::span<Variant>) -> Variant { return platform::Empty{}; });
        made->SetMethod(u"TextHeight", [](std::span<Variant>) -> Variant { return 195.0f; });
        return made;
    }

    static ComponentError Refusal(std::int32_t number = 380) { return {number, u"Host", u"Refused", {}, 0}; }

    /// The log since the last time, but without its waiting for messages and the one reading of the user's settings.
    Lines TakeLog() {
        Lines lines = desktop.log.Lines();
        std::erase_if(lines, [](const std::string& line) {
            return line == "Pump" || line.starts_with("Wait") || line.starts_with("GetLocaleInfo") ||
                   line.starts_with("GetTimeZone");
        });
        desktop.log.Clear();
        return lines;
    }

    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    std::shared_ptr<SimulatedObject> form;
    std::shared_ptr<SimulatedObject> font;
    std::shared_ptr<SimulatedObject> box;
};

}  // namespace kwo::controls
