#pragma once

#include "platform/notification_area.h"
#include "platform/windows/last_error.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

class WindowsNotificationArea final : public NotificationArea {
public:
    WindowsNotificationArea(HINSTANCE module, LastError& lastError, SystemLibrary& shell)
        : mModule(module), mLastError(lastError), mShell(shell) {}

    bool Add(const TrayRecord& record) override;
    bool Modify(const TrayRecord& record) override;
    bool Delete(const TrayRecord& record) override;

private:
    bool Notify(DWORD message, const TrayRecord& record);

    HINSTANCE mModule;
    LastError& mLastError;
    SystemLibrary& mShell;
};

}  // namespace kwo::platform::windows
