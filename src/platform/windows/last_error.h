#pragma once

#include <windows.h>

#include <cstdint>

namespace kwo::platform::windows {

/// The last-error value, as this component's last platform call left it.
/// All services share it, so that what the system does between two steps of the component cannot change it.
///
///     if (!mLastError.After(::DeleteFileW(path))) return false;  // Get says why
///
/// Calls that cannot fail do not change it. One thread uses it, as all services of a platform.
class LastError {
public:
    /// The value that the last platform call of this component left; 0 at first.
    std::int32_t Get() const { return mCode; }
    /// Sets it, and the system's own value for the thread too.
    void Set(std::int32_t code) {
        mCode = code;
        ::SetLastError(static_cast<DWORD>(code));
    }
    /// Call it directly after a platform call, in the same expression; it keeps GetLastError and returns the call's
    /// result.
    /// The value counts only if the result is a failure: the system does not clear it after a success.
    template <class Result>
    Result After(Result result) {
        mCode = static_cast<std::int32_t>(::GetLastError());
        return result;
    }

private:
    /// 0 until a service has called the system.
    std::int32_t mCode = 0;
};

}  // namespace kwo::platform::windows
