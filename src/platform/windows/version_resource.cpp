#include "platform/windows/version_resource.h"

#include <windows.h>

#include <cwchar>

#include "platform/windows/ansi.h"
#include "platform/windows/quiet_drives.h"

namespace kwo::platform::windows {

VersionResource::VersionResource(SystemLibrary& versions, const std::wstring& path) : mVersions(versions) {
    const auto sizeOf = mVersions.Find<decltype(::GetFileVersionInfoSizeW)>("GetFileVersionInfoSizeW");
    const auto read = mVersions.Find<decltype(::GetFileVersionInfoW)>("GetFileVersionInfoW");
    if (sizeOf == nullptr || read == nullptr) return;
    const QuietDrives quiet;
    DWORD unused = 0;
    mData.resize(sizeOf(path.c_str(), &unused));
    if (!mData.empty() && !read(path.c_str(), 0, static_cast<DWORD>(mData.size()), mData.data())) {
        mData.clear();
    }
}

HostApplication::Version VersionResource::Number() const {
    unsigned size = 0;
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(Find(L"\\", size));
    if (fixed == nullptr || size < sizeof *fixed) return {};
    return {HIWORD(fixed->dwFileVersionMS), LOWORD(fixed->dwFileVersionMS), LOWORD(fixed->dwFileVersionLS)};
}

Text VersionResource::String(const wchar_t* name) const {
    constexpr wchar_t kHexDigits[] = L"0123456789abcdef";
    unsigned size = 0;
    const auto* const translation = static_cast<const WORD*>(Find(L"\\VarFileInfo\\Translation", size));
    if (translation == nullptr || size < 2 * sizeof(WORD)) return {};
    std::wstring path = L"\\StringFileInfo\\";
    for (const WORD half : {translation[0], translation[1]}) {
        for (int shift = 12; shift >= 0; shift -= 4)
            path += kHexDigits[half >> shift & 15];
    }
    path += L'\\';
    path += name;
    const auto* const string = static_cast<const wchar_t*>(Find(path.c_str(), size));
    return string == nullptr ? Text() : FromWide(std::wstring_view(string, ::wcsnlen(string, size)));
}

const void* VersionResource::Find(const wchar_t* path, unsigned& size) const {
    const auto query = mVersions.Find<decltype(::VerQueryValueW)>("VerQueryValueW");
    void* found = nullptr;
    if (mData.empty() || query == nullptr || !query(mData.data(), path, &found, &size)) return nullptr;
    return found;
}

}  // namespace kwo::platform::windows
