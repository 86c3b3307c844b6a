#pragma once

#include <map>
#include <vector>

#include "platform/event_log.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The system's event log.
/// Every call is in the log of the desktop, too, as `ReportEvent type=4 id=1 "text"`.
/// Calls that can fail: RegisterEventSource, ReportEvent and DeregisterEventSource.
class SimulatedEventLog final : public EventLog {
public:
    /// One entry, as Report was called.
    struct Entry {
        Text source;
        std::uint16_t type = 0;
        std::uint32_t eventId = 0;
        Text text;
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    explicit SimulatedEventLog(World& world);

    Source Open(TextView sourceName) override;
    bool Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) override;
    void Close(Source source) override;

    /// All entries so far, the oldest first.
    std::vector<Entry> entries;
    /// Sources that are open; 0 when nothing leaks.
    std::size_t OpenSources() const { return mSources.size(); }

private:
    World& mWorld;
    std::map<Source, Text> mSources;
    Source mNext = 1;
};

}  // namespace kwo::platform::simulated
