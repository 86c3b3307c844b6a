#pragma once

#include <optional>

#include "frame/text_routines.h"
#include "platform/host_application.h"

namespace kwo::frame {

/// Who the host is and where it runs. Each answer is asked of the platform once and kept, a failed one too.
class HostIdentity {
public:
    explicit HostIdentity(platform::HostApplication& host) : mHost(host) {}

    const Text& KWO_ComputerName();
    const Text& KWO_UserName();
    /// False while the component runs inside a development environment that can host it.
    bool KWO_IsCompiled();
    bool KWO_IsWinNT();

private:
    platform::HostApplication& mHost;
    std::optional<Text> mComputerName;
    std::optional<Text> mUserName;
    std::optional<bool> mIsCompiled;
    std::optional<bool> mIsWinNT;
};

}  // namespace kwo::frame
