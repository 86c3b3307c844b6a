#include "output.h"

#include <string>

namespace kwohost {

namespace {

std::string ToUtf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

}  // namespace

std::size_t ConsoleChunk(std::wstring_view text) {
    // A console accepts no more than some 64 KB in one call.
    constexpr std::size_t kMost = 8192;
    if (text.size() <= kMost) return text.size();
    return IS_HIGH_SURROGATE(text[kMost - 1]) ? kMost - 1 : kMost;
}

Output::Output(DWORD which) : mHandle(GetStdHandle(which)) {
    DWORD mode = 0;
    if (mHandle == INVALID_HANDLE_VALUE) mHandle = nullptr;
    mIsConsole = mHandle && GetConsoleMode(mHandle, &mode);
}

bool Output::Write(std::wstring_view text) {
    if (!mHandle || text.empty()) return true;
    return mIsConsole ? WriteToConsole(text) : WriteBytes(ToUtf8(text));
}

bool Output::WriteToConsole(std::wstring_view text) {
    while (!text.empty()) {
        DWORD written = 0;
        const auto chunk = static_cast<DWORD>(ConsoleChunk(text));
        if (!WriteConsoleW(mHandle, text.data(), chunk, &written, nullptr) || written == 0) return false;
        text.remove_prefix(written);
    }
    return true;
}

bool Output::WriteBytes(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(mHandle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) || written == 0)
            return false;
        bytes.remove_prefix(written);
    }
    return true;
}

}  // namespace kwohost
