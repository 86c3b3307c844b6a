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
    world.faults.Declare({{"GetModuleFileName", {126, Faults::kNoMemory}},
                          {"GetComputerName", {1722, Faults::kNoMemory}},
                          {"WNetGetUser", {1222, Faults::kNoMemory}},
                          {"GetUserName", {5, Faults::kNoMemory}},
                          {"GetVersionEx", {5}},
                          {"GetSystemDirectory", {5}},
                          {"GetWindowsDirectory", {5}},
                          {"GetFileVersionInfo", {Faults::kNoMemory}},
                          {"GetEnvironmentVariable", {Faults::kNoMemory}},
                          {"ReportEvent of the host", {Faults::kNoMemory}}});
}

Text SimulatedHostApplication::Fact(const Text& text) {
    const Call call(mWorld, "GetFileVersionInfo");
    return text;
}

Text SimulatedHostApplication::ModuleFileName() {
    const Call call(mWorld, "GetModuleFileName");
    if (call.Fails()) return {};
    return ThroughAnsi(moduleFileName).substr(0, kLongestModuleName);
}

bool SimulatedHostApplication::ComputerName(Text& name) {
    const Call call(mWorld, "GetComputerName");
    if (call.Fails()) return false;
    if (computerName.size() > kLongestComputerName) {
        mWorld.lastError = kBufferOverflow;
        return false;
    }
    name = ThroughAnsi(computerName);
    return true;
}

bool SimulatedHostApplication::NetworkUserName(Text& name) {
    const Call call(mWorld, "WNetGetUser");
    if (call.Fails()) return false;
    name = ThroughAnsi(networkUserName);
    return true;
}

bool SimulatedHostApplication::UserName(Text& name) {
    const Call call(mWorld, "GetUserName");
    if (call.Fails()) return false;
    name = ThroughAnsi(userName);
    return true;
}

bool SimulatedHostApplication::QueryPlatform(Platform& result) {
    const Call call(mWorld, "GetVersionEx");
    if (call.Fails()) return false;
    result = platform;
    return true;
}

Text SimulatedHostApplication::EnvironmentVariable(TextView name) {
    const Call call(mWorld, "GetEnvironmentVariable");
    const auto found = environment.find(Text(name));
    return found == environment.end() ? Text() : found->second;
}

std::uint32_t SimulatedHostApplication::SystemDirectory(std::string& buffer) {
    return Directory("GetSystemDirectory", systemDirectory, buffer);
}

std::uint32_t SimulatedHostApplication::WindowsDirectory(std::string& buffer) {
    return Directory("GetWindowsDirectory", windowsDirectory, buffer);
}

std::uint32_t SimulatedHostApplication::Directory(std::string_view name, const std::string& directory,
                                                  std::string& buffer) {
    const Call call(mWorld, name);
    mWorld.log.Add(std::string(name) + " " + std::to_string(buffer.size()));
    if (call.Fails()) return 0;
    const std::size_t needed = directory.size() + (directoryNeedsNoEnd ? 0 : 1);
    if (needed > buffer.size()) return static_cast<std::uint32_t>(directory.size() + 1);
    std::copy(directory.c_str(), directory.c_str() + needed, buffer.begin());
    return static_cast<std::uint32_t>(directory.size());
}

void SimulatedHostApplication::WriteLog(TextView text) {
    const Call call(mWorld, "ReportEvent of the host");
    mWorld.log.Add("HostLog " + Shown(UpToZero(text)));
}

}  // namespace kwo::platform::simulated
