#pragma once

#include "painted_control.h"

namespace kwohost {

/// An area of a form that holds controls.
/// It takes no focus and has a colour of its own.
/// Components use it as a container: it has ScaleMode, ScaleX, ScaleY, ScaleWidth and ScaleHeight.
class Panel final : public PaintedControl {
public:
    Panel(ScriptHost& host, Form& form, std::wstring name) : PaintedControl(host, form, std::move(name), false) {
        AddScaleMembers();
        AddVariable(
            L"BackColor", [this](Call& call) { call.ReturnWhole(mBackColour); },
            [this](Call& call) {
                mBackColour = call.Whole(0);
                InvalidateRect(Window(), nullptr, FALSE);
            });
    }

protected:
    /// Fills the whole panel; the controls on it paint themselves.
    void Paint(HDC context) override {
        const RECT area = ClientArea();
        const HBRUSH brush = CreateSolidBrush(ToColour(mBackColour));
        FillRect(context, &area, brush);
        DeleteObject(brush);
    }

private:
    /// The system's colour of button faces, until the script sets another.
    LONG mBackColour = static_cast<LONG>(0x8000000F);
};

}  // namespace kwohost
