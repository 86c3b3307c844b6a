#include "frame/message_lookup.h"
#include "frame/trace_fixture.h"
#include "support/raised.h"

namespace kwo::frame {
namespace {

constexpr std::int64_t kLargestFile = 104'857'600;

using TraceFileNameTest = TraceTest;
using TraceStartTest = TraceTest;
using TraceCloseTest = TraceTest;
using TraceFailureTest = TraceTest;

TEST_F(TraceFileNameTest, IsTheHostsInItsFolder) {
    StartFile();
    EXPECT_EQ(trace.FileName(), kLogPath);
}

TEST_F(TraceFileNameTest, TakesTheFirstFreeNumber) {
    for (const TextView name : {u"HOSTAPP.log", u"HOSTAPP1.log", u"HOSTAPP2.log", u"HOSTAPP4.log"})
        desktop.files.AddFile(u"C:\\Program Files\\Host\\" + Text(name));
    StartFile();
    EXPECT_EQ(trace.FileName(), u"C:\\Program Files\\Host\\HOSTAPP3.log");
}

TEST_F(TraceFileNameTest, PassesOverAFolderOfThatName) {
    desktop.files.AddFolder(kLogPath);
    StartFile();
    EXPECT_EQ(trace.FileName(), kSecondPath);
}

// Some systems refuse the name of a folder as taken, others deny access to it.
TEST_F(TraceFileNameTest, PassesOverAFolderThatDeniesAccess) {
    desktop.files.AddFolder(kLogPath);
    desktop.FailCall("CreateFile", 1, 5);
    StartFile();
    EXPECT_EQ(trace.FileName(), kSecondPath);
}

TEST_F(TraceFileNameTest, WithAZeroCharacterIsRefused) {
    // The system reads it up to that character: as the name of a folder, which is taken whatever the number.
    using namespace std::string_view_literals;
    trace.SetTraceFolder(u"C:\\Program Files\\Host\\\0"sv);
    EXPECT_EQ(test_support::Raised([&] { StartFile(); }).number, -123);
    EXPECT_FALSE(trace.IsRecording());
}

TEST_F(TraceFileNameTest, StandsInTheTraceFolder) {
    desktop.files.AddFolder(u"D:\\Logs");
    for (const TextView folder : {u"D:\\Logs", u"D:\\Logs\\"}) {
        trace.SetTraceFolder(folder);
        StartFile();
        EXPECT_EQ(trace.FileName().substr(0, 15), u"D:\\Logs\\HOSTAPP");
        trace.KWO_TraceClose(false);
    }
    EXPECT_EQ(trace.FileName(), u"D:\\Logs\\HOSTAPP1.log");
    trace.SetTraceFolder(u"");
    StartFile();
    EXPECT_EQ(trace.FileName(), kLogPath);
}

TEST_F(TraceStartTest, IsIgnoredWhileAFileIsOpen) {
    StartFile();
    const std::string before = Content();
    trace.KWO_TraceStart(1, 5, true);
    Note(u"x");
    EXPECT_EQ(Content(), before + "10:04:31 000.00  x\r\n");
    EXPECT_FALSE(trace.Ring().Exists());
    EXPECT_TRUE(desktop.debugOutput.lines.empty());
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 0u);
}

TEST_F(TraceStartTest, ANewFileFollowsOneThatWasClosed) {
    StartFile();
    trace.KWO_TraceClose(false);
    StartFile();
    EXPECT_EQ(trace.FileName(), kSecondPath);
    // The day is written when it changes, not for every file.
    EXPECT_EQ(File(kSecondPath), (Lines{std::string(kHeader)}));
}

TEST_F(TraceStartTest, TheFirstLineOfASecondFileTellsTheTimeSinceTheLastOfTheFirst) {
    StartFile();
    trace.KWO_TraceClose(false);
    Pass(2.41);
    StartFile();
    EXPECT_EQ(File(kSecondPath).at(0).substr(0, 29), "10:04:31 002.41  Trace Log st");
}

TEST_F(TraceStartTest, TheHeaderStandsAtTheDepthReached) {
    StartRing(1);
    trace.KWO_RoutinePush(u"A.B", 0);
    StartFile();
    EXPECT_EQ(File().at(1).substr(0, 29), "10:04:31 000.00      Trace Lo");
}

TEST_F(TraceStartTest, AFailedStartLeavesTheMemoryWatchThatWasOn) {
    trace.KWO_TraceStart(0, 5, true);
    desktop.FailCall("CreateFile", 1, 5);
    EXPECT_THROW(StartFile(true), ComponentError);
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 1u);
}

