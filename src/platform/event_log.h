#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// The system's event log on this machine.
///
///     const auto source = log.Open(u"KWOMsg");
///     log.Report(source, 4, 1, u"started");
///     if (source != 0) log.Close(source);
///
/// No call raises anything but lack of memory. After a failure the last-error value says why.
class EventLog {
public:
    /// An open log; 0 is none.
    using Source = std::uintptr_t;

    virtual ~EventLog() = default;

    /// Opens the log for entries of this source (RegisterEventSourceA); 0 on failure, also for an empty name.
    /// The caller closes it.
    /// The source need not be registered. The viewer then shows the text after a note that it knows no description.
    virtual Source Open(TextView sourceName) = 0;
    /// Writes one entry: category 0, no user, one text, no data (ReportEventW).
    /// The text ends at its first zero character.
    /// `type` is the system's number: 1 error, 2 warning, 4 information. `source` is one of Open; 0 fails.
    /// Returns false on failure.
    virtual bool Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) = 0;
    /// Ends a successful Open. `source` must not be used after it.
    virtual void Close(Source source) = 0;
};

}  // namespace kwo::platform
