#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// Windows of the desktop, by handle, and the box that asks the user.
class WindowService {
public:
    virtual ~WindowService() = default;

    virtual bool WindowExists(Handle window) = 0;
    virtual bool IsMinimised(Handle window) = 0;
    virtual void Flash(Handle window, bool invert) = 0;
    /// GetWindowTextA with a buffer of 255 characters: what was written, zero characters included.
    virtual Text WindowText(Handle window) = 0;

    /// MessageBoxA: the number of the button pressed, 0 when no box could be shown.
    virtual std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) = 0;
};

}  // namespace kwo::platform
