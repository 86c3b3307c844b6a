#include "platform/windows/windows_platform.h"

#include "platform/windows/last_error.h"
#include "platform/windows/system_library.h"
#include "platform/windows/windows_clock.h"
#include "platform/windows/windows_conversions.h"
#include "platform/windows/windows_debug_output.h"
#include "platform/windows/windows_desktop.h"
#include "platform/windows/windows_event_log.h"
#include "platform/windows/windows_file_system.h"
#include "platform/windows/windows_host_application.h"
#include "platform/windows/windows_log_files.h"
#include "platform/windows/windows_message_loop.h"
#include "platform/windows/windows_process_memory.h"
#include "platform/windows/windows_registry_store.h"
#include "platform/windows/windows_system_errors.h"

namespace kwo::platform::windows {

struct WindowsPlatform::Parts {
    explicit Parts(HINSTANCE module) : host(module, lastError, network) {}

    LastError lastError;
    SystemLibrary internet{L"wininet.dll"};
    SystemLibrary network{L"mpr.dll"};
    SystemLibrary counters{L"psapi.dll"};
    WindowsClock clock;
    WindowsConversions conversions;
    WindowsDebugOutput debugOutput;
    WindowsDesktop desktop{lastError};
    WindowsEventLog eventLog{lastError};
    WindowsFileSystem files{lastError};
    WindowsHostApplication host;
    WindowsLogFiles logFiles{lastError};
    WindowsMessageLoop messages{lastError};
    WindowsProcessMemory processMemory{lastError, counters};
    WindowsRegistryStore registry{lastError};
    WindowsScreen screen;
    WindowsSystemErrors errors{lastError, internet, network};
};

WindowsPlatform::WindowsPlatform(HINSTANCE module) : mParts(std::make_unique<Parts>(module)) {}

WindowsPlatform::~WindowsPlatform() = default;

Platform WindowsPlatform::Services() {
    return {mParts->clock,    mParts->conversions, mParts->debugOutput, mParts->desktop,  mParts->eventLog,
            mParts->files,    mParts->host,        mParts->logFiles,    mParts->messages, mParts->processMemory,
            mParts->registry, mParts->screen,      mParts->errors};
}

}  // namespace kwo::platform::windows
