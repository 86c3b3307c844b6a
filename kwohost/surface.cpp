#include "surface.h"

#include <algorithm>

namespace kwohost {

void Surface::Resize(SIZE size, COLORREF colour) {
    size = {std::max<LONG>(size.cx, 1), std::max<LONG>(size.cy, 1)};
    if (mBitmap && size.cx == mSize.cx && size.cy == mSize.cy) return;
    const HDC screen = GetDC(nullptr);
    const HBITMAP larger = CreateCompatibleBitmap(screen, size.cx, size.cy);
    const HDC painter = CreateCompatibleDC(screen);
    const HGDIOBJ before = SelectObject(painter, larger);
    const RECT area = {0, 0, size.cx, size.cy};
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(painter, &area, brush);
    DeleteObject(brush);
    if (mBitmap) BitBlt(painter, 0, 0, mSize.cx, mSize.cy, mContext, 0, 0, SRCCOPY);
    SelectObject(painter, before);
    DeleteDC(painter);
    if (!mContext) {
        mContext = CreateCompatibleDC(screen);
        mFirstBitmap = SelectObject(mContext, larger);
    } else {
        SelectObject(mContext, larger);
        DeleteObject(mBitmap);
    }
    ReleaseDC(nullptr, screen);
    mBitmap = larger;
    mSize = size;
}

void Surface::Drop() {
    if (!mContext) return;
    SelectObject(mContext, mFirstBitmap);
    SelectObject(mContext, GetStockObject(SYSTEM_FONT));
    DeleteDC(mContext);
    DeleteObject(mBitmap);
    mContext = nullptr;
    mBitmap = nullptr;
}

}  // namespace kwohost
