#pragma once

#include <windows.h>

namespace kwohost {

/// A bitmap with a context to draw on it.
/// It is as deep in colours as the display.
///
///     surface.Resize({100, 40}, colour);
///     ::LineTo(surface.Context(), 10, 10);
class Surface {
public:
    Surface() = default;
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    ~Surface() { Drop(); }

    /// The context to draw on; null before Resize and after Drop. The surface owns it.
    HDC Context() const { return mContext; }
    /// The size of the bitmap in pixels; meaningless while there is none.
    SIZE Size() const { return mSize; }
    /// Changes the size, at least to one pixel.
    /// The picture stays where it fits; new area gets the colour. The context stays the same.
    /// Raises error 7 if the system has no memory for that size; nothing has changed then.
    void Resize(SIZE size, COLORREF colour);
    /// Frees bitmap and context. Does nothing if there are none.
    void Drop();

private:
    /// Null while there is no bitmap.
    HDC mContext = nullptr;
    HBITMAP mBitmap = nullptr;
    /// What the context came with. It is put back before the bitmap is freed.
    HGDIOBJ mFirstBitmap = nullptr;
    SIZE mSize = {};
};

}  // namespace kwohost
