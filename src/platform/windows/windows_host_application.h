#pragma once

#include <windows.h>
#include <lmcons.h>

#include "platform/host_application.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The process and the machine.
/// Names that the system tells are read in the ANSI code page, paths and version resources in UTF-16.
///
/// Version resources are read with version.dll and network names with mpr.dll; without them a name falls back or
/// fails. A path may have any length, but ModuleFileName has a buffer of 255 bytes.
class WindowsHostApplication final : public HostApplication {
public:
    /// The module of `context` gives LibraryFolder and ModuleFileName; everything else belongs to the process.
    /// `context` must outlive the object.
    explicit WindowsHostApplication(Context& context)
        : mModule(context.module), mLastError(context.lastError), mNetwork(context.network) {}

    /// From the path of the program's file (GetModuleFileNameW).
    Text ExecutableName() override;
    Text Folder() override;
    /// The description ("FileDescription") in the executable's version resource, else the executable's name.
    Text Title() override;
    /// The product ("ProductName") in the version resource, else the executable's name.
    Text ProductName() override;
    /// The fixed part of the version resource; its texts may say something else.
    Version ProgramVersion() override;
    /// GetModuleFileNameA. Newer systems end a name that fills the buffer with a zero, older ones do not.
    Text ModuleFileName() override;
    /// GetComputerNameA with a buffer of 16 bytes.
    bool ComputerName(Text& name) override;
    /// WNetGetUserA of mpr.dll with a buffer of 257 bytes.
    bool NetworkUserName(Text& name) override;
    /// GetUserNameA with a buffer of 257 bytes.
    bool UserName(Text& name) override;
    /// GetVersionExA with the record of 148 bytes, which every system knows.
    bool QueryPlatform(Platform& platform) override;
    std::uint32_t ProcessId() override;
    /// From the path of the component's module (GetModuleFileNameW), of any length.
    Text LibraryFolder() override;
    /// GetEnvironmentVariableW, with a larger buffer until the value fits.
    Text EnvironmentVariable(TextView name) override;
    /// GetSystemDirectoryA into the caller's buffer.
    std::uint32_t SystemDirectory(std::string& buffer) override;
    std::uint32_t WindowsDirectory(std::string& buffer) override;
    /// Writes to the system's event log, with the executable's name as the source and the event number 1.
    void WriteLog(TextView text) override;

private:
    HINSTANCE mModule;
    LastError& mLastError;
    SystemLibrary& mNetwork;
    SystemLibrary mVersions{L"version.dll"};
};

}  // namespace kwo::platform::windows
