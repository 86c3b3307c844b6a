#pragma once

#include <memory>
#include <vector>

#include "platform/notification_area.h"
#include "platform/windows/context.h"
#include "platform/windows/taskbar_window.h"

namespace kwo::platform::windows {

/// Shell_NotifyIconA of shell32.dll. While somebody listens, a hidden window of the thread waits for a new taskbar. The
/// module counts as used while the listeners are told.
class WindowsNotificationArea final : public NotificationArea, private TaskbarListener {
public:
    explicit WindowsNotificationArea(Context& context)
        : mModule(context.module), mUse(context.use), mLastError(context.lastError) {}

    bool Add(const TrayRecord& record) override;
    bool Modify(const TrayRecord& record) override;
    bool Delete(const TrayRecord& record) override;
    void Listen(TaskbarListener& listener) override;
    void Unlisten(TaskbarListener& listener) noexcept override;

private:
    /// Tells each listener. One of them may end the listening of others meanwhile.
    void TaskbarCreated() noexcept override;
    bool Notify(DWORD message, const TrayRecord& record);

    HINSTANCE mModule;
    ModuleUse& mUse;
    LastError& mLastError;
    SystemLibrary mShell{L"shell32.dll"};
    std::vector<TaskbarListener*> mListeners;
    std::unique_ptr<TaskbarWindow> mTaskbar;  ///< while somebody listens
};

}  // namespace kwo::platform::windows
