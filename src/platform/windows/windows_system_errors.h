#pragma once

#include "platform/system_errors.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The texts of FormatMessageA, in the system's language.
/// The library for the last internet error is wininet.dll, for the network mpr.dll; without them there is no text.
/// A text with placeholders counts as none, because there are no values for them.
class WindowsSystemErrors final : public SystemErrors {
public:
    explicit WindowsSystemErrors(Context& context) : mLastError(context.lastError), mNetwork(context.network) {}

    /// The value that all services of the platform share, not the thread's own.
    std::int32_t Last() override { return mLastError.Get(); }
    /// Sets the thread's own value too, for code of the host that reads it.
    void SetLast(std::int32_t code) override { mLastError.Set(code); }
    Text SystemText(std::int32_t code) override;
    /// GetModuleHandleA finds the module; it is not loaded for this.
    Text ModuleText(TextView module, std::int32_t code) override;
    /// Loads wininet.dll if the host has not: then there is no response, which the library itself reports.
    InternetResponse LastInternetResponse(std::uint32_t capacity) override;
    NetworkError LastNetworkError() override;

private:
    /// FormatMessageA into a buffer of 255 bytes, the zero included.
    Text Formatted(DWORD flags, HMODULE module, std::int32_t code);

    LastError& mLastError;
    SystemLibrary mInternet{L"wininet.dll"};
    SystemLibrary& mNetwork;
};

}  // namespace kwo::platform::windows
