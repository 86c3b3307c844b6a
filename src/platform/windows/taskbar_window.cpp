#include "platform/windows/taskbar_window.h"

namespace kwo::platform::windows {

TaskbarWindow::TaskbarWindow(TaskbarListener& listener)
    : mListener(listener),
      mCreated(::RegisterWindowMessageW(L"TaskbarCreated")),
      // A class of the system's: one of our own would have to go before the module does, on whatever thread.
      mWindow(::CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                                nullptr, nullptr, nullptr)) {
    if (mWindow == nullptr) return;
    // The shell may have fewer rights than this program.
    ::ChangeWindowMessageFilterEx(mWindow, mCreated, MSGFLT_ALLOW, nullptr);
    ::SetWindowLongPtrW(mWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    mInherited = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(mWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TaskbarWindow::Procedure)));
}

TaskbarWindow::~TaskbarWindow() {
    if (mWindow == nullptr) return;
    ::SetWindowLongPtrW(mWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(mInherited));
    // Only its own thread may destroy a window; another one leaves it the request.
    if (!::DestroyWindow(mWindow)) ::PostMessageW(mWindow, WM_CLOSE, 0, 0);
}

LRESULT CALLBACK TaskbarWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    const auto* const self = reinterpret_cast<TaskbarWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    // All windows of a program may be asked to close, and the program go on nevertheless.
    if (message == WM_CLOSE) return 0;
    if (message != self->mCreated) return ::CallWindowProcW(self->mInherited, window, message, first, second);
    self->mListener.TaskbarCreated();
    return 0;
}

}  // namespace kwo::platform::windows
