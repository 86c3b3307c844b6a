#include "platform/windows/windows_notification_area.h"

#include <shellapi.h>

#include <algorithm>
#include <utility>

#include "platform/windows/ansi.h"
#include "platform/windows/handles.h"

namespace kwo::platform::windows {

namespace {

using NotifyFunction = BOOL WINAPI(DWORD message, NOTIFYICONDATAA* record);

constexpr std::size_t kTipSize = 64;

}  // namespace

bool WindowsNotificationArea::Add(const TrayRecord& record) {
    return Notify(NIM_ADD, record);
}

bool WindowsNotificationArea::Modify(const TrayRecord& record) {
    return Notify(NIM_MODIFY, record);
}

bool WindowsNotificationArea::Delete(const TrayRecord& record) {
    return Notify(NIM_DELETE, record);
}

void WindowsNotificationArea::Listen(TaskbarListener& listener) {
    if (std::ranges::find(mListeners, &listener) != mListeners.end()) return;
    std::unique_ptr<TaskbarWindow> made;
    if (mTaskbar == nullptr) made = std::make_unique<TaskbarWindow>(static_cast<TaskbarListener&>(*this));
    mListeners.push_back(&listener);
    // Not before: without a listener the window would stay.
    if (made != nullptr) mTaskbar = std::move(made);
}

void WindowsNotificationArea::Unlisten(TaskbarListener& listener) noexcept {
    std::erase(mListeners, &listener);
    if (mListeners.empty()) mTaskbar.reset();
}

void WindowsNotificationArea::StopListening() noexcept {
    mListeners.clear();
    mTaskbar.reset();
}

void WindowsNotificationArea::TaskbarCreated() noexcept {
    mUse.Begin();
    try {
        // While one listener calls the shell, messages may run that remove others.
        for (TaskbarListener* const listener : std::vector(mListeners)) {
            if (std::ranges::find(mListeners, listener) != mListeners.end()) listener->TaskbarCreated();
        }
    } catch (...) {
        // Nobody can be told: the icon is not shown again.
    }
    mUse.End();
}

bool WindowsNotificationArea::Notify(DWORD message, const TrayRecord& record) {
    auto* const function = mLastError.After(mShell.Find<NotifyFunction>("Shell_NotifyIconA"));
    if (function == nullptr) return false;
    NOTIFYICONDATAA data = {};
    data.cbSize = NOTIFYICONDATAA_V1_SIZE;
    data.hWnd = ToNative<HWND>(record.window);
    data.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(mModule));
    data.uFlags = record.flags;
    data.uCallbackMessage = record.callbackMessage;
    data.hIcon = ToNative<HICON>(record.icon);
    // In the first version of the record the tip has 64 bytes; a longer one has no terminating zero.
    const std::string tip = ToAnsi(record.tip);
    std::copy_n(tip.begin(), std::min(tip.size(), kTipSize), data.szTip);
    return mLastError.After(function(message, &data)) != FALSE;
}

}  // namespace kwo::platform::windows
