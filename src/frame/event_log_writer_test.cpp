#include "frame/event_log_writer.h"

#include <new>

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

class EventLogWriterTest : public FrameTest {};

TEST_F(EventLogWriterTest, WritesOneEntryOnOneLineUnderTheDefaultSource) {
    eventLog.KWO_LogEvent(u"one\r\ntwo", 2, 17);
    ASSERT_EQ(desktop.eventLog.entries.size(), 1u);
    EXPECT_EQ(desktop.eventLog.entries[0],
              (platform::simulated::SimulatedEventLog::Entry{u"KWOMsg", 2, 17, u"one two"}));
    EXPECT_EQ(trace.lines, (std::vector<Text>{u"Eventlog: one two"}));
    EXPECT_EQ(apiResult.last, 1);
    EXPECT_EQ(desktop.eventLog.OpenSources(), 0u);
}

// A report that hangs or fails has left its line by then.
TEST_F(EventLogWriterTest, ItsLineIsWrittenWhenTheSourceIsOpenAndBeforeTheReport) {
    class LoggedTrace final : public CallTrace {
    public:
        explicit LoggedTrace(platform::simulated::Log& log) : mLog(log) { mOn = true; }

    private:
        std::int32_t Push(TextView, std::int16_t) override { return 0; }
        void Pop(std::int32_t) override {}
        Text Top() const override { return {}; }
        void Write(TextView text, bool, bool) override { mLog.Add("Trace " + platform::simulated::Shown(text)); }
        bool Recording() const override { return true; }

        platform::simulated::Log& mLog;
    } logged(desktop.log);
    EventLogWriter writer(services.eventLog, identity, logged, apiResult);
    writer.KWO_LogEvent(u"text", 4, 1);
    EXPECT_EQ(desktop.log.Lines(), (Lines{"RegisterEventSource KWOMsg", "Trace Eventlog: text",
                                          "ReportEvent type=4 id=1 text", "DeregisterEventSource"}));
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

TEST_F(EventLogWriterTest, AReportWithoutMemoryStillClosesTheSource) {
    desktop.FailCall("ReportEvent", 1, platform::simulated::Faults::kNoMemory);
    EXPECT_THROW(eventLog.KWO_LogEvent(u"text", 4, 1), std::bad_alloc);
    EXPECT_EQ(desktop.eventLog.OpenSources(), 0u);
}

}  // namespace
}  // namespace kwo::frame
