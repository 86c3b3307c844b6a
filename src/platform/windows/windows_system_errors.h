#pragma once

#include "platform/system_errors.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The texts of FormatMessageA. The library for the last internet error is wininet.dll, for the network mpr.dll;
/// without them there is no text.
class WindowsSystemErrors final : public SystemErrors {
public:
    explicit WindowsSystemErrors(Context& context) : mLastError(context.lastError), mNetwork(context.network) {}

    std::int32_t Last() override { return mLastError.Get(); }
    void SetLast(std::int32_t code) override { mLastError.Set(code); }
    Text SystemText(std::int32_t code) override;
    Text ModuleText(TextView module, std::int32_t code) override;
    InternetResponse LastInternetResponse(std::uint32_t capacity) override;
    NetworkError LastNetworkError() override;

private:
    Text Formatted(DWORD flags, HMODULE module, std::int32_t code);

    LastError& mLastError;
    SystemLibrary mInternet{L"wininet.dll"};
    SystemLibrary& mNetwork;
};

}  // namespace kwo::platform::windows
