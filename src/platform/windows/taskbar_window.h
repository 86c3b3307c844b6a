#pragma once

#include <windows.h>

#include "platform/notification_area.h"

namespace kwo::platform::windows {

/// A hidden window of the calling thread.
/// It receives the message that the shell sends when the taskbar was created again; only top-level windows receive it.
/// The thread must dispatch messages. The window ignores requests to close.
class TaskbarWindow {
public:
    /// Creates the window on the calling thread, from a window class of the system, so that the module registers none
    /// of its own.
    /// `listener` must outlive this object. It may destroy this object while it is told, but must not throw.
    /// If the window cannot be created, nothing is received and nobody is told.
    explicit TaskbarWindow(TaskbarListener& listener);
    TaskbarWindow(const TaskbarWindow&) = delete;
    TaskbarWindow& operator=(const TaskbarWindow&) = delete;
    /// May run on any thread; on another one than the window's own, the window goes a little later.
    ~TaskbarWindow();

private:
    /// Takes the place of the window's own procedure, which gets every other message.
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);

    TaskbarListener& mListener;
    /// The number that the system gave the message "TaskbarCreated".
    const UINT mCreated;
    /// Null if there is none.
    HWND mWindow;
    /// The procedure of the window's class; null until it is replaced.
    WNDPROC mInherited = nullptr;
};

}  // namespace kwo::platform::windows
