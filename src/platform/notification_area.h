#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// What the notification area is told about an icon (NOTIFYICONDATAA, first version).
///
/// The icon is identified by its window and by the component's module, so a window can have one icon. Handles stay the
/// caller's; the shell keeps a copy of the icon.
struct TrayRecord {
    /// The flags: which of callbackMessage, icon and tip count.
    static constexpr std::uint32_t kMessage = 1;
    static constexpr std::uint32_t kIcon = 2;
    static constexpr std::uint32_t kTip = 4;

    /// Receives the messages of the icon.
    Handle window = 0;
    /// Which of the members below count; the sum of the flags above. The others are ignored.
    std::uint32_t flags = 0;
    /// The number of the message that the window receives when the user moves or clicks the mouse on the icon.
    std::uint32_t callbackMessage = 0;
    Handle icon = 0;
    /// The text beside the pointer, at most 64 characters of the ANSI code page. Windows cuts the rest.
    Text tip;
};

/// Is told when the taskbar was created again, for example because the shell was restarted, and has lost all icons.
class TaskbarListener {
public:
    virtual ~TaskbarListener() = default;
    /// Runs on the thread that called Listen, from its message loop.
    /// It may call Listen and Unlisten.
    /// Raises nothing but lack of memory. If it raises that, the listeners after it are not told.
    virtual void TaskbarCreated() = 0;
};

/// The notification area of the taskbar (Shell_NotifyIconA).
/// Messages of the calling thread may run while the shell is called, and with them any code of the host.
/// Each of the first three calls returns false if the taskbar refuses or if there is none. The last-error value then
/// says why, as far as the shell sets it.
class NotificationArea {
public:
    virtual ~NotificationArea() = default;

    /// Shows an icon. False also if the window has one already.
    virtual bool Add(const TrayRecord& record) = 0;
    /// Changes what the flags of `record` name, on the icon of its window. False also if the window has none.
    virtual bool Modify(const TrayRecord& record) = 0;
    /// Removes the icon of the record's window; its other members do not matter. False also if the window has none.
    virtual bool Delete(const TrayRecord& record) = 0;

    /// Tells `listener` of every new taskbar until Unlisten. Does nothing for a listener that listens already.
    /// The caller keeps the ownership; the listener must live until then.
    /// If the hidden window that hears of the taskbar cannot be created, the listener is never told and nobody learns
    /// of it.
    virtual void Listen(TaskbarListener& listener) = 0;
    /// Ends Listen.
    /// Call it before the listener ends, on the same thread.
    /// Does nothing for a listener that does not listen.
    virtual void Unlisten(TaskbarListener& listener) noexcept = 0;
};

}  // namespace kwo::platform
