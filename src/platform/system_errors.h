#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// The system's last-error value, and its texts for error codes.
///
/// The last-error value says why the platform call before it failed. So read it before any other call of the platform:
/// every one of them may change it, also if it succeeds. ComponentFactory, Conversions, DebugOutput, Mouse, Pictures,
/// Screen and SystemMetrics never do.
/// Texts are as the system wrote them, in its language: they may contain line ends and zero characters.
class SystemErrors {
public:
    /// What the server said about the last internet error.
    struct InternetResponse {
        /// False if the buffer was too small (the last-error value is 122) or there is no internet library.
        bool succeeded = false;
        /// Characters of the response without the zero, even if the buffer was too small.
        std::uint32_t length = 0;
        Text text;
    };
    /// What the network provider said about the last network error, and the provider's name.
    /// Both are empty if there is none.
    struct NetworkError {
        Text text;
        Text provider;
    };

    virtual ~SystemErrors() = default;

    /// The last-error value, as this component's last platform call left it (GetLastError); 0 at first.
    /// What the system or the host does between two calls of the component does not change it.
    virtual std::int32_t Last() = 0;
    /// Sets the last-error value, both this one and the one that the thread's own calls read (SetLastError).
    virtual void SetLast(std::int32_t code) = 0;

    /// The system's own text for a code (FormatMessageA), usually one sentence with a line end.
    /// Empty if there is none, if it is longer than 254 characters, or if it has placeholders. The last-error value
    /// then says why.
    virtual Text SystemText(std::int32_t code) = 0;
    /// The text for a code in a module that is loaded, by its file name.
    /// Empty if the module is not loaded or has none; otherwise as SystemText.
    virtual Text ModuleText(TextView module, std::int32_t code) = 0;
    /// The response to the last internet call of this thread, in a buffer of `capacity` characters, the zero included
    /// (InternetGetLastResponseInfoA).
    /// 0 asks for the length alone.
    virtual InternetResponse LastInternetResponse(std::uint32_t capacity) = 0;
    /// The last error of the network on this thread (WNetGetLastErrorA). Each text has at most 255 characters.
    virtual NetworkError LastNetworkError() = 0;
};

}  // namespace kwo::platform
