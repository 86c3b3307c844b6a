#pragma once

#include <cstdint>

#include "platform/system_errors.h"

namespace kwo::frame {

/// Keeps the platform's last-error value as it is for the caller, whatever happens in its scope.
class KeptLastError {
public:
    explicit KeptLastError(platform::SystemErrors& errors) : mErrors(errors), mCode(errors.Last()) {}
    ~KeptLastError() { mErrors.SetLast(mCode); }
    KeptLastError(const KeptLastError&) = delete;
    KeptLastError& operator=(const KeptLastError&) = delete;

private:
    platform::SystemErrors& mErrors;
    std::int32_t mCode;
};

}  // namespace kwo::frame
