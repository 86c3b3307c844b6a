#include "frame/event_log_writer.h"

namespace kwo::frame {

void EventLogWriter::KWO_LogEvent(TextView text, std::int32_t eventType, std::int32_t eventId) {
    if (!mIdentity.KWO_IsWinNT()) return;
    if (mSourceName.empty()) mSourceName = u"KWOMsg";

    const Text line = ReplaceAll(text, kCrLf, u" ");
    const platform::EventLog::Source source = mLog.Open(mSourceName);
    mTrace.KWO_TraceWrite(u"Eventlog: " + line, true, true);
    mApiResult.last =
        mLog.Report(source, static_cast<std::uint16_t>(eventType), static_cast<std::uint32_t>(eventId), line);
    if (source != 0) mLog.Close(source);
}

}  // namespace kwo::frame