TEST_F(TraceStartTest, AFileThatCannotBeMadeRaisesThePlatformsError) {
    desktop.FailCall("CreateFile", 1, 5);
    try {
        StartFile(true);
        FAIL();
    } catch (const ComponentError& raised) {
        EXPECT_EQ(raised.number, -5);
        EXPECT_EQ(raised.source, u"HOSTAPP");
        EXPECT_EQ(raised.description, Text(kLogPath) + u": Access is denied.");
    }
    EXPECT_FALSE(trace.IsRecording());
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 0u);
    StartFile();
    EXPECT_EQ(File().size(), 2u);
}

TEST_F(TraceStartTest, AFolderThatIsMissingRaisesThePlatformsError) {
    trace.SetTraceFolder(u"C:\\None");
    EXPECT_THROW(StartFile(), ComponentError);
    EXPECT_EQ(desktop.faults.Calls("CreateFile"), 1);
}

TEST_F(TraceStartTest, AFileOfATraceThatGoesAwayIsClosed) {
    {
        component::Component other(desktop.Services());
        other.trace.KWO_TraceStart(0, 0, true);
        EXPECT_EQ(desktop.logFiles.OpenFiles(), 1u);
    }
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 0u);
}

TEST_F(TraceCloseTest, EndsTheFileWithALineAndTheDay) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B", 0);
    trace.KWO_TraceClose(false);
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00      Trace closed.", "11/16/2026 " + kRule}));
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
    EXPECT_FALSE(trace.IsRecording());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(TraceCloseTest, AsksWhetherToDeleteTheFile) {
    StartFile();
    desktop.windows.answers = {7};
    trace.KWO_TraceClose(true);
    EXPECT_EQ(Boxes(), (Lines{"Ask owner=0 style=0x10004 title=Host Application "
                              "prompt=Delete call trace log file for HOSTAPP?"}));
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  Push MKWORoutines.KWOMsgBox",
                                "10:04:31 000.00      MsgBox: Delete call trace log file for HOSTAPP?",
                                "10:04:31 000.00  Pop  MKWORoutines.KWOMsgBox Dur=0.000ms",
                                "10:04:31 000.00  Trace closed.", "11/16/2026 " + kRule}));
}

TEST_F(TraceCloseTest, DeletesTheFileOnAYes) {
    StartFile();
    desktop.windows.answers = {6};
    trace.KWO_TraceClose(true);
    EXPECT_EQ(Content(), "<no file>");
    EXPECT_EQ(desktop.log.Starting("DeleteFile"), (Lines{"DeleteFile C:\\Program Files\\Host\\HOSTAPP.log"}));
}

TEST_F(TraceCloseTest, AsksInTheWordsOfTheMessageTable) {
    struct Table final : MessageLookup {
        std::optional<Text> LoadedMessage(std::int32_t number, std::span<const Text> values) override {
            return Decimal(number) + u" " + (values.empty() ? Text(u"nothing") : values[0]);
        }
    } table;
    component.error.SetMessages(&table);
    StartFile();
    trace.KWO_TraceClose(true);
    EXPECT_EQ(Boxes().at(0).substr(Boxes().at(0).find("prompt")), "prompt=1899 HOSTAPP");
}

TEST_F(TraceCloseTest, AsksNobodyWhenUnattended) {
    component.messageBoxes.SetUnattended(true);
    StartFile();
    trace.KWO_TraceClose(true);
    EXPECT_TRUE(Boxes().empty());
    EXPECT_TRUE(desktop.eventLog.entries.empty());
    EXPECT_EQ(Entries(), (Lines{"10:04:31 000.00  Trace closed.", "11/16/2026 " + kRule}));
}

TEST_F(TraceCloseTest, WithNothingOpenDoesNothing) {
    StartFile();
    trace.KWO_TraceClose(false);
    const std::string before = Content();
    trace.KWO_TraceClose(true);
    EXPECT_EQ(Content(), before);
    EXPECT_TRUE(Boxes().empty());
}

class TraceFailureBoxTest : public TraceTest {
protected:
    static constexpr std::string_view kPrompt =
        "An internal application error has occurred.\\r\\n\\r\\nErr number:-112\\r\\n"
        "The following error occurred attempting make an entry to the log file\\r\\n"
        "C:\\Program Files\\Host\\HOSTAPP.log:\\r\\n\\r\\nThere is not enough space on the disk.\\r\\n";
};

