#include "platform/windows/windows_platform.h"

#include "platform/windows/last_error.h"
#include "platform/windows/system_library.h"
#include "platform/windows/windows_clock.h"
#include "platform/windows/windows_component_factory.h"
#include "platform/windows/windows_conversions.h"
#include "platform/windows/windows_debug_output.h"
#include "platform/windows/windows_drawing.h"
#include "platform/windows/windows_event_log.h"
#include "platform/windows/windows_file_system.h"
#include "platform/windows/windows_host_application.h"
#include "platform/windows/windows_keyboard.h"
#include "platform/windows/windows_locale_source.h"
#include "platform/windows/windows_log_files.h"
#include "platform/windows/windows_message_loop.h"
#include "platform/windows/windows_mouse.h"
#include "platform/windows/windows_notification_area.h"
#include "platform/windows/windows_pictures.h"
#include "platform/windows/windows_process_memory.h"
#include "platform/windows/windows_programs.h"
#include "platform/windows/windows_registry_store.h"
#include "platform/windows/windows_screen.h"
#include "platform/windows/windows_system_errors.h"
#include "platform/windows/windows_system_fonts.h"
#include "platform/windows/windows_system_metrics.h"
#include "platform/windows/windows_timer_service.h"
#include "platform/windows/windows_window_service.h"

namespace kwo::platform::windows {

struct WindowsPlatform::Parts {
    Parts(HINSTANCE module, ModuleUse& use)
        : host(module, lastError, network, versions), notificationArea(module, lastError, shell, use), timers(use) {}

    LastError lastError;
    SystemLibrary internet{L"wininet.dll"};
    SystemLibrary network{L"mpr.dll"};
    SystemLibrary counters{L"psapi.dll"};
    SystemLibrary shell{L"shell32.dll"};
    SystemLibrary versions{L"version.dll"};
    SystemLibrary composition{L"dwmapi.dll"};
    WindowsClock clock{lastError};
    WindowsComponentFactory components;
    WindowsConversions conversions;
    WindowsDebugOutput debugOutput;
    WindowsDrawing drawing{lastError};
    WindowsEventLog eventLog{lastError};
    WindowsFileSystem files{lastError};
    WindowsHostApplication host;
    WindowsKeyboard keyboard{lastError};
    WindowsLocaleSource locale{lastError};
    WindowsLogFiles logFiles{lastError};
    WindowsMessageLoop messages{lastError};
    WindowsMouse mouse;
    WindowsNotificationArea notificationArea;
    WindowsPictures pictures;
    WindowsProcessMemory processMemory{lastError, counters};
    WindowsPrograms programs{lastError, composition};
    WindowsRegistryStore registry{lastError};
    WindowsScreen screen;
    WindowsScreenDrawing screenDrawing{lastError};
    WindowsSystemErrors errors{lastError, internet, network};
    WindowsSystemFonts fonts{lastError};
    WindowsSystemMetrics metrics;
    WindowsTimerService timers;
    WindowsWindowService windows{lastError};
};

WindowsPlatform::WindowsPlatform(HINSTANCE module, ModuleUse& use) : mParts(std::make_unique<Parts>(module, use)) {}

WindowsPlatform::~WindowsPlatform() = default;

Platform WindowsPlatform::Services() {
    return ServicesOf(*mParts);
}

void WindowsPlatform::StopTimers() {
    mParts->timers.StopAll();
}

void WindowsPlatform::EndThread() noexcept {
    mParts->timers.EndThread();
}

}  // namespace kwo::platform::windows
