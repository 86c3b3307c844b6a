#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// The system's last-error value, and its texts for error codes. Every call but SetLast may change the last-error
/// value. The texts are as the system wrote them: they may contain line ends and zero characters.
class SystemErrors {
public:
    /// What the server said about the last internet error.
    struct InternetResponse {
        bool succeeded = false;
        std::uint32_t length = 0;  ///< characters of the response, even if the buffer was too small
        Text text;
    };
    /// What the network provider said about the last network error.
    struct NetworkError {
        Text text;
        Text provider;
    };

    virtual ~SystemErrors() = default;

    /// The last-error value, as this component's last platform call left it (GetLastError). What the system does
    /// between two calls of the component does not change it. Nor do ComponentFactory, Conversions, DebugOutput, Mouse,
    /// Pictures, Screen and SystemMetrics.
    virtual std::int32_t Last() = 0;
    /// Sets the last-error value (SetLastError).
    virtual void SetLast(std::int32_t code) = 0;

    /// The system's own text for a code, at most 255 characters (FormatMessageA). Empty if there is none.
    virtual Text SystemText(std::int32_t code) = 0;
    /// The text for a code in a module that is loaded. Empty if the module is not loaded or has none.
    virtual Text ModuleText(TextView module, std::int32_t code) = 0;
    /// The response to the last internet call, in a buffer of `capacity` characters (InternetGetLastResponseInfoA).
    virtual InternetResponse LastInternetResponse(std::uint32_t capacity) = 0;
    /// The last error of the network (WNetGetLastErrorA).
    virtual NetworkError LastNetworkError() = 0;
};

}  // namespace kwo::platform
