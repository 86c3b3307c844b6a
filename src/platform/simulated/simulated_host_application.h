#pragma once

#include <map>

#include "platform/host_application.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The program that hosts the component, and its machine; every fact can be set.
/// Calls that can fail: GetModuleFileName, GetComputerName, WNetGetUser, GetUserName, GetVersionEx,
/// GetSystemDirectory, GetWindowsDirectory and, for lack of memory alone, GetFileVersionInfo, GetEnvironmentVariable
/// and "ReportEvent of the host". WriteLog leaves `HostLog text` in the log.
class SimulatedHostApplication final : public HostApplication {
public:
    explicit SimulatedHostApplication(World& world);

    Text ExecutableName() override { return Fact(executableName); }
    Text Folder() override { return Fact(folder); }
    Text Title() override { return Fact(title); }
    Text ProductName() override { return Fact(productName); }
    Version ProgramVersion() override { return version; }
    Text ModuleFileName() override;
    bool ComputerName(Text& name) override;
    bool NetworkUserName(Text& name) override;
    bool UserName(Text& name) override;
    bool QueryPlatform(Platform& platform) override;
    std::uint32_t ProcessId() override { return processId; }
    Text LibraryFolder() override { return Fact(libraryFolder); }
    Text EnvironmentVariable(TextView name) override;
    std::uint32_t SystemDirectory(std::string& buffer) override;
    std::uint32_t WindowsDirectory(std::string& buffer) override;
    void WriteLog(TextView text) override;

    Text executableName = u"HOSTAPP";
    Text folder = u"C:\\Program Files\\Host";
    Text title = u"Host Application";
    Text productName = u"Host Suite";
    Version version{4, 1, 11};
    Text moduleFileName = u"C:\\Program Files\\Host\\KWOUtil.dll";
    Text computerName = u"PC01";
    Text networkUserName = u"jdoe";
    Text userName = u"jdoe";
    Platform platform{10, 0, 19045, 2};
    std::uint32_t processId = 1234;
    Text libraryFolder = u"C:\\Program Files\\Common";
    /// The environment, by names as they are asked for.
    std::map<Text, Text> environment;
    std::string systemDirectory = "C:\\WINDOWS\\system32";
    std::string windowsDirectory = "C:\\WINDOWS";
    /// A directory that just fits into the buffer is put there without its terminating zero.
    bool directoryNeedsNoEnd = false;

private:
    Text Fact(const Text& text);
    std::uint32_t Directory(std::string_view name, const std::string& directory, std::string& buffer);

    World& mWorld;
};

}  // namespace kwo::platform::simulated
