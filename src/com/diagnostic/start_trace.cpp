#include <windows.h>

#include <string>

#include "com/diagnostics.h"
#include "com/server/com_values.h"

namespace kwo::com {

namespace {

constexpr wchar_t kFolderVariable[] = L"KWO_TRACE_FOLDER";

/// Empty if there is no such variable.
Text FolderForLogs() {
    std::wstring folder(::GetEnvironmentVariableW(kFolderVariable, nullptr, 0), L'\0');
    folder.resize(::GetEnvironmentVariableW(kFolderVariable, folder.data(), static_cast<DWORD>(folder.size())));
    return {folder.begin(), folder.end()};
}

}  // namespace

void StartTrace(component::Component& component) noexcept {
    try {
        const Text folder = FolderForLogs();
        if (folder.empty()) return;
        component.trace.SetTraceFolder(folder);
        component.trace.KWO_TraceStart(0, 0, false);
    } catch (...) {
        // The program must run as it does without a log.
        ::OutputDebugStringW(L"KWOUtil cannot create its log in the folder that KWO_TRACE_FOLDER names");
    }
}

}  // namespace kwo::com
