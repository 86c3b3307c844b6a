#include "frame/trace.h"

#include "frame/trace_fixture.h"

namespace kwo::frame {
namespace {

using TracePushTest = TraceTest;
using TracePopTest = TraceTest;
using TraceOffTest = TraceTest;
using TracedRoutineTest = TraceTest;

TEST_F(TraceOffTest, NothingHappensBeforeTheFirstStart) {
    EXPECT_EQ(trace.KWO_RoutinePush(u"A.B", 1), 0);
    trace.KWO_RoutinePop();
    trace.KWO_RoutinePop(1);
    trace.KWO_TraceWrite(u"text", true, true);
    trace.KWO_TraceClose(true);
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"");
    EXPECT_FALSE(trace.IsRecording());
    EXPECT_EQ(trace.Stack().Capacity(), 0);
    EXPECT_TRUE(desktop.log.Lines().empty());
}

TEST_F(TraceOffTest, OnceStartedTheRoutinesStayOnRecordWithoutAFile) {
    StartFile();
    trace.KWO_TraceClose(false);
    const std::string closed = Content();
    EXPECT_EQ(trace.KWO_RoutinePush(u"A.B"), 1);
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"A.B");
    EXPECT_FALSE(trace.IsRecording());
    trace.KWO_RoutinePop();
    EXPECT_EQ(trace.Stack().Depth(), 0);
    EXPECT_EQ(Content(), closed);
}

TEST_F(TracePushTest, ReturnsTheDepthAndNamesTheRoutineOnTop) {
    StartFile();
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"");
    EXPECT_EQ(trace.KWO_RoutinePush(u"A.B"), 1);
    EXPECT_EQ(trace.KWO_RoutinePush(u"C.D"), 2);
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"C.D");
    trace.KWO_RoutinePop();
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"A.B");
}

TEST_F(TracePushTest, LinesStandAtTheDepthOfTheRoutineAround) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    trace.KWO_RoutinePush(u"C.D");
    trace.KWO_TraceWrite(u"inside", true, true);
    trace.KWO_TraceWrite(u"outside", false, true);
    trace.KWO_RoutinePop();
    trace.KWO_RoutinePop();
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  Push A.B", "10:04:31 000.00      Push C.D",
                                "10:04:31 000.00          inside", "10:04:31 000.00  outside",
                                "10:04:31 000.00      Pop  C.D Dur=0.000ms", "10:04:31 000.00  Pop  A.B Dur=0.000ms"}));
}

TEST_F(TracePushTest, GrowsByThirtyTwoLevelsAndKeepsThem) {
    StartRing(1);
    EXPECT_EQ(trace.Stack().Capacity(), 32);
    for (int depth = 1; depth <= 32; ++depth)
        EXPECT_EQ(trace.KWO_RoutinePush(u"Level." + Decimal(depth)), depth);
    EXPECT_EQ(trace.Stack().Capacity(), 32);
    EXPECT_EQ(trace.KWO_RoutinePush(u"Level.33"), 33);
    EXPECT_EQ(trace.Stack().Capacity(), 64);
    for (int depth = 33; depth >= 1; --depth) {
        EXPECT_EQ(trace.KWO_CurrentRoutine(), u"Level." + Decimal(depth));
        trace.KWO_RoutinePop();
    }
    EXPECT_EQ(trace.Stack().Capacity(), 64);
}

TEST_F(TracePushTest, InheritingTheModeAtDepthOneTraces) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B", -2);
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  Push A.B"}));
}

TEST_F(TracePushTest, ALevelThatIsNotTracedWritesNothingAndPassesThatOn) {
    StartFile();
    EXPECT_EQ(trace.KWO_RoutinePush(u"A.Off", 0), 1);
    EXPECT_EQ(trace.KWO_RoutinePush(u"B.Inherits", -2), 2);
    EXPECT_EQ(trace.KWO_RoutinePush(u"C.On", 1), 3);
    EXPECT_EQ(trace.KWO_RoutinePush(u"D.Inherits", -2), 4);
    for (int pops = 0; pops < 4; ++pops)
        trace.KWO_RoutinePop();
    EXPECT_EQ(trace.Stack().Depth(), 0);
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00          Push C.On", "10:04:31 000.00              Push D.Inherits",
                                "10:04:31 000.00              Pop  D.Inherits Dur=0.000ms",
                                "10:04:31 000.00          Pop  C.On Dur=0.000ms"}));
}

TEST_F(TracePushTest, ALevelThatIsNotTracedIsNamedAllTheSame) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    trace.KWO_RoutinePush(u"C.Off", 0);
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"C.Off");
    component.error.KWO_SaveError({13, {}, u"Type mismatch", {}, 0}, {});
    EXPECT_EQ(component.error.Saved().source, u"C.Off");
}

TEST_F(TracePushTest, AnyOtherModeTraces) {
    StartRing(20);
    for (const int value : {1, -1, 2, -3, 32767, -32768}) {
        const auto mode = static_cast<std::int16_t>(value);
        trace.KWO_RoutinePush(u"A.Off", 0);
        trace.KWO_RoutinePush(u"A.B", mode);
        EXPECT_TRUE(trace.Stack().Top().traced) << mode;
        trace.KWO_RoutinePop(1);
        trace.KWO_RoutinePush(u"A.B", 0);
        EXPECT_FALSE(trace.Stack().Top().traced);
        trace.KWO_RoutinePop(1);
    }
}

TEST_F(TracePushTest, ALevelUsedAgainHasItsOwnMode) {
    StartFile();
    trace.KWO_RoutinePush(u"A.Off", 0);
    trace.KWO_RoutinePop();
    trace.KWO_RoutinePush(u"A.B");
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  Push A.B"}));
}

