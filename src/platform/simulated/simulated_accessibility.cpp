#include "platform/simulated/simulated_accessibility.h"

#include <string_view>

#include "platform/simulated/simulated_window_service.h"

namespace kwo::platform::simulated {
namespace {

constexpr auto kInvalidArgument = static_cast<std::int32_t>(0x80070057);

std::string_view NameOf(Accessibility::Property property) {
    constexpr std::string_view kNames[] = {"Role",         "State", "Name", "Value", "Description", "KeyboardShortcut",
                                           "DefaultAction"};
    return kNames[static_cast<std::size_t>(property)];
}

}  // namespace

SimulatedAccessibility::SimulatedAccessibility(World& world) : mWorld(world) {
    world.faults.Declare({{"SetHwndProp", {kInvalidArgument}},
                          {"SetHwndPropStr", {kInvalidArgument, Faults::kNoMemory}},
                          {"ClearHwndProps", {kInvalidArgument}}});
}

bool SimulatedAccessibility::Begin(Handle window, std::int32_t role) {
    const UncountedMemory memory;
    if (!mIsInstalled || mIsRefused) return false;
    // The service is held while a window is annotated.
    if (annotations.empty()) mIsRefused = Call(mWorld, "CoCreateInstance").Status().has_value();
    return !mIsRefused && Set("SetHwndProp", "Begin", window, Property::Role, std::to_string(role));
}

bool SimulatedAccessibility::SetNumber(Handle window, Property property, std::int32_t number) {
    const UncountedMemory memory;
    return Set("SetHwndProp", "Set", window, property, std::to_string(number));
}

bool SimulatedAccessibility::SetText(Handle window, Property property, TextView text) {
    const UncountedMemory memory;
    return Set("SetHwndPropStr", "Set", window, property, '"' + Shown(UpToZero(text)) + '"');
}

void SimulatedAccessibility::End(Handle window) noexcept {
    const Call call(mWorld, "ClearHwndProps");
    mCalls.push_back("End " + std::to_string(window));
    annotations.erase(window);
}

void SimulatedAccessibility::Notify(Handle window, std::uint32_t event) {
    const UncountedMemory memory;
    mCalls.push_back("Notify " + std::to_string(window) + ' ' + Hex(event));
    if (!onNotify) return;
    const CountedMemory counted;
    onNotify(window, event);
}

bool SimulatedAccessibility::Set(std::string_view name, std::string_view verb, Handle window, Property property,
                                 const std::string& value) {
    const Call call(mWorld, name);
    std::string line(verb);
    line += ' ' + std::to_string(window) + ' ';
    line += NameOf(property);
    mCalls.push_back(line + ' ' + value);
    if (call.Status() || !mWorld.services.windows.windows.contains(window)) return false;
    annotations[window][property] = value;
    return true;
}

}  // namespace kwo::platform::simulated
