#pragma once

#include <cstdint>
#include <string>

#include "platform/text.h"

namespace kwo::platform {

/// The program that hosts the component, and the machine it runs on.
class HostApplication {
public:
    /// A version of a program; zeros if the program has none.
    struct Version {
        std::int32_t major = 0;
        std::int32_t minor = 0;
        std::int32_t revision = 0;
    };
    /// The version of the system, as it tells this program (GetVersionExA).
    struct Platform {
        std::uint32_t majorVersion = 0;
        std::uint32_t minorVersion = 0;
        std::uint32_t buildNumber = 0;
        std::uint32_t platformId = 0;  ///< 2 is the NT family
    };

    virtual ~HostApplication() = default;

    /// The name of the host's executable, without folder and extension.
    virtual Text ExecutableName() = 0;
    /// The folder of the host's executable, with a backslash at its end only if it is the root of a drive.
    virtual Text Folder() = 0;
    /// The host's name for users: the description of the executable, else its name.
    virtual Text Title() = 0;
    /// The product that the host belongs to, else the name of the executable.
    virtual Text ProductName() = 0;
    /// The version of the host's executable.
    virtual Version ProgramVersion() = 0;
    /// The path, up to 255 characters, of the module that the component runs in (GetModuleFileNameA).
    virtual Text ModuleFileName() = 0;

    /// Sets `name` to the name of the machine, at most 15 characters (GetComputerNameA). False on failure; `name` then
    /// stays.
    virtual bool ComputerName(Text& name) = 0;
    /// Sets `name` to the user's name on the network (WNetGetUserA). False on failure; `name` then stays.
    virtual bool NetworkUserName(Text& name) = 0;
    /// Sets `name` to the user's name on this machine (GetUserNameA). False on failure; `name` then stays.
    virtual bool UserName(Text& name) = 0;
    /// Fills `platform`. False on failure; `platform` then stays.
    virtual bool QueryPlatform(Platform& platform) = 0;
    /// The identifier of the host's process.
    virtual std::uint32_t ProcessId() = 0;

    /// The folder of the component's own module file, with a backslash at its end only if it is the root of a drive.
    virtual Text LibraryFolder() = 0;
    /// The value of an environment variable, of any length; empty if there is none of that name.
    virtual Text EnvironmentVariable(TextView name) = 0;
    /// Writes the system's folder into `buffer`, in the ANSI code page (GetSystemDirectoryA). Returns the number of
    /// bytes written; if the buffer is too small, the size needed with the terminating zero; 0 on failure. The caller
    /// decides on the sizes to try.
    virtual std::uint32_t SystemDirectory(std::string& buffer) = 0;
    /// The same for the folder of Windows (GetWindowsDirectoryA).
    virtual std::uint32_t WindowsDirectory(std::string& buffer) = 0;

    /// Writes a message to the host's own log. Ignores failures.
    virtual void WriteLog(TextView text) = 0;
};

}  // namespace kwo::platform
