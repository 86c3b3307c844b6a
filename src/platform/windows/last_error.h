#pragma once

#include <windows.h>

#include <cstdint>

namespace kwo::platform::windows {

/// The platform's last-error value as the component's last platform call left it. Shared by all services, so that what
/// the system itself does between two of the component's steps cannot disturb it. Calls that cannot fail leave it
/// alone.
class LastError {
public:
    std::int32_t Get() const { return mCode; }
    void Set(std::int32_t code) {
        mCode = code;
        ::SetLastError(static_cast<DWORD>(code));
    }
    /// To be called right behind a platform call; passes its result through.
    template <class Result>
    Result After(Result result) {
        mCode = static_cast<std::int32_t>(::GetLastError());
        return result;
    }

private:
    std::int32_t mCode = 0;
};

}  // namespace kwo::platform::windows
