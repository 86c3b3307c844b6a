#pragma once

#include "control.h"
#include "font.h"
#include "surface.h"

namespace kwohost {

/// An area that is drawn on. With AutoRedraw what was drawn stays: it goes to a bitmap, which Refresh and painting
/// show; otherwise it goes to the window.
class PictureBox final : public Control {
public:
    PictureBox(ScriptHost& host, Form& form, std::wstring name);

    /// What has been drawn; null without AutoRedraw.
    const Surface* Drawing() const { return mSurface.Context() && mAutoRedraw ? &mSurface : nullptr; }

protected:
    void Paint(HDC context) override;
    void OnResized() override;
    void OnGone() override;

private:
    void AddDrawingMembers();
    void AddSettings();
    void AddWhole(const wchar_t* name, LONG& value);
    /// The context with the box's font and colours.
    HDC Context();
    void Clear();
    void Line(Call& call);
    SIZE SizeOfText(const std::wstring& text);
    void SetAutoRedraw(bool wanted);

    Surface mSurface;
    Font mFont;
    bool mAutoRedraw = false;
    LONG mForeColour = static_cast<LONG>(0x80000012);
    LONG mBackColour = static_cast<LONG>(0x8000000F);
    LONG mFillColour = 0;
    LONG mFillStyle = 1;
    LONG mBorderStyle = 0;
    bool mFontTransparent = true;
    double mCurrentX = 0;
    double mCurrentY = 0;
};

}  // namespace kwohost
