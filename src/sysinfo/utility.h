#pragma once

#include <cstdint>

#include "component/component.h"
#include "platform/host_application.h"
#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

using platform::Text;
using platform::TextView;

/// Odds and ends for desktop programs.
class KWOUtility {
public:
    explicit KWOUtility(component::Component& component);

    /// The full name of the first file of that name beside the library, else along the search path; empty when there
    /// is none. Never raises.
    Text KWO_FindInPath(TextView fileName);

    /// Both are empty on failure. A missing `slashAtEnd` becomes False. Raises TypeMismatch for one that is neither
    /// true nor false.
    Text KWO_SystemDir(platform::Variant& slashAtEnd);
    Text KWO_WindowsDir(platform::Variant& slashAtEnd);

    /// True on the family that is not NT. Where the system does not tell its version, an application-error box says so,
    /// and all four are false or 0.
    bool KWO_IsWin32();
    bool KWO_IsWinNT();
    /// Both raise Overflow above 32767.
    std::int16_t KWO_WinMajorVersion();
    std::int16_t KWO_WinMinorVersion();

    /// Seconds below 100, milliseconds from there on; returns at once for 0 and less. Messages are processed meanwhile;
    /// gives up when the program is asked to quit. Raises Overflow for 33 to 99 and when the tick count would pass its
    /// largest value.
    void KWO_Pause(std::int16_t seconds);

    /// 1 when a window with the title `appName` was activated, else the identifier of the task that was started, 0 and
    /// a message box when the program could not be started.
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
