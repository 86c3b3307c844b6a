#include "platform/simulated/simulated_desktop.h"

namespace kwo::platform::simulated {

Platform SimulatedDesktop::Services() {
    return {clock,    conversions, debugOutput,   windows,  eventLog, files, host,
            logFiles, messages,    processMemory, registry, screen,   errors};
}

std::shared_ptr<SimulatedObject> SimulatedDesktop::MakeObject(Text typeName, std::string label) {
    return std::make_shared<SimulatedObject>(log, std::move(typeName), std::move(label));
}

}  // namespace kwo::platform::simulated
