#include "platform/windows/ansi.h"

#include <windows.h>

#include <new>

namespace kwo::platform::windows {

namespace {

/// The length of converted text. In a code page that the system has and without flags, a conversion fails only for
/// lack of memory. An empty text in its place would name another key, file or value.
std::size_t Converted(int length) {
    if (length <= 0) throw std::bad_alloc();
    return static_cast<std::size_t>(length);
}

}  // namespace

Text FromAnsi(std::string_view bytes, unsigned codePage) {
    const int size = static_cast<int>(bytes.size());
    if (size == 0) return {};
    std::wstring wide(bytes.size(), L'\0');
    const int length = ::MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), size);
    wide.resize(Converted(length));
    return FromWide(wide);
}

std::string ToAnsi(TextView text) {
    if (text.empty()) return {};
    const std::wstring wide = ToWide(text);
    const int size = static_cast<int>(wide.size());
    std::string bytes(Converted(::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
                      '\0');
    Converted(::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                    nullptr));
    return bytes;
}

}  // namespace kwo::platform::windows
