#pragma once

#include <memory>
#include <utility>

#include "platform/platform.h"
#include "platform/simulated/simulated_clock.h"
#include "platform/simulated/simulated_component_factory.h"
#include "platform/simulated/simulated_conversions.h"
#include "platform/simulated/simulated_debug_output.h"
#include "platform/simulated/simulated_drawing.h"
#include "platform/simulated/simulated_event_log.h"
#include "platform/simulated/simulated_file_system.h"
#include "platform/simulated/simulated_host_application.h"
#include "platform/simulated/simulated_keyboard.h"
#include "platform/simulated/simulated_locale_source.h"
#include "platform/simulated/simulated_log_files.h"
#include "platform/simulated/simulated_message_loop.h"
#include "platform/simulated/simulated_mouse.h"
#include "platform/simulated/simulated_notification_area.h"
#include "platform/simulated/simulated_object.h"
#include "platform/simulated/simulated_pictures.h"
#include "platform/simulated/simulated_process_memory.h"
#include "platform/simulated/simulated_programs.h"
#include "platform/simulated/simulated_registry_store.h"
#include "platform/simulated/simulated_screen.h"
#include "platform/simulated/simulated_system_errors.h"
#include "platform/simulated/simulated_system_fonts.h"
#include "platform/simulated/simulated_system_metrics.h"
#include "platform/simulated/simulated_timer_service.h"
#include "platform/simulated/simulated_window_service.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// A whole small desktop in memory. It does nothing on its own: time moves when it is told to (or when the logic
/// waits), the user answers what a test has scripted, and calls fail where a test has planned it.
class SimulatedDesktop {
private:
    World mWorld;

public:
    /// The desktop must outlive what uses them.
    platform::Platform Services();

    void Advance(std::int64_t ms) { clock.Advance(ms); }
    void Advance(Milliseconds span) { clock.Advance(span); }
    void Post(std::function<void()> action) { messages.Post(std::move(action)); }
    void PostAt(std::int64_t delayMs, std::function<void()> action) { messages.PostAt(delayMs, std::move(action)); }
    /// The ANSI code page of what is stored in the registry and of conversions; names stay in Windows-1252.
    void SetCodePage(CodePage page) { mWorld.codePage = page; }
    void FailCall(std::string_view name, int nth, std::int32_t code) { faults.FailCall(name, nth, code); }
    /// Makes an object of the host; its calls are in this desktop's log.
    std::shared_ptr<SimulatedObject> MakeObject(Text typeName = {}, std::string label = {});

    Log& log = mWorld.log;
    Faults& faults = mWorld.faults;

    SimulatedClock clock{mWorld};
    SimulatedConversions conversions{mWorld};
    SimulatedDebugOutput debugOutput;
    SimulatedWindowService windows{mWorld};
    SimulatedDrawing drawing{mWorld};
    SimulatedEventLog eventLog{mWorld};
    SimulatedFileSystem files{mWorld};
    SimulatedHostApplication host{mWorld};
    SimulatedLogFiles logFiles{mWorld, files};
    SimulatedMessageLoop messages{mWorld, clock};
    SimulatedMouse mouse;
    SimulatedNotificationArea notificationArea{mWorld};
    SimulatedPictures pictures{conversions};
    SimulatedProcessMemory processMemory{mWorld, host};
    SimulatedPrograms programs{mWorld, windows};
    SimulatedRegistryStore registry{mWorld};
    SimulatedScreen screen{mWorld};
    SimulatedScreenDrawing screenDrawing{mWorld};
    SimulatedSystemErrors errors{mWorld};
    SimulatedSystemFonts fonts{mWorld};
    SimulatedSystemMetrics metrics;
    SimulatedComponentFactory components{mWorld};
    SimulatedKeyboard keyboard{mWorld};
    SimulatedLocaleSource locale{mWorld};
    SimulatedTimerService timers{mWorld, clock, messages};

    SimulatedDesktop() { files.AddFolder(host.folder); }
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;
};

}  // namespace kwo::platform::simulated
