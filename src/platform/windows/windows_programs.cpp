#include "platform/windows/windows_programs.h"

#include <windows.h>

#include <string>

#include "platform/component_error.h"
#include "platform/windows/ansi.h"
#include "platform/windows/quiet_drives.h"

namespace kwo::platform::windows {

namespace {

using WindowAttribute = HRESULT WINAPI(HWND window, DWORD attribute, void* value, DWORD size);

struct Search {
    std::wstring title;
    WindowAttribute* attribute = nullptr;  ///< null where the system cloaks no windows
    /// Room for a window's title: one character more than the wanted one, and the end.
    std::wstring text = std::wstring(title.size() + 2, L'\0');
    HWND found = nullptr;
};

/// A cloaked window counts as visible, but nobody sees it: suspended apps, and windows on another virtual desktop.
bool IsCloaked(HWND window, WindowAttribute* attribute) {
    constexpr DWORD kCloaked = 14;
    DWORD cloaked = 0;
    return attribute != nullptr && SUCCEEDED(attribute(window, kCloaked, &cloaked, sizeof cloaked)) && cloaked != 0;
}

/// The title as the system stores it. Asking the window would wait for a program that does not answer.
bool HasTitle(HWND window, Search& search) noexcept {
    const int length = ::InternalGetWindowText(window, search.text.data(), static_cast<int>(search.text.size()));
    return ::CompareStringOrdinal(search.text.data(), length, search.title.data(),
                                  static_cast<int>(search.title.size()), TRUE) == CSTR_EQUAL;
}

/// The system calls it: no exception may leave it.
BOOL CALLBACK Look(HWND window, LPARAM parameter) noexcept {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (!::IsWindowVisible(window) || !HasTitle(window, search)) return TRUE;
    if (IsCloaked(window, search.attribute)) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

void WindowsPrograms::Activate(TextView title) {
    Search search{ToWide(title), mComposition.Find<WindowAttribute>("DwmGetWindowAttribute")};
    ::EnumWindows(Look, reinterpret_cast<LPARAM>(&search));
    if (search.found == nullptr) RaiseRuntime(RuntimeError::InvalidProcedureCall);
    // The window's program restores it: a direct call would wait for a program that does not answer.
    if (::IsIconic(search.found)) ::ShowWindowAsync(search.found, SW_RESTORE);
    mLastError.After(::SetForegroundWindow(search.found));
}

std::int32_t WindowsPrograms::Start(TextView commandLine, std::int16_t windowMode) {
    // For a line that is too long, the system would try each part up to a blank before it refuses. At a zero character
    // it would stop reading.
    if (commandLine.size() > kLongestCommandLine || commandLine.find(u'\0') != TextView::npos) {
        RaiseRuntime(RuntimeError::FileNotFound);
    }
    const QuietDrives quiet;
    // The system writes into the command line while it looks for the program.
    std::wstring writable = ToWide(commandLine);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(windowMode);
    PROCESS_INFORMATION process = {};
    if (!mLastError.After(::CreateProcessW(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                           &start, &process))) {
        RaiseRuntime(RuntimeError::FileNotFound);
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return static_cast<std::int32_t>(process.dwProcessId);
}

}  // namespace kwo::platform::windows
