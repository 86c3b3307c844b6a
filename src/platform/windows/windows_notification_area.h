#pragma once

#include <memory>
#include <vector>

#include "platform/notification_area.h"
#include "platform/windows/last_error.h"
#include "platform/windows/module_use.h"
#include "platform/windows/system_library.h"
#include "platform/windows/taskbar_window.h"

namespace kwo::platform::windows {

class WindowsNotificationArea final : public NotificationArea, private TaskbarListener {
public:
    WindowsNotificationArea(HINSTANCE module, LastError& lastError, SystemLibrary& shell, ModuleUse& use)
        : mModule(module), mLastError(lastError), mShell(shell), mUse(use) {}

    bool Add(const TrayRecord& record) override;
    bool Modify(const TrayRecord& record) override;
    bool Delete(const TrayRecord& record) override;
    void Listen(TaskbarListener& listener) override;
    void Unlisten(TaskbarListener& listener) noexcept override;

private:
    void TaskbarCreated() noexcept override;
    bool Notify(DWORD message, const TrayRecord& record);

    HINSTANCE mModule;
    LastError& mLastError;
    SystemLibrary& mShell;
    ModuleUse& mUse;
    std::vector<TaskbarListener*> mListeners;
    std::unique_ptr<TaskbarWindow> mTaskbar;  ///< while somebody listens
};

}  // namespace kwo::platform::windows
