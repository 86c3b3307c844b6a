#include "platform/simulated/simulated_screen.h"

#include <string>

namespace kwo::platform::simulated {

SimulatedScreen::SimulatedScreen(World& world) : mWorld(world) {
    world.faults.Declare(
        {"Get MousePointer", "Let MousePointer", "Get ActiveForm", "Get HelpContext", "Let HelpContext"});
}

std::intptr_t SimulatedScreen::MousePointer() {
    mWorld.MayRaise("Get MousePointer");
    return pointer;
}

void SimulatedScreen::SetMousePointer(std::intptr_t newPointer) {
    mWorld.log.Add("Let MousePointer " + std::to_string(newPointer));
    mWorld.MayRaise("Let MousePointer");
    pointer = newPointer;
}

Handle SimulatedScreen::ActiveForm() {
    mWorld.MayRaise("Get ActiveForm");
    return activeForm;
}

std::int32_t SimulatedScreen::HelpContext(Handle form) {
    mWorld.MayRaise("Get HelpContext");
    const auto found = helpContexts.find(form);
    return found == helpContexts.end() ? 0 : found->second;
}

void SimulatedScreen::SetHelpContext(Handle form, std::int32_t context) {
    mWorld.log.Add("Let HelpContext " + std::to_string(form) + " " + std::to_string(context));
    mWorld.MayRaise("Let HelpContext");
    helpContexts[form] = context;
}

}  // namespace kwo::platform::simulated
