#pragma once

#include <memory>

#include "component/component.h"
#include "hostile_host.h"
#include "platform/simulated/simulated_desktop.h"

namespace kwo::fuzz {

/// A form of a hostile host with what controls need, on a simulated desktop.
class HostileControls {
public:
    explicit HostileControls(Input& theInput) : input(theInput), host(theInput) {
        desktop.accessibility.Install();
        desktop.windows.windows[kWindow] = {u"Box"};
    }

    /// A picture box with a font and a form, all new.
    platform::HostObjectRef MakeBox() {
        const auto box = host.Make(u"PictureBox");
        const auto form = host.Make(u"Form");
        const auto font = host.Make(u"Font");
        font->members = {{u"Bold", false}};
        form->members = {{u"OnChangeMonth", platform::Empty{}},
                         {u"OnChangeDate", platform::Empty{}},
                         {u"OnButtonClick", platform::Empty{}},
                         {u"ActiveControl", platform::HostObjectRef(box)}};
        box->members = {{u"Font", platform::HostObjectRef(font)},
                        {u"Parent", platform::HostObjectRef(form)},
                        {u"hDC", std::int32_t{77}},
                        {u"hWnd", kWindow},
                        {u"AutoRedraw", false},
                        {u"Width", 2000.0f},
                        {u"Height", 3000.0f},
                        {u"BackColor", std::int32_t{0}},
                        {u"ForeColor", std::int32_t{0}},
                        {u"FillStyle", std::int16_t{1}},
                        {u"FontTransparent", false},
                        {u"TextHeight", 195.0f},
                        {u"Cls", platform::Empty{}},
                        {u"Refresh", platform::Empty{}},
                        {u"SetFocus", platform::Empty{}},
                        {u"Line", platform::Empty{}}};
        return box;
    }
    /// A box, now and then something else.
    platform::HostObjectRef AnyBox() {
        if (!input.Once(8)) return MakeBox();
        return input.Flag() ? host.Make(u"TextBox") : nullptr;
    }
    /// A control in a container of its own.
    platform::HostObjectRef MakePane() {
        const auto pane = host.Make(u"PictureBox");
        const auto container = host.Make(u"Form");
        container->members = {{u"hWnd", mNextWindow++}, {u"ScaleMode", std::int16_t{1}},
                              {u"ScaleWidth", 6000.0f}, {u"ScaleHeight", 4000.0f},
                              {u"ScaleX", 15.0f},       {u"ScaleY", 15.0f}};
        const auto form = host.Make(u"Form");
        form->members = {{u"WindowState", std::int16_t{0}}};
        pane->members = {{u"Container", platform::HostObjectRef(container)},
                         {u"Parent", platform::HostObjectRef(form)},
                         {u"Move", platform::Empty{}},
                         {u"Left", 600.0f},
                         {u"Top", 600.0f},
                         {u"Width", 600.0f},
                         {u"Height", 600.0f}};
        return pane;
    }
    /// A pane, now and then something else.
    platform::HostObjectRef AnyPane() {
        if (!input.Once(8)) return MakePane();
        return input.Flag() ? host.Make(u"TextBox") : nullptr;
    }

    /// A place in twips: on the control, at its edge, or anywhere.
    float Place() {
        switch (input.Below(4)) {
            case 0:
            case 1:
                return static_cast<float>(input.Byte()) * 12;
            case 2:
                return static_cast<float>(input.Bits<std::int16_t>());
            default:
                return input.Bits<float>();
        }
    }
    platform::Variant AnyOption() { return input.Flag() ? platform::Variant(platform::Missing{}) : host.AnyValue(); }

    static constexpr std::int32_t kWindow = 500;

    Input& input;
    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    HostileHost host;

private:
    std::int32_t mNextWindow = 900;
};

}  // namespace kwo::fuzz
