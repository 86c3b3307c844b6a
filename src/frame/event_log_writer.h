#pragma once

#include <cstdint>

#include "frame/api_result.h"
#include "frame/call_trace.h"
#include "frame/host_identity.h"
#include "platform/event_log.h"

namespace kwo::frame {

enum class EventType : std::int32_t { Error = 1, Warning = 2, Information = 4 };

/// Entries in the system's event log under the component's source name.
class EventLogWriter {
public:
    EventLogWriter(platform::EventLog& log, HostIdentity& identity, CallTrace& trace, ApiResult& apiResult)
        : mLog(log), mIdentity(identity), mTrace(trace), mApiResult(apiResult) {}

    /// On the NT family only; failures are swallowed. The type crosses to the platform as 16 bits.
    void KWO_LogEvent(TextView text, std::int32_t eventType, std::int32_t eventId);

    /// The source that entries are written under; "KWOMsg" unless set.
    void SetSourceName(TextView name) { mSourceName = name; }

private:
    platform::EventLog& mLog;
    HostIdentity& mIdentity;
    CallTrace& mTrace;
    ApiResult& mApiResult;
    Text mSourceName;
};

}  // namespace kwo::frame
