#include "frame/event_log_writer.h"

namespace kwo::frame {

namespace {

/// The log, open for entries of a source, for as long as the scope lasts.
class OpenedLog {
public:
    OpenedLog(platform::EventLog& log, TextView sourceName) : mLog(log), mSource(log.Open(sourceName)) {}
    ~OpenedLog() {
        if (mSource != 0) mLog.Close(mSource);
    }
    OpenedLog(const OpenedLog&) = delete;
    OpenedLog& operator=(const OpenedLog&) = delete;

    platform::EventLog::Source Source() const { return mSource; }

private:
    platform::EventLog& mLog;
    platform::EventLog::Source mSource;
};

}  // namespace

void EventLogWriter::KWO_LogEvent(TextView text, std::int32_t eventType, std::int32_t eventId) {
    if (!mIdentity.KWO_IsWinNT()) return;
    if (mSourceName.empty()) mSourceName = u"KWOMsg";

    const Text line = ReplaceAll(text, kCrLf, u" ");
    const OpenedLog log(mLog, mSourceName);
    mTrace.KWO_TraceWrite(u"Eventlog: " + line, true, true);
    mApiResult.last =
        mLog.Report(log.Source(), static_cast<std::uint16_t>(eventType), static_cast<std::uint32_t>(eventId), line);
}

}  // namespace kwo::frame
