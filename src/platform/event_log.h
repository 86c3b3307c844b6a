#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// The system's event log.
class EventLog {
public:
    using Source = std::uintptr_t;  ///< 0 is none

    virtual ~EventLog() = default;

    /// RegisterEventSourceA on this machine; 0 on failure.
    virtual Source Open(TextView sourceName) = 0;
    /// ReportEventW: category 0, no user, one text, no data.
    virtual bool Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) = 0;
    virtual void Close(Source source) = 0;
};

}  // namespace kwo::platform
