#pragma once

#include "access_key.h"
#include "font.h"
#include "painted_control.h"

namespace kwohost {

/// A line or more of text, broken between words. It takes no focus: its access key calls the control behind it.
/// Its default member is Caption.
class Label final : public PaintedControl {
public:
    /// A label without a window; it takes no focus.
    Label(ScriptHost& host, Form& form, std::wstring name);

    wchar_t AccessKey() const override { return mUseMnemonic ? AccessKeyOf(mCaption) : wchar_t{0}; }
    /// The label takes no focus: the next control gets it.
    void FocusByAccessKey() override;

protected:
    void Paint(HDC context) override;
    /// The lines break elsewhere.
    void OnResized() override;

private:
    /// Adds a colour that is drawn again when it changes.
    void AddColour(const wchar_t* name, LONG& colour);
    /// The system paints the label again when it has time.
    void Changed() { InvalidateRect(Window(), nullptr, FALSE); }

    std::wstring mCaption;
    /// 0 left, 1 right, 2 centre; anything else counts as left.
    LONG mAlignment = 0;
    /// Whether `&` makes an access key.
    bool mUseMnemonic = true;
    LONG mForeColour = static_cast<LONG>(0x80000012);
    LONG mBackColour = static_cast<LONG>(0x8000000F);
    Font mFont;
};

}  // namespace kwohost
