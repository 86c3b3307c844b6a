#include "platform/windows/ansi.h"

#include <windows.h>

namespace kwo::platform::windows {

Text FromAnsi(std::string_view bytes, unsigned codePage) {
    const int size = static_cast<int>(bytes.size());
    if (size == 0) return {};
    std::wstring wide(bytes.size(), L'\0');
    const int length = ::MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length));
    return FromWide(wide);
}

std::string ToAnsi(TextView text) {
    if (text.empty()) return {};
    const std::wstring wide = ToWide(text);
    const int size = static_cast<int>(wide.size());
    std::string bytes(
        static_cast<std::size_t>(::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
        '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes;
}

}  // namespace kwo::platform::windows
