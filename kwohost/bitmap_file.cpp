#include "bitmap_file.h"

#include <vector>

#include "com_values.h"

namespace kwohost {

namespace {

void Write(HANDLE file, const void* bytes, std::size_t size, bool& isGood) {
    DWORD written = 0;
    isGood = isGood && WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr) && written == size;
}

}  // namespace

void SaveBitmap(HBITMAP bitmap, const std::wstring& path) {
    BITMAP facts = {};
    GetObjectW(bitmap, sizeof facts, &facts);
    const LONG rowSize = (facts.bmWidth * 3 + 3) / 4 * 4;
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader,
                      facts.bmWidth,
                      facts.bmHeight,
                      1,
                      24,
                      BI_RGB,
                      static_cast<DWORD>(rowSize * facts.bmHeight),
                      0,
                      0,
                      0,
                      0};
    std::vector<BYTE> pixels(info.bmiHeader.biSizeImage);
    const HDC screen = GetDC(nullptr);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(facts.bmHeight), pixels.data(), &info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);

    constexpr DWORD kHeaders = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    const BITMAPFILEHEADER header = {0x4D42, kHeaders + info.bmiHeader.biSizeImage, 0, 0, kHeaders};
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    bool isGood = file != INVALID_HANDLE_VALUE;
    if (isGood) {
        Write(file, &header, sizeof header, isGood);
        Write(file, &info.bmiHeader, sizeof info.bmiHeader, isGood);
        Write(file, pixels.data(), pixels.size(), isGood);
        CloseHandle(file);
    }
    if (!isGood) Fail(RuntimeError::PathAccess, L"The file '" + path + L"' cannot be written");
}

void SaveScreen(const RECT& area, const std::wstring& path) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC screen = GetDC(nullptr);
    const HDC copier = CreateCompatibleDC(screen);
    const HBITMAP copy = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(copier, copy);
    BitBlt(copier, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(copier, before);
    DeleteDC(copier);
    ReleaseDC(nullptr, screen);
    try {
        SaveBitmap(copy, path);
    } catch (const ScriptFailure&) {
        DeleteObject(copy);
        throw;
    }
    DeleteObject(copy);
}

}  // namespace kwohost
