#include "source_file.h"

#include <windows.h>

#include <algorithm>
#include <memory>

#include "error_report.h"

namespace kwohost {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF"sv;
constexpr std::string_view kUtf16Mark = "\xFF\xFE"sv;
constexpr std::string_view kSwappedUtf16Mark = "\xFE\xFF"sv;
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

std::wstring FromUtf16(std::string_view bytes) {
    if (bytes.size() % 2 != 0) Unreadable(L"the file is UTF-16 with half a character at its end");
    std::wstring text(bytes.size() / 2, L'\0');
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(text.data()));
    return text;
}

std::wstring FromUtf8(std::string_view bytes) {
    if (bytes.empty()) return {};
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
    if (length == 0) Unreadable(L"the file is neither UTF-8 nor UTF-16; save it in one of them");
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, text.data(), length);
    return text;
}

/// A script starts with a character of ASCII, so a zero byte behind it is the other half of a UTF-16 character.
bool LooksLikeUtf16(std::string_view bytes) {
    return bytes.size() >= 2 && bytes[0] != '\0' && bytes[1] == '\0';
}

std::wstring WithWindowsLineEnds(const std::wstring& text) {
    std::wstring result;
    result.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' || text[i] == L'\n') {
            if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') ++i;
            result += L"\r\n";
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace

SourceFile ReadSource(const std::wstring& path) {
    try {
        const Language language = LanguageOf(path);
        return {FullPath(path), language, DecodeSource(ReadBytes(path))};
    } catch (const UnreadableSource& reason) {
        Unreadable(L"cannot read the script " + path + L": " + reason.message);
    }
}

std::wstring DecodeSource(std::string_view bytes) {
    std::wstring text;
    if (bytes.starts_with(kSwappedUtf16Mark))
        Unreadable(L"the file is UTF-16 with the high byte first; save it as UTF-8");
    if (bytes.starts_with(kUtf16Mark))
        text = FromUtf16(bytes.substr(kUtf16Mark.size()));
    else if (bytes.starts_with(kUtf8Mark))
        text = FromUtf8(bytes.substr(kUtf8Mark.size()));
    else
        text = LooksLikeUtf16(bytes) ? FromUtf16(bytes) : FromUtf8(bytes);
    // The engines take text that ends at the first null: without this check the rest would be dropped silently.
    const auto null = text.find(L'\0');
    if (null != std::wstring::npos) {
        const std::wstring before = WithWindowsLineEnds(text.substr(0, null));
        const auto line = std::count(before.begin(), before.end(), L'\n') + 1;
        Unreadable(L"the file has a null character in line " + std::to_wstring(line));
    }
    return WithWindowsLineEnds(text);
}

}  // namespace kwohost
