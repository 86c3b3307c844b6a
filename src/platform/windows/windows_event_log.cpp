#include "platform/windows/windows_event_log.h"

#include "platform/windows/ansi.h"

namespace kwo::platform::windows {

EventLog::Source WindowsEventLog::Open(TextView sourceName) {
    return reinterpret_cast<Source>(mLastError.After(::RegisterEventSourceA(nullptr, ToAnsi(sourceName).c_str())));
}

bool WindowsEventLog::Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) {
    const std::wstring line = ToWide(text);
    const wchar_t* lines[] = {line.c_str()};
    return mLastError.After(::ReportEventW(reinterpret_cast<HANDLE>(source), type, 0, eventId, nullptr, 1, 0, lines,
                                           nullptr)) != FALSE;
}

void WindowsEventLog::Close(Source source) {
    mLastError.After(::DeregisterEventSource(reinterpret_cast<HANDLE>(source)));
}

}  // namespace kwo::platform::windows
