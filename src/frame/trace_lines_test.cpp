
#include "frame/trace_fixture.h"

namespace kwo::frame {
namespace {

using TraceDayTest = TraceTest;
using TraceLineTest = TraceTest;
using TraceMemoryTest = TraceTest;
using TraceEchoTest = TraceTest;
using TraceLastErrorTest = TraceTest;
using TraceWiringTest = TraceTest;

TEST_F(TraceLineTest, AFileBeginsWithTheDayAndTheHeader) {
    StartFile();
    EXPECT_EQ(Content(), "11/16/2026 " + kRule + "\r\n" + std::string(kHeader) + "\r\n");
}

TEST_F(TraceLineTest, LooksLikeThis) {
    StartFile();
    Pass(2.41);
    trace.KWO_RoutinePush(u"MKWORoutines.KWOMsgBox");
    Pass(0.153);
    Pass(0.157);
    trace.KWO_RoutinePop();
    EXPECT_EQ(File(),
              (Lines{"11/16/2026 " + kRule, std::string(kHeader), "10:04:31 002.41  Push MKWORoutines.KWOMsgBox",
                     "10:04:31 000.31  Pop  MKWORoutines.KWOMsgBox Dur=0.310ms"}));
}

TEST_F(TraceLineTest, TheHeaderNamesTheHostAsItIs) {
    desktop.host.executableName = u"OTHER";
    desktop.host.version = {12, 0, 305};
    desktop.host.processId = 0xFFFFFFFF;
    desktop.host.networkUserName = u"m\u00FCller";
    desktop.host.computerName = u"";
    StartFile();
    EXPECT_EQ(
        File(u"C:\\Program Files\\Host\\OTHER.log").at(1),
        "10:04:31 000.00  Trace Log started for OTHER 12.0.305 Process ID=4294967295, UserId=m\xFCller, Machine=");
}

TEST_F(TraceLineTest, TimeSinceTheLineBeforeHasTwoPlaces) {
    const auto lineAfter = [this](double ms) {
        Pass(ms);
        Note(u"x");
        return Entries().back().substr(9);
    };
    StartFile();
    EXPECT_EQ(lineAfter(0), "000.00  x");
    EXPECT_EQ(lineAfter(0.0049), "000.00  x");
    EXPECT_EQ(lineAfter(0.005), "000.01  x");
    EXPECT_EQ(lineAfter(999.994), "999.99  x");
    EXPECT_EQ(lineAfter(999.995), "1000.00  x");
    EXPECT_EQ(lineAfter(12345.678), "12345.68  x");
}

TEST_F(TraceLineTest, ASecondIsOverWhenItIsOver) {
    const auto timeAt = [this](double seconds) {
        desktop.clock.SetNow({kDay + seconds / 86400.0});
        Note(u"x");
        return Entries().back().substr(0, 8);
    };
    StartFile();
    EXPECT_EQ(timeAt(0), "00:00:00");
    EXPECT_EQ(timeAt(32767), "09:06:07");
    EXPECT_EQ(timeAt(32767.999), "09:06:07");
    EXPECT_EQ(timeAt(32768), "09:06:08");
    EXPECT_EQ(timeAt(86399.999), "23:59:59");
    for (int second = 40'000; second < 40'100; ++second)
        EXPECT_EQ(timeAt(second).substr(6), timeAt(second + 0.5).substr(6)) << second;
}

TEST_F(TraceLineTest, LinesOfATextStandUnderEachOther) {
    StartFile();
    trace.KWO_TraceWrite(u"one\r\ntwo\r\n\r\nlast\n\rx\r", false, true);
    const std::string continued = "10:04:31 000.00  " + std::string(13, ' ');
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  one", continued + "two", continued, continued + "last\n\rx\r"}));
}

TEST_F(TraceLineTest, ALineEndAtTheEndBeginsAnotherLine) {
    StartFile();
    trace.KWO_TraceWrite(u"one\r\n", false, true);
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  one", "10:04:31 000.00  " + std::string(13, ' ')}));
}

TEST_F(TraceLineTest, ContinuedLinesKeepTheIndentation) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B", 0);
    trace.KWO_TraceWrite(u"one\r\ntwo", true, true);
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00      one", "10:04:31 000.00      " + std::string(13, ' ') + "two"}));
}

TEST_F(TraceLineTest, GoesOutInTheCodePage) {
    StartFile();
    Note(u"caf\u00E9 \u20AC \u4E2D");
    EXPECT_EQ(Entries().back(), "10:04:31 000.00  caf\xE9 \x80 ?");
}

TEST_F(TraceLineTest, AnEmptyTextIsALineToo) {
    StartFile();
    Note(u"");
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  "}));
}

TEST_F(TraceLineTest, GoesToAFileAlsoWhenItIsNotToBeSaved) {
    StartFile();
    trace.KWO_TraceWrite(u"x", false, false);
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  x"}));
}

TEST_F(TraceLineTest, CostsOneWrite) {
    StartFile();
    const int before = desktop.faults.Calls("WriteFile");
    Note(u"one\r\ntwo");
    EXPECT_EQ(desktop.faults.Calls("WriteFile"), before + 1);
}

TEST_F(TraceDayTest, IsWrittenOnceADay) {
    SetTime(23, 59, 58);
    StartFile();
    Pass(1999);
    Note(u"last of the day");
    Pass(1);
    Note(u"first of the next");
    Note(u"second");
    EXPECT_EQ(Entries(), (Lines{"23:59:59 1999.00  last of the day", "11/17/2026 " + kRule,
                                "00:00:00 001.00  first of the next", "00:00:00 000.00  second"}));
}

TEST_F(TraceDayTest, IsWrittenWhenTheClockIsSetBack) {
    StartFile();
    SetTime(10, 4, 31, kDay - 1);
    Note(u"x");
    EXPECT_EQ(Entries(), (Lines{"11/15/2026 " + kRule, "10:04:31 000.00  x"}));
}

class TraceMemoryLineTest : public TraceTest {
protected:
    TraceMemoryLineTest() {
        desktop.processMemory.counters = {1'200, 5'000'000, 60'000, 8'000, 2'000'000};
        StartFile(true);
    }
    /// What a line brings with it when the counters are these.
    Lines With(platform::ProcessMemory::Counters counters) {
        desktop.processMemory.counters = counters;
        const std::size_t before = File().size();
        Note(u"x");
        Lines lines = File();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
        EXPECT_EQ(lines.back(), "10:04:31 000.00  x");
        lines.pop_back();
        return lines;
    }
};

TEST_F(TraceMemoryLineTest, TheFirstOneCountsFromNothing) {
    EXPECT_EQ(File().at(1),
              "...Memory use changed. Page Faults=1,200 Page File=2,000,000 +2,000,000. Paged Pool=60,000 +60,000. "
              "Non-Paged Pool=8,000 +8,000. Working Set=5,000,000 +5,000,000. ");
    EXPECT_EQ(File().at(2), kHeader);
}

TEST_F(TraceMemoryLineTest, AskedForThisProcessAlone) {
    EXPECT_EQ(desktop.log.Starting("OpenProcess"), (Lines{"OpenProcess access=0x400 inherit=0 id=1234"}));
}

TEST_F(TraceMemoryLineTest, AChangeOfAKilobyteIsNotMuch) {
    EXPECT_EQ(With({1'201, 9'000'000, 60'000, 8'000, 2'001'024}), Lines{});
    EXPECT_EQ(With({1'202, 9'000'000, 60'000, 8'000, 2'000'000}), Lines{});
    EXPECT_EQ(With({1'203, 9'000'000, 60'000, 8'000, 2'001'025}),
              (Lines{"...Memory use changed. Page Faults=1,203 Page File=2,001,025 +1,025. Working Set=9,000,000. "}));
    EXPECT_EQ(
        With({1'204, 9'000'001, 60'000, 8'000, 2'000'000}),
        (Lines{"...Memory use changed. Page Faults=1,204 Page File=2,000,000 -1,025. Working Set=9,000,001 +1. "}));
}

TEST_F(TraceMemoryLineTest, EachCounterIsLookedAtOnItsOwn) {
    EXPECT_EQ(
        With({7, 4'000'000, 62'000, 8'000, 2'000'000}),
        (Lines{"...Memory use changed. Page Faults=7 Paged Pool=62,000 +2,000. Working Set=4,000,000 -1,000,000. "}));
    EXPECT_EQ(With({7, 4'000'000, 62'000, 6'000, 2'000'000}),
              (Lines{"...Memory use changed. Page Faults=7 Non-Paged Pool=6,000 -2,000. Working Set=4,000,000. "}));
    EXPECT_EQ(With({7, 4'000'000, 63'024, 7'024, 1'998'976}), Lines{});
}

TEST_F(TraceMemoryLineTest, SmallChangesAreNotAddedUp) {
    EXPECT_EQ(With({1'200, 5'000'000, 60'000, 8'000, 2'000'800}), Lines{});
    EXPECT_EQ(With({1'200, 5'000'000, 60'000, 8'000, 2'001'600}), Lines{});
}

TEST_F(TraceMemoryLineTest, CountersAboveFourGigabytes) {
    EXPECT_EQ(With({1'200, 5'000'000, 60'000, 8'000, 8'002'000'000}),
              (Lines{"...Memory use changed. Page Faults=1,200 Page File=8,002,000,000 +8,000,000,000. "
                     "Working Set=5,000,000. "}));
}

TEST_F(TraceMemoryLineTest, AFailedQueryLeavesTheLineOutAndTheCountersAsTheyWere) {
    desktop.FailCall("GetProcessMemoryInfo", 1, 6);
    EXPECT_EQ(With({1'200, 5'000'000, 60'000, 8'000, 2'002'000}), Lines{});
    EXPECT_EQ(With({1'200, 5'000'000, 60'000, 8'000, 2'002'000}),
              (Lines{"...Memory use changed. Page Faults=1,200 Page File=2,002,000 +2,000. Working Set=5,000,000. "}));
}

TEST_F(TraceMemoryLineTest, StandsBehindTheDay) {
    SetTime(10, 4, 31, kDay + 1);
    EXPECT_EQ(With({1'200, 5'000'000, 60'000, 8'000, 2'002'000}),
              (Lines{"11/17/2026 " + kRule,
                     "...Memory use changed. Page Faults=1,200 Page File=2,002,000 +2,000. Working Set=5,000,000. "}));
}

TEST_F(TraceMemoryLineTest, TheProcessIsLetGoWhenTheTraceIsClosed) {
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 1u);
    trace.KWO_TraceClose(false);
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 0u);
}

TEST_F(TraceMemoryTest, IsNotLookedAtUnlessAskedFor) {
    StartFile();
    EXPECT_EQ(desktop.faults.Calls("OpenProcess"), 0);
    EXPECT_EQ(desktop.faults.Calls("GetProcessMemoryInfo"), 0);
}

TEST_F(TraceMemoryTest, IsLookedAtOnTheNtFamilyOnly) {
    desktop.host.platform.platformId = 1;
    StartFile(true);
    EXPECT_EQ(desktop.faults.Calls("OpenProcess"), 0);
    EXPECT_EQ(File().size(), 2u);
}

TEST_F(TraceMemoryTest, AProcessThatCannotBeOpenedIsNotLookedAt) {
    desktop.FailCall("OpenProcess", 1, 5);
    StartFile(true);
    EXPECT_EQ(desktop.faults.Calls("GetProcessMemoryInfo"), 0);
    EXPECT_EQ(File().size(), 2u);
}

TEST_F(TraceMemoryTest, GoesIntoTheRing) {
    trace.KWO_TraceStart(0, 5, true);
    Note(u"x");
    EXPECT_EQ(Slot(2).substr(0, 35), "...Memory use changed. Page Faults=");
    trace.KWO_TraceStart(0, 5, true);
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 1u);
}

TEST_F(TraceMemoryTest, AStartThatDoesNotAskForItLeavesItAsItIs) {
    trace.KWO_TraceStart(0, 5, true);
    StartFile(false);
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 1u);
    desktop.processMemory.counters.pageFile += 5'000;
    Note(u"x");
    const Lines lines = File();
    EXPECT_EQ(lines.at(lines.size() - 2).substr(0, 35), "...Memory use changed. Page Faults=");
}

TEST_F(TraceMemoryTest, TheNextFileCountsFromWhereTheLastOneEnded) {
    desktop.processMemory.counters = {1'200, 5'000'000, 60'000, 8'000, 2'000'000};
    StartFile(true);
    trace.KWO_TraceClose(false);
    desktop.processMemory.counters.pageFile += 5'000;
    StartFile(true);
    EXPECT_EQ(File(kSecondPath).at(0),
              "...Memory use changed. Page Faults=1,200 Page File=2,005,000 +5,000. Working Set=5,000,000. ");
}

TEST_F(TraceMemoryTest, TheProcessIsLetGoBeforeTheLastLine) {
    StartFile(true);
    desktop.processMemory.counters.pageFile += 5'000;
    trace.KWO_TraceClose(false);
    const Lines lines = File();
    ASSERT_EQ(lines.size(), 5u) << "the day, memory use and the header; no memory use before the last line";
    EXPECT_EQ(lines[3], "10:04:31 000.00  Trace closed.");
}

TEST_F(TraceMemoryTest, ACloseWithoutFileOrRingLetsTheProcessGo) {
    StartFile(true);
    desktop.logFiles.freeBytes = 0;
    Note(u"x");
    ASSERT_FALSE(trace.IsRecording());
    trace.KWO_TraceClose(true);
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 0u);
    EXPECT_EQ(Boxes().size(), 1u);
}

TEST_F(TraceEchoTest, SendsEachLineWithoutItsEndToTheDebugOutput) {
    trace.KWO_TraceStart(1, 0, false);
    Note(u"one\r\ntwo\r\n");
    const Text prefix = u"10:04:31 000.00  ";
    EXPECT_EQ(desktop.debugOutput.lines.at(1),
              prefix + u"one\r\n" + prefix + Text(13, u' ') + u"two\r\n" + prefix + Text(13, u' '));
    EXPECT_EQ(desktop.debugOutput.lines.size(), 2u);
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[0]), kHeader);
}

TEST_F(TraceEchoTest, TheLinesBetweenTheTracesOwnAreNotEchoed) {
    trace.KWO_TraceStart(1, 0, true);
    trace.KWO_TraceClose(false);
    ASSERT_EQ(desktop.debugOutput.lines.size(), 2u) << "neither rules nor memory use";
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[0]), kHeader);
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[1]), "10:04:31 000.00  Trace closed.");
}

TEST_F(TraceEchoTest, AnyNumberButZeroTurnsItOn) {
    trace.KWO_TraceStart(-1, 3, false);
    trace.KWO_TraceWrite(u"x", false, false);
    EXPECT_EQ(desktop.debugOutput.lines.size(), 1u);
    trace.KWO_TraceStart(0, 3, false);
    Note(u"x");
    EXPECT_EQ(desktop.debugOutput.lines.size(), 1u);
}

TEST_F(TraceLastErrorTest, IsTheSameBeforeAndAfter) {
    StartFile(true);
    const auto expectKept = [this](auto&& body) {
        desktop.errors.SetLast(1234);
        body();
        EXPECT_EQ(desktop.errors.Last(), 1234);
    };
    desktop.FailCall("GetProcessMemoryInfo", 1, 6);
    expectKept([this] { trace.KWO_RoutinePush(u"A.B"); });
    desktop.FailCall("GetProcessMemoryInfo", 1, 6);
    expectKept([this] { trace.KWO_RoutinePop(); });
    desktop.FailCall("WriteFile", 1, 5);
    expectKept([this] { Note(u"x"); });
    StartFile();
    desktop.FailCall("DeleteFile", 1, 5);
    desktop.windows.answers = {6};
    expectKept([this] { trace.KWO_TraceClose(true); });
}

TEST_F(TraceLastErrorTest, ARaisedPlatformErrorIsTheCallersOwn) {
    StartFile(true);
    desktop.FailCall("GetProcessMemoryInfo", 1, 6);
    desktop.errors.SetLast(5);
    const TracedRoutine traced(trace, u"A.B");
    try {
        component.error.KWO_RaiseError(0, {});
        FAIL();
    } catch (const ComponentError& raised) {
        EXPECT_EQ(raised.number, -5);
    }
}

TEST_F(TraceWiringTest, ErrorsBoxesAndEventsLeaveTheirLinesAtTheirDepth) {
    StartFile();
    const TracedRoutine traced(trace, u"A.B");
    EXPECT_THROW(component.error.KWO_RaiseError(5, {}), ComponentError);
    component.error.KWO_SaveError({-5, {}, u"Access is denied.", {}, 0}, {});
    EXPECT_THROW(component.error.KWO_RaiseSavedError(), ComponentError);
    component.eventLog.KWO_LogEvent(u"event", 4, 1);
    component.messageBoxes.KWOMsgBox({.prompt = u"prompt"});
    Lines lines = Entries();
    for (std::string& line : lines)
        line.erase(0, 15);
    EXPECT_EQ(lines,
              (Lines{"  Push A.B", "      Raising error #-5:Access is denied. A.B",
                     "      Attached error #-5: Access is denied. A.B", "      Raising error #-5: Access is denied.",
                     "      Eventlog: event", "      Push MKWORoutines.KWOMsgBox", "          MsgBox: prompt",
                     "      Pop  MKWORoutines.KWOMsgBox Dur=0.000ms"}));
}

TEST_F(TraceWiringTest, AHexadecimalTextThatIsNoneLeavesItsLines) {
    StartFile();
    EXPECT_THROW(component.routines.KWO_HexToLong(u"G"), ComponentError);
    Lines lines = Entries();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(),
              "10:04:31 000.00  Raising error #-2147220493: Invalid Hex Digit; Source=MKWORoutines.KWO_HexToLong");
}

TEST_F(TraceWiringTest, TheSourceIsNamedWhereItIsAnotherOne) {
    StartRing(5);
    const TracedRoutine traced(trace, u"A.B");
    EXPECT_THROW(component.error.KWO_RaiseError(5, u"C.D"), ComponentError);
    EXPECT_EQ(Slot(3), "10:04:31 000.00      Raising error #-5:Access is denied.; Source=C.D\r\n");
}

}  // namespace
}  // namespace kwo::frame
