#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// What the notification area is told about an icon (NOTIFYICONDATAA, first version).
///
/// The icon is identified by its window and by the component's module, so a window can have one icon.
struct TrayRecord {
    /// The flags: which of callbackMessage, icon and tip count.
    static constexpr std::uint32_t kMessage = 1;
    static constexpr std::uint32_t kIcon = 2;
    static constexpr std::uint32_t kTip = 4;

    Handle window = 0;                  ///< receives the messages of the icon
    std::uint32_t flags = 0;            ///< which of the members below count
    std::uint32_t callbackMessage = 0;  ///< the message that the window receives
    Handle icon = 0;
    Text tip;  ///< up to 64 characters
};

/// Is told when the taskbar was created again, and has lost all icons.
class TaskbarListener {
public:
    virtual ~TaskbarListener() = default;
    /// Runs on the thread that called Listen, from its message loop. Raises nothing but lack of memory.
    virtual void TaskbarCreated() = 0;
};

/// The notification area of the taskbar (Shell_NotifyIconA). Each call returns false if the taskbar refuses.
class NotificationArea {
public:
    virtual ~NotificationArea() = default;

    /// Shows an icon.
    virtual bool Add(const TrayRecord& record) = 0;
    /// Changes what the flags of `record` name.
    virtual bool Modify(const TrayRecord& record) = 0;
    /// Removes an icon.
    virtual bool Delete(const TrayRecord& record) = 0;

    /// Tells `listener` of every new taskbar until Unlisten. The caller keeps the ownership.
    virtual void Listen(TaskbarListener& listener) = 0;
    /// Ends Listen. Call it before the listener ends.
    virtual void Unlisten(TaskbarListener& listener) noexcept = 0;
};

}  // namespace kwo::platform
