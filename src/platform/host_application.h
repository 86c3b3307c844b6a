#pragma once

#include <cstdint>
#include <string>

#include "platform/text.h"

namespace kwo::platform {

/// The program that hosts the component, and the machine it runs on.
class HostApplication {
public:
    struct Version {
        std::int32_t major = 0;
        std::int32_t minor = 0;
        std::int32_t revision = 0;
    };
    /// The platform's version record (GetVersionExA).
    struct Platform {
        std::uint32_t majorVersion = 0;
        std::uint32_t minorVersion = 0;
        std::uint32_t buildNumber = 0;
        std::uint32_t platformId = 0;  ///< 2 is the NT family
    };

    virtual ~HostApplication() = default;

    /// Without folder and extension.
    virtual Text ExecutableName() = 0;
    virtual Text Folder() = 0;
    virtual Text Title() = 0;
    virtual Text ProductName() = 0;
    virtual Version ProgramVersion() = 0;
    /// GetModuleFileNameA, 255 characters, of the module that the host runtime reports for the component.
    virtual Text ModuleFileName() = 0;

    /// GetComputerNameA with a buffer of 16 characters; false on failure.
    virtual bool ComputerName(Text& name) = 0;
    /// WNetGetUserA for the default name: the buffer up to the terminating zero; false on failure.
    virtual bool NetworkUserName(Text& name) = 0;
    /// GetUserNameA: the same.
    virtual bool UserName(Text& name) = 0;
    /// False on failure, `platform` is then left as it was.
    virtual bool QueryPlatform(Platform& platform) = 0;
    virtual std::uint32_t ProcessId() = 0;

    /// Of the component's own module file; with a separator at its end only when it is a drive's root.
    virtual Text LibraryFolder() = 0;
    /// Empty when there is none of that name.
    virtual Text EnvironmentVariable(TextView name) = 0;
    /// GetSystemDirectoryA: writes into `buffer` and gives the number of bytes written; the size needed, with the
    /// terminating zero, when the buffer is too small; 0 on failure. The caller decides on the sizes to ask with.
    virtual std::uint32_t SystemDirectory(std::string& buffer) = 0;
    /// GetWindowsDirectoryA: the same.
    virtual std::uint32_t WindowsDirectory(std::string& buffer) = 0;

    /// Leaves a message in the program's own log: the text alone, failures are swallowed.
    virtual void WriteLog(TextView text) = 0;
};

}  // namespace kwo::platform
