#pragma once

#include <windows.h>
#include <lmcons.h>

#include "platform/host_application.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The process and the machine. Names that the system tells are read in the ANSI code page, paths and version resources
/// in UTF-16.
class WindowsHostApplication final : public HostApplication {
public:
    /// The module of `context` gives LibraryFolder and ModuleFileName; everything else belongs to the process.
    explicit WindowsHostApplication(Context& context)
        : mModule(context.module), mLastError(context.lastError), mNetwork(context.network) {}

    Text ExecutableName() override;
    Text Folder() override;
    /// The description in the executable's version resource, else the executable's name.
    Text Title() override;
    /// The product in the version resource, else the executable's name.
    Text ProductName() override;
    Version ProgramVersion() override;
    Text ModuleFileName() override;
    bool ComputerName(Text& name) override;
    bool NetworkUserName(Text& name) override;
    bool UserName(Text& name) override;
    bool QueryPlatform(Platform& platform) override;
    std::uint32_t ProcessId() override;
    Text LibraryFolder() override;
    Text EnvironmentVariable(TextView name) override;
    std::uint32_t SystemDirectory(std::string& buffer) override;
    std::uint32_t WindowsDirectory(std::string& buffer) override;
    /// Writes to the system's event log, with the executable's name as the source.
    void WriteLog(TextView text) override;

private:
    HINSTANCE mModule;
    LastError& mLastError;
    SystemLibrary& mNetwork;
    SystemLibrary mVersions{L"version.dll"};
};

}  // namespace kwo::platform::windows
