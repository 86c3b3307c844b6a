#include "platform/simulated/host_facts.h"

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kBufferOverflow = 111;
constexpr std::size_t kLongestComputerName = 15;
constexpr std::size_t kLongestModuleName = 255;

}  // namespace

HostFacts::HostFacts(World& world) : mWorld(world) {
    world.faults.Declare({"GetModuleFileName", "GetComputerName", "WNetGetUser", "GetUserName", "GetVersionEx"});
}

Text HostFacts::ModuleFileName() {
    if (mWorld.Fails("GetModuleFileName")) return {};
    return ThroughAnsi(moduleFileName).substr(0, kLongestModuleName);
}

bool HostFacts::ComputerName(Text& name) {
    if (mWorld.Fails("GetComputerName")) return false;
    if (computerName.size() > kLongestComputerName) {
        mWorld.lastError = kBufferOverflow;
        return false;
    }
    name = ThroughAnsi(computerName);
    return true;
}

bool HostFacts::NetworkUserName(Text& name) {
    if (mWorld.Fails("WNetGetUser")) return false;
    name = ThroughAnsi(networkUserName);
    return true;
}

bool HostFacts::UserName(Text& name) {
    if (mWorld.Fails("GetUserName")) return false;
    name = ThroughAnsi(userName);
    return true;
}

bool HostFacts::QueryPlatform(Platform& result) {
    if (mWorld.Fails("GetVersionEx")) return false;
    result = platform;
    return true;
}

void HostFacts::WriteLog(TextView text) {
    mWorld.log.Add("HostLog " + Shown(text));
}

}  // namespace kwo::platform::simulated
