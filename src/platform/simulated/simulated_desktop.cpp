#include "platform/simulated/simulated_desktop.h"

namespace kwo::platform::simulated {

Platform SimulatedDesktop::Services() {
    return ServicesOf(*this);
}

std::shared_ptr<SimulatedObject> SimulatedDesktop::MakeObject(Text typeName, std::string label) {
    return std::make_shared<SimulatedObject>(log, faults, std::move(typeName), std::move(label));
}

}  // namespace kwo::platform::simulated
