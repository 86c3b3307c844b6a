#pragma once

#include <windows.h>

#include "platform/notification_area.h"

namespace kwo::platform::windows {

/// A hidden window of the calling thread. It receives the message that the shell sends when the taskbar was created
/// again; only top-level windows receive it.
class TaskbarWindow {
public:
    /// If the window cannot be created, nothing is received. `listener` may destroy this object, but must not throw.
    explicit TaskbarWindow(TaskbarListener& listener);
    TaskbarWindow(const TaskbarWindow&) = delete;
    TaskbarWindow& operator=(const TaskbarWindow&) = delete;
    /// May run on any thread.
    ~TaskbarWindow();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);

    TaskbarListener& mListener;
    const UINT mCreated;
    HWND mWindow;
    WNDPROC mInherited = nullptr;
};

}  // namespace kwo::platform::windows
