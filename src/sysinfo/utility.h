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
    /// `component` must outlive the object. Sets the component's program name.
    explicit KWOUtility(component::Component& component);

    /// The full name of the first file called `fileName` in the folder of the library, else in the folders of the
    /// environment variable PATH, from first to last.
    /// The name may begin with a folder and contain wildcards; the result then contains them too. Hidden files, system
    /// files and folders do not count.
    /// Empty if there is none, and for a name with a zero character.
    /// Raises nothing but lack of memory.
    Text KWO_FindInPath(TextView fileName);

    /// The system's folder; empty if the system does not tell.
    /// A true `slashAtEnd` always adds a backslash, even to a folder that ends in one; a missing one is set to False,
    /// and Null counts as False.
    /// Raises TypeMismatch for a value that is neither true nor false.
    Text KWO_SystemDir(platform::Variant& slashAtEnd);
    /// As KWO_SystemDir, for the folder of Windows.
    Text KWO_WindowsDir(platform::Variant& slashAtEnd);

    /// True on the family of Windows that is not NT, despite the name: see docs/intended.md.
    ///
    /// The four version members ask the system once for each object. If it does not tell, inside a development
    /// environment an application-error box says so; they return false or 0, and the next call asks again.
    bool KWO_IsWin32();
    /// True on the NT family.
    bool KWO_IsWinNT();
    /// The major version of the system. Raises Overflow above 32767.
    std::int16_t KWO_WinMajorVersion();
    /// The minor version of the system. Raises Overflow above 32767.
    std::int16_t KWO_WinMinorVersion();

    /// Waits while messages are processed: `seconds` seconds up to 32, milliseconds from 100 on.
    /// Returns at once for 0 or less, and early if the program is asked to quit. It keeps a processor busy.
    /// Timers and events of the host run inside the call, which may release objects.
    /// Raises Overflow for 33 to 99, and for a wait that would end after the tick count becomes negative, some 24.9
    /// days after the system's start.
    void KWO_Pause(std::int16_t seconds);

    /// Activates the window with the title `appName` and returns 1.
    /// Pending messages are processed after the attempt.
    ///
    /// If there is no such window, or `appName` is empty, it starts the command line `appPath` + `appProg` + blank +
    /// `appParms` with the window mode `winMode` (0 hidden, 1 normal, 2 minimised, 3 maximised) and returns the
    /// identifier of the task. `appPath` must end with a backslash, and a path with blanks needs quotes of its own.
    /// If the start fails, a message box says so and the result is 0.
    /// Raises nothing else.
    std::int32_t KWO_LoadApp(TextView appPath, TextView appProg, TextView appParms, std::int16_t winMode,
                             TextView appName);

private:
    using DirectoryQuery = std::uint32_t (platform::HostApplication::*)(std::string& buffer);

    /// Asks with larger buffers until the folder fits.
    Text Directory(DirectoryQuery query, platform::Variant& slashAtEnd);
    /// Asks the system unless it has answered before.
    const platform::HostApplication::Platform& Version();
    /// False if there is no such window.
    bool Activates(TextView title);
    /// 0 if the start fails.
    std::int32_t Start(TextView commandLine, std::int16_t winMode);
    void TellFailedStart(TextView appPath, TextView appProg);

    component::Component& mComponent;
    /// Zeros until the system has answered.
    platform::HostApplication::Platform mVersion;
};

}  // namespace kwo::sysinfo
