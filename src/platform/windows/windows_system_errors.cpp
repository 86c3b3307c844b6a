#include "platform/windows/windows_system_errors.h"

#include "platform/windows/ansi.h"

namespace kwo::platform::windows {

namespace {

using InternetGetLastResponseInfoAFunction = BOOL WINAPI(DWORD* error, char* buffer, DWORD* length);
using WNetGetLastErrorAFunction = DWORD WINAPI(DWORD* error, char* text, DWORD textSize, char* provider,
                                               DWORD providerSize);

constexpr DWORD kTextBuffer = 256;

}  // namespace

Text WindowsSystemErrors::SystemText(std::int32_t code) {
    return Formatted(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code);
}

Text WindowsSystemErrors::ModuleText(TextView module, std::int32_t code) {
    const HMODULE handle = mLastError.After(::GetModuleHandleA(ToAnsi(module).c_str()));
    return handle == nullptr ? Text() : Formatted(FORMAT_MESSAGE_FROM_HMODULE, handle, code);
}

Text WindowsSystemErrors::Formatted(DWORD flags, HMODULE module, std::int32_t code) {
    char buffer[kTextBuffer] = "";
    // A text with placeholders makes the call fail, because there are no values for them.
    const DWORD length = mLastError.After(
        ::FormatMessageA(flags, module, static_cast<DWORD>(code), 0, buffer, kTextBuffer - 1, nullptr));
    return FromBuffer(buffer, length);
}

SystemErrors::InternetResponse WindowsSystemErrors::LastInternetResponse(std::uint32_t capacity) {
    // Loaded if the host has not loaded it: then there is no response, which the library itself reports.
    auto* const function =
        mLastError.After(mInternet.Find<InternetGetLastResponseInfoAFunction>("InternetGetLastResponseInfoA"));
    if (function == nullptr) return {};
    std::string buffer(capacity, '\0');
    DWORD error = 0;
    DWORD length = capacity;
    const bool succeeded =
        mLastError.After(function(&error, capacity == 0 ? nullptr : buffer.data(), &length)) != FALSE;
    InternetResponse response{succeeded, length, {}};
    if (succeeded) response.text = FromAnsi(std::string_view(buffer).substr(0, buffer.find('\0')));
    return response;
}

SystemErrors::NetworkError WindowsSystemErrors::LastNetworkError() {
    auto* const function = mLastError.After(mNetwork.Find<WNetGetLastErrorAFunction>("WNetGetLastErrorA"));
    char text[kTextBuffer] = "";
    char provider[kTextBuffer] = "";
    DWORD error = 0;
    if (function == nullptr ||
        mLastError.After(function(&error, text, kTextBuffer, provider, kTextBuffer)) != NO_ERROR) {
        return {};
    }
    return {FromBufferUpToZero(text), FromBufferUpToZero(provider)};
}

}  // namespace kwo::platform::windows
