#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// The system's event log on this machine.
class EventLog {
public:
    using Source = std::uintptr_t;  ///< 0 is none

    virtual ~EventLog() = default;

    /// Opens the log for entries of this source (RegisterEventSourceA); 0 on failure. The caller closes it.
    virtual Source Open(TextView sourceName) = 0;
    /// Writes one entry: category 0, no user, one text, no data (ReportEventW). `type` is the system's number for the
    /// type. False on failure. `source` is one of Open.
    virtual bool Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) = 0;
    /// Ends a successful Open.
    virtual void Close(Source source) = 0;
};

}  // namespace kwo::platform
