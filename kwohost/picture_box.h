#pragma once

#include "font.h"
#include "painted_control.h"
#include "surface.h"

namespace kwohost {

/// An area that is drawn on.
/// With AutoRedraw what was drawn stays: it goes to a bitmap, which Refresh and painting show; otherwise it goes to
/// the window.
/// Components draw on it through hDC, Line and TextHeight, so it has the members that docs/hosts.md names.
class PictureBox final : public PaintedControl {
public:
    PictureBox(ScriptHost& host, Form& form, std::wstring name);

    /// What has been drawn; null without AutoRedraw. Valid until AutoRedraw or the size changes.
    const Surface* Drawing() const { return mSurface.Context() && mAutoRedraw ? &mSurface : nullptr; }

protected:
    /// Shows the bitmap or, without AutoRedraw, fires Paint.
    void Paint(HDC context) override;
    /// The bitmap gets the new size; what fits stays.
    void OnResized() override;
    /// Frees the bitmap.
    void OnGone() override;
    /// A box that does nothing with keys and focus does not show that it has the focus.
    bool IsTabStopByDefault() const override;

private:
    /// hDC, Cls, Refresh, Line, Print, TextHeight and TextWidth.
    void AddDrawingMembers();
    /// Colours, font and the like.
    void AddSettings();
    /// Adds a setting that is only kept.
    void AddWhole(const wchar_t* name, LONG& value);
    /// The context with the box's font and colours, for one drawing call.
    HDC Context();
    /// Fills the box with its colour and puts CurrentX and CurrentY to 0.
    void Clear();
    /// From corner to corner, both of them included.
    void Line(Call& call);
    /// In pixels, at least one line high.
    SIZE SizeOfText(const std::wstring& text);
    /// Makes or drops the bitmap. Raises error 7 without memory for it; nothing has changed then.
    void SetAutoRedraw(bool wanted);

    /// There is a bitmap in it only with AutoRedraw.
    Surface mSurface;
    Font mFont;
    bool mAutoRedraw = false;
    LONG mForeColour = static_cast<LONG>(0x80000012);
    LONG mBackColour = static_cast<LONG>(0x8000000F);
    LONG mFillColour = 0;
    LONG mFillStyle = 1;
    LONG mBorderStyle = 0;
    bool mFontTransparent = true;
    /// Where Print begins, in the box's units.
    double mCurrentX = 0;
    double mCurrentY = 0;
};

}  // namespace kwohost
