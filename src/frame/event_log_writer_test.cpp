#include "frame/event_log_writer.h"

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

class EventLogWriterTest : public FrameTest {};

TEST_F(EventLogWriterTest, WritesOneEntryOnOneLineUnderTheDefaultSource) {
    eventLog.KWO_LogEvent(u"one\r\ntwo", 2, 17);
    ASSERT_EQ(desktop.eventLog.entries.size(), 1u);
    EXPECT_EQ(desktop.eventLog.entries[0], (platform::simulated::EventEntries::Entry{u"KWOMsg", 2, 17, u"one two"}));
    EXPECT_EQ(trace.lines, (std::vector<Text>{u"Eventlog: one two"}));
    EXPECT_EQ(apiResult.last, 1);
    EXPECT_EQ(desktop.eventLog.OpenSources(), 0u);
}

TEST_F(EventLogWriterTest, TakesTheSourceThatIsSet) {
    eventLog.SetSourceName(u"Other");
    eventLog.KWO_LogEvent(u"text", 4, 1);
    EXPECT_EQ(desktop.eventLog.entries.at(0).source, u"Other");
}

TEST_F(EventLogWriterTest, TheTypeCrossesAsSixteenBits) {
    eventLog.KWO_LogEvent(u"text", 0x10004, 1);
    EXPECT_EQ(desktop.eventLog.entries.at(0).type, 4);
}

TEST_F(EventLogWriterTest, WritesNothingOutsideTheNtFamily) {
    LeaveTheNtFamily();
    eventLog.KWO_LogEvent(u"text", 4, 1);
    EXPECT_TRUE(desktop.eventLog.entries.empty());
    EXPECT_TRUE(trace.lines.empty());
}

TEST_F(EventLogWriterTest, AFailingSourceIsSwallowedAndNotClosed) {
    apiResult.last = 99;
    desktop.FailCall("RegisterEventSource", 1, 5);
    eventLog.KWO_LogEvent(u"text", 4, 1);
    EXPECT_TRUE(desktop.eventLog.entries.empty());
    EXPECT_TRUE(desktop.log.Starting("DeregisterEventSource").empty());
    EXPECT_EQ(apiResult.last, 0);
}

TEST_F(EventLogWriterTest, AFailingReportStillClosesTheSource) {
    desktop.FailCall("ReportEvent", 1, 5);
    eventLog.KWO_LogEvent(u"text", 4, 1);
    EXPECT_EQ(apiResult.last, 0);
    EXPECT_EQ(desktop.eventLog.OpenSources(), 0u);
}

}  // namespace
}  // namespace kwo::frame
