#include "bitmap_file.h"

#include <cstdint>

#include "com_values.h"

namespace kwohost {

namespace {

/// A bitmap of 24 bits in memory, with a context to draw on it. Its pixels are laid out as in a file.
class Canvas {
public:
    Canvas(LONG width, LONG height) : mContext(CreateCompatibleDC(nullptr)) {
        // A file counts its bytes with 32 bits.
        constexpr std::int64_t kMostBytes = 0x7FFF0000;
        const std::int64_t rowBytes = (std::int64_t{width} * 3 + 3) / 4 * 4;
        mInfo.bmiHeader = {sizeof mInfo.bmiHeader, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
        if (rowBytes <= kMostBytes && height <= kMostBytes / rowBytes) {
            mInfo.bmiHeader.biSizeImage = static_cast<DWORD>(rowBytes * height);
            mBitmap = CreateDIBSection(mContext, &mInfo, DIB_RGB_COLORS, &mPixels, nullptr, 0);
        }
        mFirstBitmap = mBitmap ? SelectObject(mContext, mBitmap) : nullptr;
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() {
        if (mFirstBitmap) SelectObject(mContext, mFirstBitmap);
        DeleteDC(mContext);
        DeleteObject(mBitmap);
    }

    bool IsThere() const { return mFirstBitmap != nullptr; }
    HDC Context() const { return mContext; }
    const BITMAPINFOHEADER& Header() const { return mInfo.bmiHeader; }
    const void* Pixels() const { return mPixels; }

private:
    HDC mContext;
    HBITMAP mBitmap = nullptr;
    HGDIOBJ mFirstBitmap = nullptr;
    BITMAPINFO mInfo = {};
    void* mPixels = nullptr;
};

void Write(HANDLE file, const void* bytes, DWORD size, bool& isGood) {
    DWORD written = 0;
    isGood = isGood && WriteFile(file, bytes, size, &written, nullptr) && written == size;
}

void WriteFileOf(const Canvas& canvas, const std::wstring& path) {
    constexpr DWORD kHeaders = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    const DWORD pixelBytes = canvas.Header().biSizeImage;
    const BITMAPFILEHEADER header = {0x4D42, kHeaders + pixelBytes, 0, 0, kHeaders};
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    bool isGood = file != INVALID_HANDLE_VALUE;
    if (isGood) {
        Write(file, &header, sizeof header, isGood);
        Write(file, &canvas.Header(), sizeof(BITMAPINFOHEADER), isGood);
        Write(file, canvas.Pixels(), pixelBytes, isGood);
        CloseHandle(file);
        if (!isGood) DeleteFileW(path.c_str());
    }
    if (!isGood) Fail(RuntimeError::PathAccess, L"The file '" + path + L"' cannot be written");
}

}  // namespace

void SaveArea(HDC context, const RECT& area, const std::wstring& path) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (width <= 0 || height <= 0) Fail(RuntimeError::InvalidPicture, L"The picture is empty");
    const Canvas canvas(width, height);
    if (!canvas.IsThere()) Fail(RuntimeError::OutOfMemory, L"There is no memory for a picture of this size");
    if (!BitBlt(canvas.Context(), 0, 0, width, height, context, area.left, area.top, SRCCOPY))
        Fail(RuntimeError::InvalidPicture, L"The picture cannot be read");
    // The system may draw later than it is asked to.
    GdiFlush();
    WriteFileOf(canvas, path);
}

void SaveBitmap(HBITMAP bitmap, const std::wstring& path) {
    BITMAP facts = {};
    if (GetObjectW(bitmap, sizeof facts, &facts) == 0) Fail(RuntimeError::InvalidPicture, L"There is no picture");
    const HDC context = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(context, bitmap);
    const auto putBack = [&] {
        if (before) SelectObject(context, before);
        DeleteDC(context);
    };
    try {
        if (!before) Fail(RuntimeError::InvalidPicture, L"The picture is in use");
        SaveArea(context, {0, 0, facts.bmWidth, facts.bmHeight}, path);
    } catch (...) {
        putBack();
        throw;
    }
    putBack();
}

}  // namespace kwohost
