#include "platform/simulated/simulated_programs.h"

#include <string>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {

void SimulatedPrograms::Activate(TextView title) {
    mWorld.log.Add("Activate \"" + Shown(title) + '"');
    for (const Text& known : titles) {
        if (Folded(TextView(known)) == Folded(title)) return;
    }
    RaiseRuntime(RuntimeError::InvalidProcedureCall);
}

std::int32_t SimulatedPrograms::Start(TextView commandLine, std::int16_t windowMode) {
    mWorld.log.Add("Start \"" + Shown(commandLine) + "\" " + std::to_string(windowMode));
    if (!installed.contains(Text(commandLine.substr(0, commandLine.find(u' '))))) {
        RaiseRuntime(RuntimeError::FileNotFound);
    }
    return mNextTask++;
}

}  // namespace kwo::platform::simulated