TEST_F(TraceFailureBoxTest, ADiskThatIsFullIsToldOnceAndEndsTheFile) {
    StartFile();
    const std::string before = Content();
    desktop.logFiles.freeBytes = 5;
    Note(u"x");
    EXPECT_EQ(Boxes(), (Lines{"Ask owner=0 style=0x10010 title=Host Suite Application Error: HOSTAPP prompt=" +
                              std::string(kPrompt)}));
    EXPECT_EQ(Content(), before);
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
    EXPECT_FALSE(trace.IsRecording());
    desktop.logFiles.freeBytes = UINT64_MAX;
    Note(u"later");
    EXPECT_EQ(Content(), before);
    StartFile();
    EXPECT_EQ(trace.FileName(), kSecondPath);
}

TEST_F(TraceFailureBoxTest, EachPieceOfALineCanFail) {
    for (const int nth : {1, 2}) {
        desktop.log.Clear();
        SetTime(10, 4, 31, kDay + nth);
        desktop.FailCall("WriteFile", nth, kDiskFull);
        StartFile();
        EXPECT_EQ(Boxes().size(), 1u) << nth;
        EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
    }
}

TEST_F(TraceFailureTest, TheFileIsStillOpenWhileTheBoxIsUp) {
    StartFile();
    std::size_t openFiles = 0;
    desktop.windows.onAsk = [&](const auto&) {
        openFiles = desktop.logFiles.OpenFiles();
        trace.KWO_RoutinePush(u"Timer.Fired");
        Note(u"from a handler");
        trace.KWO_RoutinePop();
        return 1;
    };
    desktop.FailCall("WriteFile", 1, kDiskFull);
    Note(u"x");
    EXPECT_EQ(openFiles, 1u);
    EXPECT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Entries(), Lines{});
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
}

TEST_F(TraceFailureTest, TheStackIsAsItWouldHaveBeen) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    desktop.FailCall("WriteFile", 1, kDiskFull);
    EXPECT_EQ(trace.KWO_RoutinePush(u"C.D"), 2);
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"C.D");
    StartFile();
    desktop.FailCall("WriteFile", 1, kDiskFull);
    trace.KWO_RoutinePop();
    EXPECT_EQ(trace.KWO_CurrentRoutine(), u"A.B");
}

TEST_F(TraceFailureTest, APushThatCannotBeWrittenNamesTheRoutineAround) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    desktop.FailCall("WriteFile", 1, kDiskFull);
    trace.KWO_RoutinePush(u"C.D");
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_NE(Boxes()[0].find("Error source: A.B\\r\\n"), std::string::npos) << Boxes()[0];
    EXPECT_EQ(component.error.Saved().source, u"A.B");
}

TEST_F(TraceFailureTest, APopThatCannotBeWrittenNamesTheRoutineAround) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B");
    trace.KWO_RoutinePush(u"C.D");
    desktop.FailCall("WriteFile", 1, kDiskFull);
    trace.KWO_RoutinePop();
    EXPECT_EQ(component.error.Saved().source, u"A.B");
}

TEST_F(TraceFailureTest, TheMemoryWatchGoesOnUntilTheTraceIsClosed) {
    StartFile(true);
    desktop.FailCall("WriteFile", 1, kDiskFull);
    Note(u"x");
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 1u);
}

TEST_F(TraceFailureTest, AMissingMemoryIsToldLikeAFullDisk) {
    StartFile();
    desktop.logFiles.memoryIsShort = true;
    Note(u"x");
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_NE(Boxes()[0].find("HOSTAPP.log:\\r\\n\\r\\nOut of memory.\\r\\n"), std::string::npos) << Boxes()[0];
    EXPECT_EQ(component.error.Saved().number, 7);
    EXPECT_FALSE(trace.IsRecording());
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
}

TEST_F(TraceFailureTest, LaterEntriesGoToTheRing) {
    StartRing(5);
    StartFile();
    desktop.FailCall("WriteFile", 1, kDiskFull);
    Note(u"lost");
    Note(u"kept");
    EXPECT_EQ(Slot(1), "10:04:31 000.00  kept\r\n");
    EXPECT_EQ(Slot(2), "");
}

