#include "source_file.h"

#include <windows.h>

#include <memory>
#include <utility>

#include "error_report.h"
#include "source_text.h"

namespace kwohost {

namespace {

constexpr LONGLONG kLargestScript = 64 * 1024 * 1024;

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

[[noreturn]] void Unreadable(std::wstring message) {
    throw UnreadableSource{std::move(message)};
}

[[noreturn]] void UnreadableBySystem(DWORD code) {
    const std::wstring text = SystemText(code);
    Unreadable(text.empty() ? L"error " + std::to_wstring(code) : text);
}

std::wstring FullPath(const std::wstring& path) {
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(needed, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), needed, full.data(), nullptr));
    return full.empty() ? path : full;
}

Language LanguageOf(const std::wstring& path) {
    const auto dot = path.find_last_of(L'.');
    const std::wstring extension = dot == std::wstring::npos ? L"" : path.substr(dot);
    if (lstrcmpiW(extension.c_str(), L".vbs") == 0) return Language::VBScript;
    if (lstrcmpiW(extension.c_str(), L".js") == 0) return Language::JScript;
    Unreadable(L"the name of a script ends in .vbs or .js");
}

std::string ReadBytes(const std::wstring& path) {
    const HANDLE opened = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) UnreadableBySystem(GetLastError());
    const std::unique_ptr<HANDLE, HandleCloser> file(opened);
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.get(), &size)) UnreadableBySystem(GetLastError());
    if (size.QuadPart > kLargestScript) Unreadable(L"the file is larger than 64 MB");
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        UnreadableBySystem(GetLastError());
    bytes.resize(read);
    return bytes;
}

std::wstring Decoded(std::string_view bytes) {
    try {
        const std::u16string text = DecodeSource(bytes);
        return {text.begin(), text.end()};
    } catch (const UndecodableSource& cause) {
        Unreadable({cause.reason.begin(), cause.reason.end()});
    }
}

}  // namespace

SourceFile ReadSource(const std::wstring& path) {
    try {
        const Language language = LanguageOf(path);
        return {FullPath(path), language, Decoded(ReadBytes(path))};
    } catch (const UnreadableSource& reason) {
        Unreadable(L"cannot read the script " + path + L": " + reason.message);
    }
}

}  // namespace kwohost
