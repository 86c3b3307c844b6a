#pragma once

#include <memory>
#include <vector>

#include "platform/notification_area.h"
#include "platform/windows/context.h"
#include "platform/windows/taskbar_window.h"

namespace kwo::platform::windows {

/// Shell_NotifyIconA of shell32.dll, with the first version of its record, which every shell knows.
///
/// While somebody listens, a hidden window of the thread waits for a new taskbar. The module counts as used while the
/// listeners are told. The number of an icon is the address of the module: other components in the same window do not
/// collide.
class WindowsNotificationArea final : public NotificationArea, private TaskbarListener {
public:
    explicit WindowsNotificationArea(Context& context)
        : mModule(context.module), mUse(context.use), mLastError(context.lastError) {}

    /// NIM_ADD. A tip is cut after 64 bytes and then has no terminating zero.
    bool Add(const TrayRecord& record) override;
    bool Modify(const TrayRecord& record) override;
    bool Delete(const TrayRecord& record) override;
    /// Creates the hidden window for the first listener. Raises std::bad_alloc.
    void Listen(TaskbarListener& listener) override;
    /// Destroys the hidden window after the last listener, also while the listeners are told.
    void Unlisten(TaskbarListener& listener) noexcept override;
    /// Forgets all listeners and destroys the hidden window, from any thread: the module is about to go.
    void StopListening() noexcept;

private:
    /// Tells each listener.
    /// One of them may end the listening of others meanwhile.
    /// If memory runs out, the rest is not told.
    void TaskbarCreated() noexcept override;
    /// One call to the shell; false if it refuses or is not there.
    bool Notify(DWORD message, const TrayRecord& record);

    HINSTANCE mModule;
    ModuleUse& mUse;
    LastError& mLastError;
    SystemLibrary mShell{L"shell32.dll"};
    /// In the order of Listen.
    std::vector<TaskbarListener*> mListeners;
    /// There is one while somebody listens.
    std::unique_ptr<TaskbarWindow> mTaskbar;
};

}  // namespace kwo::platform::windows
