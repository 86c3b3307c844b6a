#pragma once

#include <windows.h>

namespace kwohost {

/// A bitmap with a context to draw on it.
class Surface {
public:
    Surface() = default;
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    ~Surface() { Drop(); }

    /// The context to draw on; null before Resize and after Drop.
    HDC Context() const { return mContext; }
    /// The size of the bitmap.
    SIZE Size() const { return mSize; }
    /// Changes the size. The picture stays where it fits; new area gets the colour. The context stays the same. Raises
    /// error 7 when the system has no memory for that size; nothing has changed then.
    void Resize(SIZE size, COLORREF colour);
    /// Frees bitmap and context.
    void Drop();

private:
    HDC mContext = nullptr;
    HBITMAP mBitmap = nullptr;
    HGDIOBJ mFirstBitmap = nullptr;
    SIZE mSize = {};
};

}  // namespace kwohost
