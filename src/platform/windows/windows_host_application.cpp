#include "platform/windows/windows_host_application.h"

#include <string>

#include "com_support/module_path.h"
#include "platform/windows/ansi.h"
#include "platform/windows/program_path.h"
#include "platform/windows/version_resource.h"

namespace kwo::platform::windows {

namespace {

using WNetGetUserAFunction = DWORD WINAPI(const char* name, char* user, DWORD* length);

std::wstring ExecutablePath() {
    return com_support::ModulePath(nullptr);
}

}  // namespace

Text WindowsHostApplication::ExecutableName() {
    return FromWide(NameOf(ExecutablePath()));
}

Text WindowsHostApplication::Folder() {
    return FromWide(FolderOf(ExecutablePath()));
}

Text WindowsHostApplication::Title() {
    const Text title = VersionResource(mVersions, ExecutablePath()).String(L"FileDescription");
    return title.empty() ? ExecutableName() : title;
}

Text WindowsHostApplication::ProductName() {
    const Text name = VersionResource(mVersions, ExecutablePath()).String(L"ProductName");
    return name.empty() ? ExecutableName() : name;
}

HostApplication::Version WindowsHostApplication::ProgramVersion() {
    return VersionResource(mVersions, ExecutablePath()).Number();
}

Text WindowsHostApplication::ModuleFileName() {
    char buffer[255] = "";
    const DWORD length = mLastError.After(::GetModuleFileNameA(mModule, buffer, sizeof buffer));
    // A longer name fills the buffer; newer systems end it with a zero.
    return FromBufferUpToZero(buffer, length);
}

bool WindowsHostApplication::ComputerName(Text& name) {
    char buffer[16] = "";
    DWORD length = sizeof buffer;
    if (!mLastError.After(::GetComputerNameA(buffer, &length)) || length > sizeof buffer) return false;
    name = FromBuffer(buffer, length);
    return true;
}

bool WindowsHostApplication::NetworkUserName(Text& name) {
    auto* const function = mLastError.After(mNetwork.Find<WNetGetUserAFunction>("WNetGetUserA"));
    char buffer[UNLEN + 1] = "";
    DWORD length = sizeof buffer;
    if (function == nullptr || mLastError.After(function(nullptr, buffer, &length)) != NO_ERROR) return false;
    // This call does not report how much it wrote.
    name = FromBufferUpToZero(buffer);
    return true;
}

bool WindowsHostApplication::UserName(Text& name) {
    char buffer[UNLEN + 1] = "";
    DWORD size = sizeof buffer;
    if (!mLastError.After(::GetUserNameA(buffer, &size)) || size == 0 || size > sizeof buffer) return false;
    name = FromBufferUpToZero(buffer, size - 1);
    return true;
}

bool WindowsHostApplication::QueryPlatform(Platform& platform) {
    OSVERSIONINFOA version = {};
    version.dwOSVersionInfoSize = sizeof version;
    static_assert(sizeof version == 148);
    if (!mLastError.After(::GetVersionExA(&version))) return false;
    platform = {version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber, version.dwPlatformId};
    return true;
}

std::uint32_t WindowsHostApplication::ProcessId() {
    return ::GetCurrentProcessId();
}

Text WindowsHostApplication::LibraryFolder() {
    return FromWide(FolderOf(com_support::ModulePath(mModule)));
}

Text WindowsHostApplication::EnvironmentVariable(TextView name) {
    const std::wstring wideName = ToWide(name);
    std::wstring value;
    // Another thread may make the value longer between two calls.
    for (DWORD size = 256;;) {
        value.resize(size);
        const DWORD length = mLastError.After(::GetEnvironmentVariableW(wideName.c_str(), value.data(), size));
        if (length < size) {
            value.resize(length);
            return FromWide(value);
        }
        size = length;
    }
}

std::uint32_t WindowsHostApplication::SystemDirectory(std::string& buffer) {
    return mLastError.After(::GetSystemDirectoryA(buffer.data(), static_cast<UINT>(buffer.size())));
}

std::uint32_t WindowsHostApplication::WindowsDirectory(std::string& buffer) {
    return mLastError.After(::GetWindowsDirectoryA(buffer.data(), static_cast<UINT>(buffer.size())));
}

void WindowsHostApplication::WriteLog(TextView text) {
    constexpr DWORD kEventId = 1;
    const HANDLE log = ::RegisterEventSourceW(nullptr, ToWide(ExecutableName()).c_str());
    if (log == nullptr) return;
    const std::wstring line = ToWide(text);
    const wchar_t* lines[] = {line.c_str()};
    ::ReportEventW(log, EVENTLOG_INFORMATION_TYPE, 0, kEventId, nullptr, 1, 0, lines, nullptr);
    ::DeregisterEventSource(log);
}

}  // namespace kwo::platform::windows
