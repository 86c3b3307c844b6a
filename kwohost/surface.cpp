#include "surface.h"

#include <algorithm>

#include "com_values.h"

namespace kwohost {

void Surface::Resize(SIZE size, COLORREF colour) {
    size = {std::max<LONG>(size.cx, 1), std::max<LONG>(size.cy, 1)};
    if (mBitmap && size.cx == mSize.cx && size.cy == mSize.cy) return;
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, size.cx, size.cy);
    const HDC painter = CreateCompatibleDC(screen);
    if (!mContext) mContext = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    if (!bitmap || !painter || !mContext) {
        DeleteDC(painter);
        DeleteObject(bitmap);
        Fail(RuntimeError::OutOfMemory, L"There is no memory for a drawing of this size");
    }

    const HGDIOBJ before = SelectObject(painter, bitmap);
    const RECT area = {0, 0, size.cx, size.cy};
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(painter, &area, brush);
    DeleteObject(brush);
    if (mBitmap) BitBlt(painter, 0, 0, mSize.cx, mSize.cy, mContext, 0, 0, SRCCOPY);
    SelectObject(painter, before);
    DeleteDC(painter);

    const HGDIOBJ replaced = SelectObject(mContext, bitmap);
    if (mBitmap) {
        DeleteObject(mBitmap);
    } else {
        mFirstBitmap = replaced;
    }
    mBitmap = bitmap;
    mSize = size;
}

void Surface::Drop() {
    if (!mContext) return;
    if (mBitmap) SelectObject(mContext, mFirstBitmap);
    SelectObject(mContext, GetStockObject(SYSTEM_FONT));
    DeleteDC(mContext);
    DeleteObject(mBitmap);
    mContext = nullptr;
    mBitmap = nullptr;
}

}  // namespace kwohost
