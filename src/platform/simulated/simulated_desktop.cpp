#include "platform/simulated/simulated_desktop.h"

namespace kwo::platform::simulated {

Platform SimulatedDesktop::Services() {
    return {.clock = clock,
            .components = components,
            .conversions = conversions,
            .debugOutput = debugOutput,
            .desktop = windows,
            .drawing = drawing,
            .eventLog = eventLog,
            .files = files,
            .host = host,
            .keyboard = keyboard,
            .locale = locale,
            .logFiles = logFiles,
            .messages = messages,
            .mouse = mouse,
            .notificationArea = notificationArea,
            .pictures = pictures,
            .processMemory = processMemory,
            .programs = programs,
            .registry = registry,
            .screen = screen,
            .screenDrawing = screenDrawing,
            .errors = errors,
            .fonts = fonts,
            .metrics = metrics,
            .timers = timers};
}

std::shared_ptr<SimulatedObject> SimulatedDesktop::MakeObject(Text typeName, std::string label) {
    return std::make_shared<SimulatedObject>(log, std::move(typeName), std::move(label));
}

}  // namespace kwo::platform::simulated
