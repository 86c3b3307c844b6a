#include "frame/host_identity.h"

#include <algorithm>
#include <array>

namespace kwo::frame {

namespace {

constexpr std::array<TextView, 2> kDevelopmentHosts = {u"KWODEV.EXE", u"KWODEV64.EXE"};
constexpr std::uint32_t kNtFamily = 2;

}  // namespace

const Text& HostIdentity::KWO_ComputerName() {
    if (!mComputerName) {
        Text name;
        mComputerName = mHost.ComputerName(name) ? name : Text();
    }
    return *mComputerName;
}

const Text& HostIdentity::KWO_UserName() {
    if (!mUserName) {
        Text name;
        mUserName = mHost.NetworkUserName(name) || mHost.UserName(name) ? name : Text();
    }
    return *mUserName;
}

bool HostIdentity::KWO_IsCompiled() {
    if (!mIsCompiled) {
        const Text module = AsciiUpper(KWO_FileNamePart(mHost.ModuleFileName()));
        mIsCompiled = std::ranges::find(kDevelopmentHosts, TextView(module)) == kDevelopmentHosts.end();
    }
    return *mIsCompiled;
}

bool HostIdentity::KWO_IsWinNT() {
    if (!mIsWinNT) {
        platform::HostApplication::Platform version;
        mIsWinNT = mHost.QueryPlatform(version) && version.platformId == kNtFamily;
    }
    return *mIsWinNT;
}

}  // namespace kwo::frame
