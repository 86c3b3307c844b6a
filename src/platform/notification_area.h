#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// What is told about an icon of the notification area (NOTIFYICONDATAA, first version). The icon's identifier is the
/// instance handle of the component's module: one icon for a window.
struct TrayRecord {
    static constexpr std::uint32_t kMessage = 1;
    static constexpr std::uint32_t kIcon = 2;
    static constexpr std::uint32_t kTip = 4;

    Handle window = 0;
    std::uint32_t flags = 0;  ///< which of the members below count
    std::uint32_t callbackMessage = 0;
    Handle icon = 0;
    Text tip;  ///< up to 64 characters
};

/// Hears when the taskbar was created anew: all icons have gone from it.
class TaskbarListener {
public:
    virtual ~TaskbarListener() = default;
    virtual void TaskbarCreated() = 0;
};

/// The notification area of the taskbar (Shell_NotifyIconA). Each call is false on failure.
class NotificationArea {
public:
    virtual ~NotificationArea() = default;

    virtual bool Add(const TrayRecord& record) = 0;
    virtual bool Modify(const TrayRecord& record) = 0;
    virtual bool Delete(const TrayRecord& record) = 0;

    /// `listener` hears of every new taskbar until `Unlisten`, from the thread's message loop.
    virtual void Listen(TaskbarListener& listener) = 0;
    virtual void Unlisten(TaskbarListener& listener) noexcept = 0;
};

}  // namespace kwo::platform
