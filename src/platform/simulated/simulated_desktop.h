#pragma once

#include <memory>
#include <utility>

#include "platform/platform.h"
#include "platform/simulated/simulated_object.h"
#include "platform/simulated/world.h"

#define SERVICE_HEADER(name) <platform/simulated/simulated_##name.h>
#include "platform/service_headers.def"
#undef SERVICE_HEADER

namespace kwo::platform::simulated {

/// A whole small desktop in memory.
///
///     SimulatedDesktop desktop;
///     component::Component component(desktop.Services());
///     desktop.Advance(1'000);
///     desktop.messages.ProcessPending();  // what is due by now runs
///
/// It does nothing on its own: time moves when it is told to (or when the logic waits), the user answers what a test
/// has scripted, and calls fail where a test has planned it. Each service is a member by the name that it has in
/// Platform. One thread uses a desktop; two desktops share nothing.
class SimulatedDesktop {
private:
    World mWorld{ServicesOf<SimulatedServices>(*this)};

public:
    /// The desktop must outlive what uses them.
    platform::Platform Services();

    /// Moves the time, in whole milliseconds. What is due then runs when the messages are processed.
    void Advance(std::int64_t ms) { clock.Advance(ms); }
    /// The same with four decimals.
    void Advance(Milliseconds span) { clock.Advance(span); }
    /// Puts an action into the message queue. It runs when the queue is processed.
    void Post(std::function<void()> action) { messages.Post(std::move(action)); }
    /// The same, due `delayMs` from now.
    void PostAt(std::int64_t delayMs, std::function<void()> action) { messages.PostAt(delayMs, std::move(action)); }
    /// The ANSI code page of what is stored in the registry and of conversions; names stay in Windows-1252.
    void SetCodePage(CodePage page) { mWorld.codePage = page; }
    /// Makes the `nth` call of `name` from now fail: see Faults.
    void FailCall(std::string_view name, int nth, std::int32_t code) { faults.FailCall(name, nth, code); }
    /// Makes an object of the host; its calls are in this desktop's log.
    std::shared_ptr<SimulatedObject> MakeObject(Text typeName = {}, std::string label = {});

    /// What has happened so far.
    Log& log = mWorld.log;
    /// The planned failures, and how often each call was made.
    Faults& faults = mWorld.faults;

#define SERVICE(Interface, member) Simulated##Interface member = MakeService<Simulated##Interface>(mWorld);
#include "platform/services.def"
#undef SERVICE

    SimulatedDesktop() {
        files.AddFolder(host.folder);
    }
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;
};

}  // namespace kwo::platform::simulated
