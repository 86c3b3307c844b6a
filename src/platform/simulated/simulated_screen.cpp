#include "platform/simulated/simulated_screen.h"

#include <string>

namespace kwo::platform::simulated {

SimulatedScreen::SimulatedScreen(World& world) : mWorld(world) {
    world.faults.Declare({{"Get MousePointer", {}},
                          {"Let MousePointer", {}},
                          {"Get ActiveForm", {}},
                          {"Get HelpContext", {}},
                          {"Let HelpContext", {}}});
}

std::intptr_t SimulatedScreen::MousePointer() {
    const Call call(mWorld, "Get MousePointer");
    call.RaiseIfPlanned();
    return pointer;
}

void SimulatedScreen::SetMousePointer(std::intptr_t newPointer) {
    const Call call(mWorld, "Let MousePointer");
    mWorld.log.Add("Let MousePointer " + std::to_string(newPointer));
    call.RaiseIfPlanned();
    pointer = newPointer;
}

Handle SimulatedScreen::ActiveForm() {
    const Call call(mWorld, "Get ActiveForm");
    call.RaiseIfPlanned();
    return activeForm;
}

std::int32_t SimulatedScreen::HelpContext(Handle form) {
    const Call call(mWorld, "Get HelpContext");
    call.RaiseIfPlanned();
    const auto found = helpContexts.find(form);
    return found == helpContexts.end() ? 0 : found->second;
}

void SimulatedScreen::SetHelpContext(Handle form, std::int32_t context) {
    const Call call(mWorld, "Let HelpContext");
    mWorld.log.Add("Let HelpContext " + std::to_string(form) + " " + std::to_string(context));
    call.RaiseIfPlanned();
    helpContexts[form] = context;
}

}  // namespace kwo::platform::simulated