TEST_F(TraceFailureTest, UnattendedItGoesToTheEventLog) {
    component.messageBoxes.SetUnattended(true);
    StartFile();
    desktop.FailCall("WriteFile", 1, kDiskFull);
    Note(u"x");
    ASSERT_EQ(desktop.eventLog.entries.size(), 1u);
    EXPECT_NE(desktop.eventLog.entries[0].text.find(u"not enough space"), Text::npos);
}

TEST_F(TraceFailureTest, ACodeWithoutTextIsAnUnknownError) {
    StartFile();
    desktop.FailCall("WriteFile", 1, 4711);
    Note(u"x");
    EXPECT_NE(Boxes().at(0).find("HOSTAPP.log:\\r\\n\\r\\nUnknown error.\\r\\n"), std::string::npos);
}

TEST_F(TraceFailureTest, AnErrorOnItsWayIsRaisedAsItWas) {
    StartFile();
    component.error.KWO_SaveError({-5, u"A.B", u"Access is denied.", {}, 0}, {.source = u"A.B", .writeTrace = false});
    const ComponentError saved = component.error.Saved();
    const auto raised = [](auto&& body) {
        try {
            body();
        } catch (const ComponentError& error) {
            return error.description;
        }
        return Text(u"<nothing>");
    };
    desktop.FailCall("WriteFile", 1, kDiskFull);
    EXPECT_EQ(raised([this] { component.error.KWO_RaiseSavedError(); }), u"Access is denied.");
    StartFile();
    desktop.FailCall("WriteFile", 1, kDiskFull);
    EXPECT_EQ(raised([&] { component.error.KWO_SaveError(saved, {.replace = true, .raiseNow = true}); }),
              u"Access is denied.");
}

TEST_F(TraceFailureTest, ABoxThatCannotBeShownEndsTheFileAllTheSame) {
    StartFile();
    desktop.FailCall("WriteFile", 1, kDiskFull);
    desktop.FailCall("Get MousePointer", 1, 5);
    Note(u"x");
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 0u);
    StartFile();
    Note(u"again");
    EXPECT_EQ(File(kSecondPath).back(), "10:04:31 000.00  again");
}

TEST_F(TraceFailureTest, TheLastLinesOfAFileCanFail) {
    for (const int nth : {1, 2}) {
        desktop.log.Clear();
        StartFile();
        desktop.FailCall("WriteFile", nth, kDiskFull);
        trace.KWO_TraceClose(false);
        EXPECT_EQ(Boxes().size(), 1u) << nth;
        EXPECT_EQ(desktop.log.Starting("CloseFile").size(), 1u) << nth;
    }
}

class TraceSplitTest : public TraceTest {
protected:
    /// Brings the file to exactly this size with one line.
    void FillTo(std::int64_t size) {
        const std::string& content = *desktop.logFiles.Content(kLogPath);
        const auto missing = static_cast<std::size_t>(size) - content.size();
        Note(Huge().substr(0, missing - std::string_view("10:04:31 000.00  \r\n").size()));
        ASSERT_EQ(static_cast<std::int64_t>(content.size()), size);
    }
    /// Made once: as large as a file may become.
    static TextView Huge() {
        static const Text huge(static_cast<std::size_t>(kLargestFile), u'x');
        return huge;
    }
    /// The lines behind the one that filled the file.
    Lines End() {
        const std::string& content = *desktop.logFiles.Content(kLogPath);
        const std::size_t end = content.find("\r\n", content.size() - 1000);
        Lines lines;
        std::string rest = content.substr(end + 2);
        for (std::size_t at; (at = rest.find("\r\n")) != std::string::npos; rest.erase(0, at + 2))
            lines.push_back(rest.substr(0, at));
        return lines;
    }
    static constexpr const char* kSplitLine = "=== Splitting trace due to large size ===";
};
using TraceSplitIntended = TraceSplitTest;

TEST_F(TraceSplitTest, AFileOfAHundredMegabytesGoesOn) {
    StartFile();
    FillTo(kLargestFile);
    Note(u"last");
    EXPECT_EQ(End(), (Lines{"10:04:31 000.00  last"}));
    EXPECT_EQ(Content(kSecondPath), "<no file>");
    Note(u"next");
    EXPECT_NE(Content(kSecondPath), "<no file>");
}

