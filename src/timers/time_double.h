#pragma once

#include "platform/platform.h"

namespace kwo::timers {

/// The services with another clock and other timers.
inline platform::Platform WithTime(const platform::Platform& from, platform::Clock& clock,
                                   platform::TimerService& timers) {
    return {.clock = clock,
            .components = from.components,
            .conversions = from.conversions,
            .debugOutput = from.debugOutput,
            .desktop = from.desktop,
            .drawing = from.drawing,
            .eventLog = from.eventLog,
            .files = from.files,
            .host = from.host,
            .keyboard = from.keyboard,
            .locale = from.locale,
            .logFiles = from.logFiles,
            .messages = from.messages,
            .mouse = from.mouse,
            .notificationArea = from.notificationArea,
            .pictures = from.pictures,
            .processMemory = from.processMemory,
            .programs = from.programs,
            .registry = from.registry,
            .screen = from.screen,
            .screenDrawing = from.screenDrawing,
            .errors = from.errors,
            .fonts = from.fonts,
            .metrics = from.metrics,
            .timers = timers};
}

}  // namespace kwo::timers
