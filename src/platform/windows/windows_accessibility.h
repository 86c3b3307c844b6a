#pragma once

#include <windows.h>
#include <oleacc.h>

#include "com_support/com_ptr.h"
#include "platform/accessibility.h"

namespace kwo::platform::windows {

/// The annotations of the system (CLSID_AccPropServices of oleacc.dll), which readers get by MSAA and by UI Automation.
/// The service is an object of this thread's apartment. It is created for the first window and released with the last,
/// because the thread may leave its apartment afterwards.
/// A service that cannot be created, or that is not implemented, as Wine's, is not asked again.
class WindowsAccessibility final : public Accessibility {
public:
    bool Begin(Handle window, std::int32_t role) override;
    bool SetNumber(Handle window, Property property, std::int32_t number) override;
    bool SetText(Handle window, Property property, TextView text) override;
    void End(Handle window) noexcept override;
    /// NotifyWinEvent for the window's client area.
    void Notify(Handle window, std::uint32_t event) override;

private:
    com_support::ComPtr<IAccPropServices> mService;
    /// Windows between Begin and End.
    int mAnnotated = 0;
    bool mIsMissing = false;
};

}  // namespace kwo::platform::windows