TEST_F(TraceSplitTest, AByteMoreIsFollowedByANewFile) {
    StartFile();
    FillTo(kLargestFile + 1);
    EXPECT_EQ(Content(kSecondPath), "<no file>");
    trace.KWO_RoutinePush(u"A.B");
    EXPECT_EQ(End(), (Lines{kSplitLine, "10:04:31 000.00  Trace closed.", "11/16/2026 " + kRule}));
    EXPECT_EQ(File(kSecondPath), (Lines{"11/16/2026 " + kRule, std::string(kHeader), "10:04:31 000.00  Push A.B"}));
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(desktop.logFiles.OpenFiles(), 1u);
}

TEST_F(TraceSplitTest, ItsLinesStandWhereTheLineThatCausedItStands) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B", 0);
    FillTo(kLargestFile + 1);
    trace.KWO_RoutinePush(u"C.D", 1);
    EXPECT_EQ(End().at(1), "10:04:31 000.00      Trace closed.");
    EXPECT_EQ(File(kSecondPath).at(1).substr(0, 26), "10:04:31 000.00      Trace");
    EXPECT_EQ(File(kSecondPath).at(2), "10:04:31 000.00      Push C.D");
}

TEST_F(TraceSplitTest, ALineWithoutIndentationLeavesTheOthersTheirs) {
    StartFile();
    trace.KWO_RoutinePush(u"A.B", 0);
    FillTo(kLargestFile + 1);
    Note(u"x");
    EXPECT_EQ(End().at(1), "10:04:31 000.00      Trace closed.");
    EXPECT_EQ(File(kSecondPath).at(2), "10:04:31 000.00  x");
}

TEST_F(TraceSplitTest, OnlyTheLinesOfTheTraceAreEchoed) {
    trace.KWO_TraceStart(1, 0, false);
    FillTo(kLargestFile + 1);
    desktop.debugOutput.lines.clear();
    Note(u"x");
    ASSERT_EQ(desktop.debugOutput.lines.size(), 3u) << "neither the line of the split nor the rules";
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[0]), "10:04:31 000.00  Trace closed.");
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[1]), kHeader);
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[2]), "10:04:31 000.00  x");
}

TEST_F(TraceSplitTest, MemoryIsLookedAtAgainFromNothing) {
    StartFile(true);
    FillTo(kLargestFile + 1);
    Note(u"x");
    EXPECT_EQ(desktop.processMemory.OpenHandles(), 1u);
    EXPECT_EQ(File(kSecondPath).at(1).substr(0, 69),
              "...Memory use changed. Page Faults=120 Page File=2,000,000 +2,000,000");
}

TEST_F(TraceSplitTest, AClosedFileDoesNotCountForTheNext) {
    StartFile();
    FillTo(kLargestFile + 1);
    trace.KWO_TraceClose(false);
    EXPECT_EQ(End(), (Lines{"10:04:31 000.00  Trace closed.", "11/16/2026 " + kRule}));
    StartFile();
    Note(u"x");
    EXPECT_EQ(trace.FileName(), kSecondPath);
}

TEST_F(TraceSplitTest, AFileThatCannotBeEndedIsNotFollowed) {
    for (const int nth : {1, 2, 3}) {
        desktop.log.Clear();
        StartFile();
        Note(Huge());
        desktop.FailCall("WriteFile", nth, kDiskFull);
        desktop.log.Clear();
        Note(u"x");
        EXPECT_EQ(Boxes().size(), 1u) << nth;
        EXPECT_TRUE(desktop.log.Starting("CreateFile").empty()) << nth;
        EXPECT_FALSE(trace.IsRecording()) << nth;
    }
}

TEST_F(TraceSplitTest, ANextFileThatCannotBeMadeIsTold) {
    StartFile();
    FillTo(kLargestFile + 1);
    desktop.FailCall("CreateFile", 1, 5);
    trace.KWO_RoutinePush(u"A.B");
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_NE(Boxes()[0].find("HOSTAPP.log: Access is denied."), std::string::npos);
    EXPECT_FALSE(trace.IsRecording());
    EXPECT_EQ(trace.Stack().Depth(), 1);
}

// A reader would expect the new file to echo as the one before did: not at all.
TEST_F(TraceSplitIntended, TheNewFileAlwaysEchoes) {
    StartFile();
    FillTo(kLargestFile + 1);
    EXPECT_TRUE(desktop.debugOutput.lines.empty());
    Note(u"x");
    ASSERT_EQ(desktop.debugOutput.lines.size(), 2u);
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[0]), kHeader);
    EXPECT_EQ(desktop.conversions.ToAnsi(desktop.debugOutput.lines[1]), "10:04:31 000.00  x");
}

}  // namespace
}  // namespace kwo::frame
