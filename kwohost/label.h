#pragma once

#include "control.h"
#include "font.h"

namespace kwohost {

/// A line or more of text.
class Label final : public Control {
public:
    /// A label without a window; it takes no focus.
    Label(ScriptHost& host, Form& form, std::wstring name);

protected:
    void Paint(HDC context) override;

private:
    void AddColour(const wchar_t* name, LONG& colour);
    void Changed() { InvalidateRect(Window(), nullptr, FALSE); }

    std::wstring mCaption;
    LONG mAlignment = 0;  ///< 0 left, 1 right, 2 centre
    LONG mForeColour = static_cast<LONG>(0x80000012);
    LONG mBackColour = static_cast<LONG>(0x8000000F);
    Font mFont;
};

}  // namespace kwohost
