#pragma once

#include <cstdint>

#include "component/component.h"
#include "platform/host_application.h"
#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

using platform::Text;
using platform::TextView;

/// Finds files, tells the system's folders and version, waits, and starts or activates programs.
class KWOUtility {
public:
    /// `component` must outlive the object.
    explicit KWOUtility(component::Component& component);

    /// The full name of the first file called `fileName` in the folder of the library, else in the folders of the
    /// environment variable PATH. The name may begin with a folder and contain wildcards. Hidden files, system files
    /// and folders do not count. Empty if there is none. Raises nothing.
    Text KWO_FindInPath(TextView fileName);

    /// The system's folder; empty if the system does not tell. A true `slashAtEnd` always adds a backslash; a missing
    /// one is set to False. Raises TypeMismatch for a value that is neither true nor false.
    Text KWO_SystemDir(platform::Variant& slashAtEnd);
    /// As KWO_SystemDir, for the folder of Windows.
    Text KWO_WindowsDir(platform::Variant& slashAtEnd);

    /// True on the family of Windows that is not NT. The four version members ask the system once. If it does not tell,
    /// inside a development environment an application-error box says so, and they return false or 0.
    bool KWO_IsWin32();
    /// True on the NT family.
    bool KWO_IsWinNT();
    /// The major version of the system. Raises Overflow above 32767.
    std::int16_t KWO_WinMajorVersion();
    /// The minor version of the system. Raises Overflow above 32767.
    std::int16_t KWO_WinMinorVersion();

    /// Waits while messages are processed: `seconds` seconds up to 32, milliseconds from 100 on. Returns at once for 0
    /// or less, and early if the program is asked to quit. Raises Overflow for 33 to 99, and for a wait that would end
    /// after the tick count becomes negative. It keeps a processor busy.
    void KWO_Pause(std::int16_t seconds);

    /// Activates the window with the title `appName` and returns 1. If there is none, or `appName` is empty, it starts
    /// the command line `appPath` + `appProg` + blank + `appParms` with the window mode `winMode` (0 hidden, 1 normal,
    /// 2 minimised, 3 maximised) and returns the identifier of the task. If the start fails, a message box says so and
    /// the result is 0.
    std::int32_t KWO_LoadApp(TextView appPath, TextView appProg, TextView appParms, std::int16_t winMode,
                             TextView appName);

private:
    using DirectoryQuery = std::uint32_t (platform::HostApplication::*)(std::string& buffer);

    Text Directory(DirectoryQuery query, platform::Variant& slashAtEnd);
    const platform::HostApplication::Platform& Version();
    bool Activates(TextView title);
    std::int32_t Start(TextView commandLine, std::int16_t winMode);
    void TellFailedStart(TextView appPath, TextView appProg);

    component::Component& mComponent;
    platform::HostApplication::Platform mVersion;
};

}  // namespace kwo::sysinfo
