#pragma once

#include <windows.h>
#include <oleauto.h>

#include "platform/component_error.h"

namespace kwo::platform::windows {

/// Raises what automation clients show for a failure code: the run-time's own errors for the standard ones, else the
/// code with the system's text.
[[noreturn]] void RaiseFailure(HRESULT code);

/// Raises the failure of an early-bound call: what `object` left as the thread's error object, if it leaves such for
/// the interface, else the failure code.
[[noreturn]] void RaiseEarlyBoundFailure(HRESULT code, IUnknown& object, const IID& interfaceId);

/// What an object tells about a failure of its own.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo();

    EXCEPINFO* Out() { return &mInfo; }
    /// With the object's own number, source and description.
    [[noreturn]] void RaiseIt();

private:
    EXCEPINFO mInfo = {};
};

}  // namespace kwo::platform::windows
