#pragma once

#include <olectl.h>

#include "com_values.h"
#include "units.h"

namespace kwohost {

/// The font of a control: a standard font object that scripts share and change.
/// It counts in the twips of this host, so a font of 10 points has 200 twips at every resolution.
class Font {
public:
    /// 8.25 points MS Sans Serif, not bold. Raises what the system answers if it makes no font.
    Font() {
        FONTDESC first = {};
        first.cbSizeofstruct = sizeof first;
        first.lpstrName = const_cast<LPOLESTR>(L"MS Sans Serif");
        first.cySize.int64 = 82'500;
        first.sWeight = FW_NORMAL;
        Check(OleCreateFontIndirect(&first, IID_IFont, mFont.OutVoid()));
        CountInTwips();
    }

    /// The font object for scripts. Who changes it changes this font, and every other one that shares it.
    ComPtr<IDispatch> Object() const {
        ComPtr<IDispatch> object;
        Check(mFont->QueryInterface(IID_PPV_ARGS(object.Out())));
        return object;
    }
    /// Uses another font object from now on. Raises error 13 if it is not a font.
    void Share(IDispatch* object) {
        ComPtr<IFont> font;
        if (FAILED(object->QueryInterface(IID_IFont, font.OutVoid())))
            Fail(RuntimeError::TypeMismatch, L"This is no font");
        mFont = font;
        CountInTwips();
    }
    /// The font as it is now. The font object owns the handle: ask again after a script has run.
    HFONT Handle() const {
        HFONT handle = nullptr;
        Check(mFont->get_hFont(&handle));
        return handle;
    }

private:
    /// Makes a point 20 twips, in the twips that everything else is counted in.
    /// Needed after each change of the font object.
    void CountInTwips() {
        constexpr LONG kTwipsPerInch = 1440;
        constexpr LONG kHimetricPerInch = 2540;
        Check(mFont->SetRatio(kTwipsPerInch, kHimetricPerInch * static_cast<LONG>(TwipsPerPixel(Axis::Y))));
    }

    /// The object that scripts get.
    ComPtr<IFont> mFont;
};

}  // namespace kwohost
