#pragma once

#include <cstdint>

#include "frame/api_result.h"
#include "frame/call_trace.h"
#include "frame/host_identity.h"
#include "platform/event_log.h"

namespace kwo::frame {

/// The system's own numbers for the types of an entry.
enum class EventType : std::int32_t { Error = 1, Warning = 2, Information = 4 };

/// Writes entries into the system's event log under the component's source name. Unattended message boxes use it.
class EventLogWriter {
public:
    /// Keeps references to all of these; they must outlive it.
    EventLogWriter(platform::EventLog& log, HostIdentity& identity, CallTrace& trace, ApiResult& apiResult)
        : mLog(log), mIdentity(identity), mTrace(trace), mApiResult(apiResult) {}

    /// Writes one entry and a line on the call trace.
    /// Line ends in `text` become blanks.
    /// `eventType` is an EventType; only its low 16 bits count. `eventId` is any number; its text need not be
    /// registered.
    /// Failures raise nothing: ApiResult is 0 after a failure.
    /// Does nothing on a system that is not of the NT family.
    void KWO_LogEvent(TextView text, std::int32_t eventType, std::int32_t eventId);

    /// Sets the source name of later entries.
    /// An empty name means "KWOMsg". The name need not be registered with the system.
    void SetSourceName(TextView name) { mSourceName = name; }

private:
    platform::EventLog& mLog;
    HostIdentity& mIdentity;
    CallTrace& mTrace;
    ApiResult& mApiResult;
    /// Empty until the first entry.
    Text mSourceName;
};

}  // namespace kwo::frame
