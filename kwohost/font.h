#pragma once

#include <olectl.h>

#include <functional>

#include "com_values.h"

namespace kwohost {

class FontListener;

/// The font of a control: a standard font object that scripts share and change.
/// It counts in the twips of this host, so a font of 10 points has 200 twips at every resolution.
class Font {
public:
    /// 8.25 points MS Sans Serif, not bold. Raises what the system answers if it makes no font.
    Font();
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;
    ~Font();

    /// The font object for scripts. Who changes it changes this font, and every other one that shares it.
    ComPtr<IDispatch> Object() const;
    /// Uses another font object from now on. Raises error 13 if it is not a font.
    void Share(IDispatch* object);
    /// The font as it is now. The font object owns the handle: ask again after a script has run.
    HFONT Handle() const;
    /// Calls `changed` after each change of the font object, and for another one. Its failure is lost in the first
    /// case: nobody waits for it.
    void WhenChanged(std::function<void()> changed);

private:
    /// Makes a point 20 twips, in the twips that everything else is counted in.
    /// Needed after each change of the font object.
    void CountInTwips();
    void Listen();
    void StopListening();

    /// The object that scripts get.
    ComPtr<IFont> mFont;
    std::function<void()> mChanged;
    /// Null while nobody wants to know of changes.
    ComPtr<FontListener> mListener;
    DWORD mCookie = 0;
};

}  // namespace kwohost