TEST_F(TracePopTest, ADurationOfASecondIsStillInMilliseconds) {
    const auto popAfter = [this](double ms) {
        trace.KWO_RoutinePush(u"A.B");
        Pass(ms);
        trace.KWO_RoutinePop();
        const std::string line = Entries().back();
        return line.substr(line.find("Dur="));
    };
    StartFile();
    EXPECT_EQ(popAfter(0.153), "Dur=0.153ms");
    EXPECT_EQ(popAfter(0.1535), "Dur=0.154ms");
    EXPECT_EQ(popAfter(0.0004), "Dur=0.000ms");
    EXPECT_EQ(popAfter(12.5), "Dur=12.500ms");
    EXPECT_EQ(popAfter(999.9999), "Dur=1000.000ms");
    EXPECT_EQ(popAfter(1000), "Dur=1000.000ms");
    EXPECT_EQ(popAfter(1000.0001), "Dur=0:00:01");
    EXPECT_EQ(popAfter(61'000), "Dur=0:01:01");
    EXPECT_EQ(popAfter(86'400'000 + 7'200'000), "Dur=1:02:00:00");
}

TEST_F(TracePopTest, TheTimeIsCountedFromThePushOfThatLevel) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    Pass(2);
    trace.KWO_RoutinePush(u"C.D");
    Pass(3);
    trace.KWO_RoutinePop();
    trace.KWO_RoutinePop();
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  Push A.B", "10:04:31 002.00      Push C.D",
                                "10:04:31 003.00      Pop  C.D Dur=3.000ms", "10:04:31 000.00  Pop  A.B Dur=5.000ms"}));
}

TEST_F(TracePopTest, ALevelAboveTheDepthChangesNothing) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    const std::string before = Content();
    trace.KWO_RoutinePop(2);
    EXPECT_EQ(trace.Stack().Depth(), 1);
    EXPECT_EQ(Content(), before);
}

TEST_F(TracePopTest, TheDepthItselfPopsTheTopLevel) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    trace.KWO_RoutinePush(u"C.D");
    trace.KWO_RoutinePop(2);
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"A.B");
    EXPECT_EQ(Entries().back(), "10:04:31 000.00      Pop  C.D Dur=0.000ms");
}

TEST_F(TracePopTest, ALevelBelowPopsThatOneAndDropsTheOthersSilently) {
    StartFile();
    for (const TextView name : {u"A.B", u"C.D", u"E.F"})
        trace.KWO_RoutinePush(name);
    const std::size_t before = Entries().size();
    trace.KWO_RoutinePop(2);
    EXPECT_EQ(trace.Stack().Depth(), 1);
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"A.B");
    EXPECT_EQ(Entries().size(), before + 1);
    EXPECT_EQ(Entries().back(), "10:04:31 000.00      Pop  C.D Dur=0.000ms");
}

TEST_F(TracePopTest, ANegativeLevelPopsOne) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    trace.KWO_RoutinePush(u"C.D");
    trace.KWO_RoutinePop(-5);
    EXPECT_EQ(trace.Stack().Depth(), 1);
}

TEST_F(TracePopTest, AnEmptyTraceShowsTheErrorBoxAndChangesNothing) {
    for (const std::int32_t level : {0, 1}) {
        desktop.log.Clear();
        StartFile();
        trace.KWO_RoutinePop(level);
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(Boxes()[0].substr(0, Boxes()[0].find(" prompt")),
                  "Ask owner=0 style=0x10010 title=Host Suite Application Error: HOSTAPP");
        EXPECT_NE(Boxes()[0].find("KWO_RoutinePop called with nothing on the call stack.\\r\\n"), std::string::npos);
        EXPECT_EQ(trace.Stack().Depth(), 0);
        EXPECT_EQ(Entries().back(), "10:04:31 000.00  Pop  MKWORoutines.KWOMsgBox Dur=0.000ms");
    }
}

TEST_F(TracedRoutineTest, LeavesWhatItsRoutineLeftOpen) {
    StartFile();
    {
        const TracedRoutine traced(trace, u"A.B");
        trace.KWO_RoutinePush(u"C.D");
    }
    EXPECT_EQ(trace.Stack().Depth(), 0);
    EXPECT_EQ(Entries().back(), "10:04:31 000.00  Pop  A.B Dur=0.000ms");
}

TEST_F(TracedRoutineTest, ClassAndMemberAreJoinedOnceTheTraceIsOn) {
    { const TracedRoutine traced(trace, u"KWOTimer", u".AddAlarm"); }
    EXPECT_FALSE(trace.IsOn());
    StartFile();
    {
        const TracedRoutine traced(trace, u"KWOTimer", u".AddAlarm");
        EXPECT_EQ(trace.KWO_CurrentRoutine(), u"KWOTimer.AddAlarm");
    }
    EXPECT_EQ(trace.Stack().Depth(), 0);
}

TEST_F(TracedRoutineTest, DoesNotLeaveWhatItDidNotEnter) {
    {
        const TracedRoutine traced(trace, u"A.B");
        StartFile();
    }
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(TracedRoutineTest, ABoxThatCannotBeShownDoesNotEndTheProgram) {
    {
        StartFile();
        const TracedRoutine traced(trace, u"A.B");
        trace.KWO_RoutinePop();
        desktop.FailCall("Get MousePointer", 1, 5);
    }
    EXPECT_EQ(trace.Stack().Depth(), 0);
    EXPECT_TRUE(Boxes().empty());
}

}  // namespace
}  // namespace kwo::frame
