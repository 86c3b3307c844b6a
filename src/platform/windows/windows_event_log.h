#pragma once

#include "platform/event_log.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

class WindowsEventLog final : public EventLog {
public:
    explicit WindowsEventLog(Context& context) : mLastError(context.lastError) {}

    Source Open(TextView sourceName) override;
    bool Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) override;
    void Close(Source source) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
