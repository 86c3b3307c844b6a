#pragma once

#include <memory>
#include <utility>

#include "platform/platform.h"
#include "platform/simulated/component_classes.h"
#include "platform/simulated/debug_lines.h"
#include "platform/simulated/english_conversions.h"
#include "platform/simulated/error_texts.h"
#include "platform/simulated/event_entries.h"
#include "platform/simulated/file_names.h"
#include "platform/simulated/host_facts.h"
#include "platform/simulated/memory_counters.h"
#include "platform/simulated/message_queue.h"
#include "platform/simulated/recorded_drawing.h"
#include "platform/simulated/registry_tree.h"
#include "platform/simulated/screen_state.h"
#include "platform/simulated/simulated_fonts.h"
#include "platform/simulated/simulated_keyboard.h"
#include "platform/simulated/simulated_metrics.h"
#include "platform/simulated/simulated_mouse.h"
#include "platform/simulated/simulated_object.h"
#include "platform/simulated/simulated_pictures.h"
#include "platform/simulated/simulated_programs.h"
#include "platform/simulated/simulated_timers.h"
#include "platform/simulated/simulated_tray.h"
#include "platform/simulated/user_locale.h"
#include "platform/simulated/virtual_clock.h"
#include "platform/simulated/window_list.h"
#include "platform/simulated/world.h"
#include "platform/simulated/written_files.h"

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
    /// An object of the host's whose calls stand in this desktop's log.
    std::shared_ptr<SimulatedObject> MakeObject(Text typeName = {}, std::string label = {});

    Log& log = mWorld.log;
    Faults& faults = mWorld.faults;

    VirtualClock clock{mWorld};
    EnglishConversions conversions{mWorld};
    DebugLines debugOutput;
    WindowList windows{mWorld};
    RecordedDrawing drawing{mWorld};
    EventEntries eventLog{mWorld};
    FileNames files{mWorld};
    HostFacts host{mWorld};
    WrittenFiles logFiles{mWorld, files};
    MessageQueue messages{mWorld, clock};
    SimulatedMouse mouse;
    SimulatedTray notificationArea{mWorld};
    SimulatedPictures pictures{conversions};
    MemoryCounters processMemory{mWorld, host};
    SimulatedPrograms programs{mWorld, windows};
    RegistryTree registry{mWorld};
    ScreenState screen{mWorld};
    RecordedScreenDrawing screenDrawing{mWorld};
    ErrorTexts errors{mWorld};
    SimulatedFonts fonts{mWorld};
    SimulatedMetrics metrics;
    ComponentClasses components{mWorld};
    SimulatedKeyboard keyboard{mWorld};
    UserLocale locale{mWorld};
    SimulatedTimers timers{mWorld, clock, messages};

    SimulatedDesktop() { files.AddFolder(host.folder); }
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;
};

}  // namespace kwo::platform::simulated
