#include "platform/windows/taskbar_window.h"

namespace kwo::platform::windows {

TaskbarWindow::TaskbarWindow(TaskbarListener& listener)
    : mListener(listener),
      mCreated(::RegisterWindowMessageW(L"TaskbarCreated")),
      // A window class of the system: one of our own would have to be removed before the module is unloaded, on
      // whatever thread.
      mWindow(::CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                                nullptr, nullptr, nullptr)) {
    if (mWindow == nullptr) return;
    // The shell may have fewer rights than this program.
    ::ChangeWindowMessageFilterEx(mWindow, mCreated, MSGFLT_ALLOW, nullptr);
    ::SetWindowLongPtrW(mWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    // Without it the procedure would not find this object; the window then stays deaf.
    if (::GetWindowLongPtrW(mWindow, GWLP_USERDATA) != reinterpret_cast<LONG_PTR>(this)) return;
    mInherited = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(mWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TaskbarWindow::Procedure)));
}

TaskbarWindow::~TaskbarWindow() {
    if (mWindow == nullptr) return;
    if (mInherited != nullptr) ::SetWindowLongPtrW(mWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(mInherited));
    // Only its own thread may destroy a window; another thread posts the request.
    if (!::DestroyWindow(mWindow)) ::PostMessageW(mWindow, WM_CLOSE, 0, 0);
}

LRESULT CALLBACK TaskbarWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    const auto* const self = reinterpret_cast<TaskbarWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    // The system may ask all windows of a program to close although the program goes on.
    if (message == WM_CLOSE) return 0;
    if (message != self->mCreated) return ::CallWindowProcW(self->mInherited, window, message, first, second);
    self->mListener.TaskbarCreated();
    return 0;
}

}  // namespace kwo::platform::windows
