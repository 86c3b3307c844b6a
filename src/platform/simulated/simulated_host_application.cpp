#include "platform/simulated/simulated_host_application.h"

#include <algorithm>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kBufferOverflow = 111;
constexpr std::size_t kLongestComputerName = 15;
constexpr std::size_t kLongestModuleName = 255;

}  // namespace

SimulatedHostApplication::SimulatedHostApplication(World& world) : mWorld(world) {
    world.faults.Declare({"GetModuleFileName", "GetComputerName", "WNetGetUser", "GetUserName", "GetVersionEx",
                          "GetSystemDirectory", "GetWindowsDirectory"});
}

Text SimulatedHostApplication::ModuleFileName() {
    if (mWorld.Fails("GetModuleFileName")) return {};
    return ThroughAnsi(moduleFileName).substr(0, kLongestModuleName);
}

bool SimulatedHostApplication::ComputerName(Text& name) {
    if (mWorld.Fails("GetComputerName")) return false;
    if (computerName.size() > kLongestComputerName) {
        mWorld.lastError = kBufferOverflow;
        return false;
    }
    name = ThroughAnsi(computerName);
    return true;
}

bool SimulatedHostApplication::NetworkUserName(Text& name) {
    if (mWorld.Fails("WNetGetUser")) return false;
    name = ThroughAnsi(networkUserName);
    return true;
}

bool SimulatedHostApplication::UserName(Text& name) {
    if (mWorld.Fails("GetUserName")) return false;
    name = ThroughAnsi(userName);
    return true;
}

bool SimulatedHostApplication::QueryPlatform(Platform& result) {
    if (mWorld.Fails("GetVersionEx")) return false;
    result = platform;
    return true;
}

Text SimulatedHostApplication::EnvironmentVariable(TextView name) {
    const auto found = environment.find(Text(name));
    return found == environment.end() ? Text() : found->second;
}

std::uint32_t SimulatedHostApplication::SystemDirectory(std::string& buffer) {
    return Directory("GetSystemDirectory", systemDirectory, buffer);
}

std::uint32_t SimulatedHostApplication::WindowsDirectory(std::string& buffer) {
    return Directory("GetWindowsDirectory", windowsDirectory, buffer);
}

std::uint32_t SimulatedHostApplication::Directory(std::string_view call, const std::string& directory,
                                                  std::string& buffer) {
    mWorld.log.Add(std::string(call) + " " + std::to_string(buffer.size()));
    if (mWorld.Fails(call)) return 0;
    const std::size_t needed = directory.size() + (directoryNeedsNoEnd ? 0 : 1);
    if (needed > buffer.size()) return static_cast<std::uint32_t>(directory.size() + 1);
    std::copy(directory.c_str(), directory.c_str() + needed, buffer.begin());
    return static_cast<std::uint32_t>(directory.size());
}

void SimulatedHostApplication::WriteLog(TextView text) {
    mWorld.log.Add("HostLog " + Shown(text));
}

}  // namespace kwo::platform::simulated
