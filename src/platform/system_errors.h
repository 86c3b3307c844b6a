#pragma once

#include <cstdint>
#include <optional>

#include "platform/text.h"

namespace kwo::platform {

/// The platform's last-error value and its texts for error codes. The texts are what the platform wrote into the
/// buffer, cut nowhere; every call but `SetLast` may change the last-error value.
class SystemErrors {
public:
    struct InternetResponse {
        bool succeeded = false;
        std::uint32_t length = 0;  ///< of the response, also when the buffer was too small for it
        Text text;
    };
    struct NetworkError {
        Text text;
        Text provider;
    };

    virtual ~SystemErrors() = default;

    /// The last-error value as the last platform call of this component left it.
    virtual std::int32_t Last() = 0;
    virtual void SetLast(std::int32_t code) = 0;

    /// FormatMessageA from the system's texts, at most 255 characters; empty when there is none.
    virtual Text SystemText(std::int32_t code) = 0;
    /// The same from the texts of a loaded module; empty when it is not loaded or has none.
    virtual Text ModuleText(TextView module, std::int32_t code) = 0;
    /// InternetGetLastResponseInfoA with a buffer of `capacity` characters.
    virtual InternetResponse LastInternetResponse(std::uint32_t capacity) = 0;
    /// WNetGetLastErrorA.
    virtual NetworkError LastNetworkError() = 0;
};

}  // namespace kwo::platform
