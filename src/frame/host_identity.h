#pragma once

#include <optional>

#include "frame/text_routines.h"
#include "platform/host_application.h"

namespace kwo::frame {

/// Who the host is and where it runs.
/// It asks the platform for each fact once and keeps the answer, even a failure. Nobody can make it ask again: the
/// facts do not change while a program runs. No call raises anything but lack of memory.
class HostIdentity {
public:
    /// `host` must outlive it.
    explicit HostIdentity(platform::HostApplication& host) : mHost(host) {}

    /// The name of the machine. Empty if the system does not tell. The reference is valid as long as this object.
    const Text& KWO_ComputerName();
    /// The name of the user on the network, else on this machine.
    /// Empty if the system tells neither. The reference is valid as long as this object.
    const Text& KWO_UserName();
    /// False if the component runs inside a development environment, that is, if the file name of the module it runs
    /// in is KWODEV.EXE or KWODEV64.EXE.
    bool KWO_IsCompiled();
    /// True on the NT family of Windows. False if the system does not tell.
    bool KWO_IsWinNT();

private:
    platform::HostApplication& mHost;
    /// Each is empty until it is first asked for.
    std::optional<Text> mComputerName;
    std::optional<Text> mUserName;
    std::optional<bool> mIsCompiled;
    std::optional<bool> mIsWinNT;
};

}  // namespace kwo::frame
