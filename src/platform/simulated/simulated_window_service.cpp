#include "platform/simulated/simulated_window_service.h"

#include <array>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kInvalidWindow = 1400;
constexpr std::size_t kLongestTitle = 254;  // a buffer of 255 with the terminating zero

// By the low four bits of the style: ok, ok/cancel, abort/retry/ignore, yes/no/cancel, yes/no, retry/cancel,
// cancel/try/continue.
constexpr std::array<std::int32_t, 7> kFirstButton = {1, 1, 3, 6, 6, 4, 2};

}  // namespace

SimulatedWindowService::SimulatedWindowService(World& world) : mWorld(world) {
    world.faults.Declare({{"IsWindow", {1400}},
                          {"IsIconic", {1400}},
                          {"FlashWindow", {1400}},
                          {"GetWindowText", {1400, Faults::kNoMemory}},
                          {"MessageBox", {1158, Faults::kNoMemory}}});
}

bool SimulatedWindowService::WindowExists(Handle window) {
    const Call call(mWorld, "IsWindow");
    return !call.Fails() && windows.contains(window);
}

bool SimulatedWindowService::IsMinimised(Handle window) {
    const Call call(mWorld, "IsIconic");
    if (call.Fails()) return false;
    const auto found = windows.find(window);
    return found != windows.end() && found->second.minimised;
}

void SimulatedWindowService::Flash(Handle window, bool invert) {
    const Call call(mWorld, "FlashWindow");
    mWorld.log.Add("Flash " + std::to_string(window) + (invert ? " 1" : " 0"));
    if (call.Fails()) return;
    const auto found = windows.find(window);
    if (found != windows.end() && invert) ++found->second.flashes;
}

Text SimulatedWindowService::WindowText(Handle window) {
    const Call call(mWorld, "GetWindowText");
    if (call.Fails()) return {};
    const auto found = windows.find(window);
    if (found == windows.end()) {
        mWorld.lastError = kInvalidWindow;
        return {};
    }
    return ThroughAnsi(found->second.title).substr(0, kLongestTitle);
}

std::int32_t SimulatedWindowService::AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) {
    const Call call(mWorld, "MessageBox");
    const Question question{owner, ThroughAnsi(prompt), ThroughAnsi(title), style};
    mWorld.log.Add("Ask owner=" + std::to_string(owner) + " style=" + Hex(style) +
                   " title=" + Shown(TextView(question.title)) + " prompt=" + Shown(TextView(question.prompt)));
    if (call.Fails()) return 0;
    if (owner != 0 && !windows.contains(owner)) {
        mWorld.lastError = kInvalidWindow;
        return 0;
    }
    if (onAsk) return onAsk(question);
    if (answers.empty()) return kFirstButton.at(style & 0xF);
    const std::int32_t answer = answers.front();
    answers.pop_front();
    return answer;
}

}  // namespace kwo::platform::simulated
