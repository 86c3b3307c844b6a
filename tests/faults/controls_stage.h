#pragma once

#include "controls/box_fixture.h"
#include "controls/mouse_button.h"
#include "scenario.h"

namespace kwo::fault_tests {

/// A form with a picture box, which a control takes.
struct ControlsStage : Stage {
    static constexpr std::int32_t kWindow = 500;

    ControlsStage() {
        const auto nothing = [](std::span<Variant>) -> Variant { return platform::Empty{}; };
        form->SetProperty(u"WindowState", std::int16_t{0});
        form->SetProperty(u"ActiveControl", HostObjectRef(other));
        for (const TextView procedure : {u"OnChangeMonth", u"OnChangeDate", u"OnButtonClick"})
            form->SetMethod(procedure, nothing);
        other->SetProperty(u"hWnd", std::int32_t{501});
        font->SetProperty(u"Bold", false);
        controls::FurnishBox(*box, font, form, 77, kWindow);
        desktop.windows.windows[kWindow] = {u"Box"};
        desktop.drawing.clientAreas[kWindow] = {0, 0, 100, 40};
        InstallCompanion(*this);
    }
    void Release() override {
        box.reset();
        font.reset();
        form.reset();
        other.reset();
    }

    std::shared_ptr<SimulatedObject> form = Make(u"Form", "form");
    std::shared_ptr<SimulatedObject> font = Make(u"Font", "font");
    std::shared_ptr<SimulatedObject> box = Make(u"PictureBox", "box");
    std::shared_ptr<SimulatedObject> other = Make(u"TextBox", "other");
};

}  // namespace kwo::fault_tests
