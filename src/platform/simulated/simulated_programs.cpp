#include "platform/simulated/simulated_programs.h"

#include <algorithm>
#include <string>

#include "platform/simulated/simulated_window_service.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {

void SimulatedPrograms::Activate(TextView title) {
    const Call call(mWorld, "EnumWindows");
    mWorld.log.Add("Activate \"" + Shown(title) + '"');
    const auto found = std::ranges::find_if(mWindows.windows, [&](const auto& entry) {
        const SimulatedWindowService::Window& window = entry.second;
        return !window.hidden && Folded(TextView(window.title)) == Folded(title);
    });
    if (call.Fails() || found == mWindows.windows.end()) RaiseRuntime(RuntimeError::InvalidProcedureCall);
    found->second.minimised = false;
}

std::int32_t SimulatedPrograms::Start(TextView commandLine, std::int16_t windowMode) {
    const Call call(mWorld, "CreateProcess");
    mWorld.log.Add("Start \"" + Shown(commandLine) + "\" " + std::to_string(windowMode));
    const bool isTaken = commandLine.size() <= kLongestCommandLine && commandLine.find(u'\0') == TextView::npos;
    const Text program = isTaken ? ProgramOf(commandLine) : Text();
    if (call.Fails() || program.empty()) RaiseRuntime(RuntimeError::FileNotFound);
    started.push_back(program);
    return mNextTask++;
}

Text SimulatedPrograms::ProgramOf(TextView commandLine) const {
    if (commandLine.starts_with(u'"')) {
        const TextView quoted = commandLine.substr(1, commandLine.find(u'"', 1) - 1);
        return installed.contains(Text(quoted)) ? Text(quoted) : Text();
    }
    for (std::size_t end = 0; end != TextView::npos;) {
        end = commandLine.find(u' ', end + 1);
        Text program(commandLine.substr(0, end));
        if (!program.ends_with(u".exe")) program += u".exe";
        if (installed.contains(program)) return program;
    }
    return {};
}

}  // namespace kwo::platform::simulated
