#pragma once

#include <cstdint>
#include <string>

#include "platform/text.h"

namespace kwo::platform {

/// The program that hosts the component, and the machine it runs on.
///
/// Each call asks the system again. HostIdentity keeps the answers that cannot change. No call raises anything but
/// lack of memory.
/// Names of the machine and users come in the ANSI code page; paths and version resources come in UTF-16.
class HostApplication {
public:
    /// A version of a program, 0 to 65535 each; zeros if the program has none.
    /// The third part of the file's version is left out.
    struct Version {
        std::int32_t major = 0;
        std::int32_t minor = 0;
        std::int32_t revision = 0;
    };
    /// The version of the system, as it tells this program (GetVersionExA).
    /// Newer systems tell a program that does not declare support for them an older version.
    struct Platform {
        std::uint32_t majorVersion = 0;
        std::uint32_t minorVersion = 0;
        std::uint32_t buildNumber = 0;
        std::uint32_t platformId = 0;  ///< 2 is the NT family
    };

    virtual ~HostApplication() = default;

    /// The name of the host's executable, without folder and extension. Every program has one.
    virtual Text ExecutableName() = 0;
    /// The folder of the host's executable, with a backslash at its end only if it is the root of a drive.
    virtual Text Folder() = 0;
    /// The host's name for users: the description in the executable's version resource, else ExecutableName.
    virtual Text Title() = 0;
    /// The product that the host belongs to, by the executable's version resource, else ExecutableName.
    virtual Text ProductName() = 0;
    /// The version of the host's executable, from its version resource.
    virtual Version ProgramVersion() = 0;
    /// The path of the module that the component runs in (GetModuleFileNameA), cut after 255 characters; the system
    /// may cut one earlier.
    /// Empty on failure.
    virtual Text ModuleFileName() = 0;

    /// Sets `name` to the name of the machine, at most 15 characters (GetComputerNameA).
    /// False on failure, for example because the name is longer. `name` then stays, and the last-error value says why.
    virtual bool ComputerName(Text& name) = 0;
    /// Sets `name` to the user's name on the network (WNetGetUserA).
    /// False on failure, also on a system without a network; `name` then stays.
    virtual bool NetworkUserName(Text& name) = 0;
    /// Sets `name` to the user's name on this machine (GetUserNameA). False on failure; `name` then stays.
    virtual bool UserName(Text& name) = 0;
    /// Fills `platform`. False on failure; `platform` then stays, and the last-error value says why.
    virtual bool QueryPlatform(Platform& platform) = 0;
    /// The identifier of the host's process. The system may give it to another process later.
    virtual std::uint32_t ProcessId() = 0;

    /// The folder of the component's own module file, with a backslash at its end only if it is the root of a drive.
    virtual Text LibraryFolder() = 0;
    /// The value of an environment variable of this process, of any length; empty if there is none of that name.
    /// Upper and lower case of names are the same for Windows.
    virtual Text EnvironmentVariable(TextView name) = 0;
    /// Writes the system's folder into `buffer`, in the ANSI code page (GetSystemDirectoryA).
    /// The size of the buffer is its room, and it keeps that size.
    /// Returns the number of bytes written without the zero; if the buffer is too small, the size needed with the
    /// terminating zero; 0 on failure.
    /// The caller decides on the sizes to try.
    virtual std::uint32_t SystemDirectory(std::string& buffer) = 0;
    /// The same for the folder of Windows (GetWindowsDirectoryA).
    virtual std::uint32_t WindowsDirectory(std::string& buffer) = 0;

    /// Writes a message to the host's own log: on Windows an information entry of the event log, with the executable's
    /// name as its source.
    /// The text ends at its first zero character. Ignores failures and leaves the last-error value alone.
    virtual void WriteLog(TextView text) = 0;
};

}  // namespace kwo::platform
