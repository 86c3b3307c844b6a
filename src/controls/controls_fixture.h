#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "component/component.h"
#include "controls/box_fixture.h"
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
        FurnishBox(*made, font, form, context, window);
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
