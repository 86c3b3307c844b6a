#pragma once

#include "platform/event_log.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The event log of this machine.
/// A source name is passed in the ANSI code page, the text of an entry in UTF-16, so that it shows in every language.
class WindowsEventLog final : public EventLog {
public:
    explicit WindowsEventLog(Context& context) : mLastError(context.lastError) {}

    /// RegisterEventSourceA on this machine. The handle is the source.
    Source Open(TextView sourceName) override;
    /// ReportEventW, because ReportEventA would lose characters.
    bool Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) override;
    void Close(Source source) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
