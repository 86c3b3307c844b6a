#pragma once

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
        box->SetProperty(u"Font", HostObjectRef(font));
        box->SetProperty(u"Parent", HostObjectRef(form));
        box->SetProperty(u"hDC", std::int32_t{77});
        box->SetProperty(u"hWnd", kWindow);
        box->SetProperty(u"AutoRedraw", false);
        box->SetProperty(u"Width", 2000.0f);
        box->SetProperty(u"Height", 3000.0f);
        for (const TextView colour : {u"BackColor", u"ForeColor"})
            box->SetProperty(colour, std::int32_t{0});
        box->SetProperty(u"FillStyle", std::int16_t{1});
        box->SetProperty(u"FontTransparent", false);
        for (const TextView method : {u"Cls", u"Refresh", u"SetFocus", u"Line"})
            box->SetMethod(method, nothing);
        box->SetMethod(u"TextHeight", [](std::span<Variant>) -> Variant { return 195.0f; });
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
