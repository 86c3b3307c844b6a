#include "platform/simulated/simulated_desktop.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "platform/component_error.h"
#include "platform/simulated/failing_memory.h"
#include "support/raised.h"

// clang declares neither by itself.
void operator delete(void* block, std::size_t) noexcept;
void operator delete[](void* block, std::size_t) noexcept;

namespace kwo::platform::simulated {
namespace {

using test_support::RaisedNumber;
using Lines = std::vector<std::string>;

class SimulatedDesktopTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    Platform platform = desktop.Services();
};

TEST_F(SimulatedDesktopTest, AllPartsShareOneLogInTheOrderOfTheCalls) {
    desktop.windows.windows[7] = {u"Main", true};

    platform.screen.SetMousePointer(0);
    platform.windows.Flash(7, true);
    platform.windows.AskUser(7, u"Go?\r\nNow?", u"Tïtle", 0x10010);

    EXPECT_EQ(desktop.log.Lines(),
              (Lines{"Let MousePointer 0", "Flash 7 1", "Ask owner=7 style=0x10010 title=Tïtle prompt=Go?\\r\\nNow?"}));
}

TEST_F(SimulatedDesktopTest, LogGivesTheLinesOfOneKindAndForgets) {
    desktop.log.Add("Let Left 1");
    desktop.log.Add("Call Move");
    desktop.log.Add("Let Top 2");

    EXPECT_EQ(desktop.log.Starting("Let "), (Lines{"Let Left 1", "Let Top 2"}));
    desktop.log.Clear();
    EXPECT_TRUE(desktop.log.Lines().empty());
}

TEST_F(SimulatedDesktopTest, PlannedFailureBreaksTheNthCallFromNowAndNoOther) {
    platform.windows.AskUser(0, u"", u"", 0);
    desktop.FailCall("MessageBox", 2, 1158);

    EXPECT_EQ(platform.windows.AskUser(0, u"", u"", 0), 1);
    EXPECT_EQ(platform.errors.Last(), 0);
    EXPECT_EQ(platform.windows.AskUser(0, u"", u"", 0), 0);
    EXPECT_EQ(platform.errors.Last(), 1158);
    EXPECT_EQ(platform.windows.AskUser(0, u"", u"", 0), 1);
    EXPECT_EQ(desktop.faults.Calls("MessageBox"), 4);
}

TEST_F(SimulatedDesktopTest, SeveralFailuresOfOneCallCanBePlannedAndForgotten) {
    desktop.FailCall("GetComputerName", 1, 1);
    desktop.FailCall("GetComputerName", 2, 2);
    desktop.FailCall("GetComputerName", 3, 3);
    Text name = u"as it was";

    EXPECT_FALSE(platform.host.ComputerName(name));
    EXPECT_FALSE(platform.host.ComputerName(name));
    EXPECT_EQ(platform.errors.Last(), 2);
    EXPECT_EQ(name, u"as it was");
    desktop.faults.Clear();
    EXPECT_TRUE(platform.host.ComputerName(name));
    EXPECT_EQ(name, u"PC01");
}

TEST_F(SimulatedDesktopTest, FailureOfAnUnknownCallOrBelowTheFirstIsRefused) {
    EXPECT_THROW(desktop.FailCall("RegSetValeuEx", 1, 5), std::invalid_argument);
    EXPECT_THROW(desktop.FailCall("RegSetValueEx", 0, 5), std::invalid_argument);
    EXPECT_THROW(desktop.faults.Calls("NoSuchCall"), std::invalid_argument);
}

TEST_F(SimulatedDesktopTest, CallsOfAllPartsAreCountedTogether) {
    const auto form = desktop.MakeObject(u"Form");
    form->SetProperty(u"Left", 0.0f);
    const auto use = [&] {
        platform.clock.TickCount();
        platform.windows.WindowExists(7);
        platform.screen.SetMousePointer(0);
        form->Let(u"Left", 1.0f);
        return platform.conversions.ToInt16(std::int16_t{5});
    };
    desktop.faults.FailAnyCall(0);
    EXPECT_EQ(use(), 5);
    EXPECT_EQ(desktop.faults.Made(), (Lines{"IsWindow", "Form.Let Left", "VariantChangeType"}));
    EXPECT_TRUE(desktop.faults.Failed().empty());

    desktop.faults.FailAnyCall(3);
    EXPECT_EQ(RaisedNumber(use), 13);
    EXPECT_EQ(use(), 5);
    desktop.faults.FailAnyCall(2);
    EXPECT_EQ(RaisedNumber(use), 380);
    desktop.faults.FailAnyCall(4);
    EXPECT_EQ(use(), 5) << "there is no fourth call";
}

TEST_F(SimulatedDesktopTest, ACallFailsInEachOfItsWaysOrFromThenOn) {
    const auto convert = [&] { return platform.conversions.ToInt16(std::int16_t{5}); };
    EXPECT_EQ(desktop.faults.WaysOf("VariantChangeType"), 3u);
    desktop.faults.FailAnyCall(1, 1);
    EXPECT_EQ(RaisedNumber(convert), 6);
    desktop.faults.FailAnyCall(1, 2);
    EXPECT_THROW(convert(), std::bad_alloc);
    EXPECT_EQ(convert(), 5);

    desktop.faults.FailAnyCall(2, 0, true);
    EXPECT_EQ(convert(), 5);
    for (int again = 0; again < 3; ++again)
        EXPECT_EQ(RaisedNumber(convert), 13);
    EXPECT_EQ(desktop.faults.Failed().size(), 3u);
    desktop.faults.Clear();
    EXPECT_EQ(convert(), 5);
}

TEST_F(SimulatedDesktopTest, WhatTheDesktopAllocatesIsNotCounted) {
    desktop.host.environment[u"PATH"] = Text(100, u'x');
    const TextView name = u"PATH";
    {
        const FailingMemory memory(1);
        EXPECT_EQ(platform.host.EnvironmentVariable(name).size(), 100u);
        EXPECT_FALSE(memory.HasFailed());
    }
    const FailingMemory memory(1, FailingMemory::Which::ThatAndAllLater);
    EXPECT_THROW(Text(100, u'x'), std::bad_alloc);
    EXPECT_THROW(Text(100, u'x'), std::bad_alloc);
}

TEST_F(SimulatedDesktopTest, EveryFormOfAnAllocationIsFreedByItsPartner) {
    void* block = ::operator new(8, std::nothrow);
    ASSERT_NE(block, nullptr);
    ::operator delete(block, std::nothrow);
    block = ::operator new[](8, std::nothrow);
    ASSERT_NE(block, nullptr);
    ::operator delete[](block, std::nothrow);
    block = ::operator new(0);
    ASSERT_NE(block, nullptr) << "also of no bytes";
    ::operator delete (block, std::size_t{0});
    block = ::operator new[](0);
    ASSERT_NE(block, nullptr);
    ::operator delete[](block, std::size_t{0});
}

TEST_F(SimulatedDesktopTest, AnAllocationThatDoesNotThrowFailsWithNothing) {
    const FailingMemory memory(1, FailingMemory::Which::ThatAndAllLater);
    EXPECT_EQ(::operator new(8, std::nothrow), nullptr);
    EXPECT_EQ(::operator new[](8, std::nothrow), nullptr);
}

TEST_F(SimulatedDesktopTest, ACallThatNeverEndsIsStopped) {
    desktop.faults.FailAnyCall(0);
    EXPECT_THROW(for (;;) platform.windows.WindowExists(7), std::logic_error);
}

TEST_F(SimulatedDesktopTest, EveryKindOfFailureShowsInItsOwnWay) {
    for (const char* call :
         {"QueryPerformanceFrequency", "RegOpenKeyEx", "VariantChangeType", "VarDateFromStr", "Let MousePointer",
          "RegisterEventSource", "GetFileAttributes", "WNetGetUser", "GetUserName", "GetVersionEx", "FormatMessage",
          "IsWindow", "GetWindowText", "GetFileAttributesAnsi", "GetModuleHandle", "WNetGetLastError", "IsIconic",
          "FlashWindow"}) {
        desktop.FailCall(call, 1, 8);
    }
    desktop.windows.windows[7] = {u"Main", true};
    desktop.errors.modules[u"wininet.dll"][12007] = u"No such server";
    desktop.errors.networkError = {u"No domain", u"Test Network"};
    desktop.files.AddFile(u"C:\\a.txt");
    Text name;
    HostApplication::Platform record{1, 2, 3, 4};

    EXPECT_EQ(platform.clock.CounterFrequency(), std::nullopt);
    EXPECT_EQ(platform.registry.OpenKey(static_cast<Handle>(0x80000001), u"", 1).status, 8);
    EXPECT_THROW(platform.conversions.ToInt16(std::int16_t{1}), ComponentError);
    EXPECT_EQ(platform.conversions.ParseDate(u"1/2/2026"), std::nullopt);
    EXPECT_THROW(platform.screen.SetMousePointer(0), ComponentError);
    EXPECT_EQ(platform.eventLog.Open(u"KWOMsg"), 0u);
    EXPECT_EQ(platform.files.Attributes(u"C:\\a.txt"), FileSystem::kNoAttributes);
    EXPECT_FALSE(platform.host.NetworkUserName(name));
    EXPECT_FALSE(platform.host.UserName(name));
    EXPECT_FALSE(platform.host.QueryPlatform(record));
    EXPECT_EQ(record.platformId, 4u);
    EXPECT_EQ(platform.errors.SystemText(5), u"");
    EXPECT_EQ(platform.errors.ModuleText(u"wininet.dll", 12007), u"");
    EXPECT_EQ(platform.errors.LastNetworkError().text, u"");
    EXPECT_FALSE(platform.windows.WindowExists(7));
    EXPECT_FALSE(platform.windows.IsMinimised(7));
    platform.windows.Flash(7, true);
    EXPECT_EQ(desktop.windows.windows[7].flashes, 0);
    EXPECT_EQ(platform.windows.WindowText(7), u"");
    EXPECT_EQ(platform.files.AttributesAnsi(u"C:\\a.txt"), FileSystem::kNoAttributes);
}

TEST_F(SimulatedDesktopTest, BoxIsAnsweredByTheScriptElseByItsFirstButton) {
    desktop.windows.answers = {7, 2};

    EXPECT_EQ(platform.windows.AskUser(0, u"?", u"", 4), 7);
    EXPECT_EQ(platform.windows.AskUser(0, u"?", u"", 4), 2);
    EXPECT_EQ(platform.windows.AskUser(0, u"?", u"", 4), 6);
    EXPECT_EQ(platform.windows.AskUser(0, u"?", u"", 0x40), 1);
    EXPECT_EQ(platform.windows.AskUser(0, u"?", u"", 0x42), 3);
}

TEST_F(SimulatedDesktopTest, CallbackRunsWhileTheBoxIsUp) {
    desktop.windows.windows[9] = {u"Owner"};
    desktop.windows.onAsk = [this](const SimulatedWindowService::Question& question) {
        desktop.Advance(5000);
        return question.owner;
    };

    EXPECT_EQ(platform.windows.AskUser(9, u"?", u"", 0), 9);
    EXPECT_EQ(desktop.clock.Elapsed(), Milliseconds::Whole(5000));
}

TEST_F(SimulatedDesktopTest, BoxOfAnOwnerThatIsNoWindowIsNotShown) {
    EXPECT_EQ(platform.windows.AskUser(9, u"?", u"", 0), 0);
    EXPECT_EQ(platform.errors.Last(), 1400);
}

TEST_F(SimulatedDesktopTest, WindowTellsWhatItIs) {
    desktop.windows.windows[7] = {u"Łódź — 1", true};
    desktop.windows.windows[8] = {Text(300, u'x'), false};

    EXPECT_TRUE(platform.windows.WindowExists(7));
    EXPECT_TRUE(platform.windows.IsMinimised(7));
    EXPECT_FALSE(platform.windows.IsMinimised(8));
    EXPECT_EQ(platform.windows.WindowText(7), u"?ód? — 1");
    EXPECT_EQ(platform.windows.WindowText(8).size(), 254u);
    EXPECT_FALSE(platform.windows.WindowExists(0));
    EXPECT_FALSE(platform.windows.IsMinimised(9));
    platform.windows.Flash(7, true);
    platform.windows.Flash(7, false);
    EXPECT_EQ(desktop.windows.windows[7].flashes, 1);
}

TEST_F(SimulatedDesktopTest, ScreenKeepsPointerAndHelpContexts) {
    desktop.screen.pointer = 11;
    desktop.screen.activeForm = 7;
    desktop.screen.helpContexts[7] = 100;

    EXPECT_EQ(platform.screen.MousePointer(), 11);
    EXPECT_EQ(platform.screen.ActiveForm(), 7);
    EXPECT_EQ(platform.screen.HelpContext(7), 100);
    EXPECT_EQ(platform.screen.HelpContext(8), 0);
    platform.screen.SetHelpContext(7, 200);
    EXPECT_EQ(platform.screen.HelpContext(7), 200);
    EXPECT_EQ(desktop.log.Lines(), (Lines{"Let HelpContext 7 200"}));
}

TEST_F(SimulatedDesktopTest, ComputerNameLongerThanItsBufferFails) {
    Text name;
    desktop.host.computerName = Text(15, u'a');
    EXPECT_TRUE(platform.host.ComputerName(name));
    EXPECT_EQ(name.size(), 15u);

    desktop.host.computerName = Text(16, u'a');
    EXPECT_FALSE(platform.host.ComputerName(name));
    EXPECT_EQ(platform.errors.Last(), 111);
}

TEST_F(SimulatedDesktopTest, HostTellsWhatItWasToldToBe) {
    desktop.host.executableName = u"GAME";
    desktop.host.platform.platformId = 1;
    desktop.host.moduleFileName = Text(300, u'm');
    HostApplication::Platform record;
    Text name;

    EXPECT_EQ(platform.host.ExecutableName(), u"GAME");
    EXPECT_TRUE(platform.host.QueryPlatform(record));
    EXPECT_EQ(record.platformId, 1u);
    EXPECT_EQ(platform.host.ModuleFileName().size(), 255u);
    EXPECT_TRUE(platform.host.NetworkUserName(name));
    EXPECT_EQ(name, u"jdoe");
    EXPECT_TRUE(platform.host.UserName(name));
    EXPECT_EQ(platform.host.ProgramVersion().revision, 11);
}

TEST_F(SimulatedDesktopTest, FilesAndTheirFoldersHaveAttributes) {
    desktop.files.AddFile(u"C:\\Data\\Log\\app.log");

    EXPECT_EQ(platform.files.Attributes(u"c:\\data/log\\APP.LOG"), 0x20);
    EXPECT_EQ(platform.files.Attributes(u"C:\\Data"), FileSystem::kFolder);
    EXPECT_EQ(platform.files.Attributes(u"C:\\Data\\Log\\"), FileSystem::kFolder);
    EXPECT_EQ(platform.files.Attributes(u"C:\\"), FileSystem::kFolder);
    EXPECT_EQ(platform.files.AttributesAnsi(u"C:\\Data\\Log\\app.log"), 0x20);
    EXPECT_EQ(platform.errors.Last(), 0);
}

TEST_F(SimulatedDesktopTest, AFolderOfTwoLettersIsNoDrive) {
    EXPECT_EQ(platform.files.Attributes(u"ab"), FileSystem::kNoAttributes);
    EXPECT_EQ(platform.files.Attributes(u"a:"), FileSystem::kFolder);
}

TEST_F(SimulatedDesktopTest, AListingOfAFolderItselfFindsNoFile) {
    desktop.files.AddFile(u"C:\\Data\\a.txt");
    EXPECT_TRUE(platform.files.ListsFile(u"C:\\Data\\a.txt"));
    for (const char16_t* pattern : {u"", u"C:\\Data\\", u"C:\\Data/", u"C:\\Data"})
        EXPECT_FALSE(platform.files.ListsFile(pattern));
}

TEST_F(SimulatedDesktopTest, WhatIsNotOpenCannotBeClosed) {
    platform.eventLog.Close(5);
    EXPECT_EQ(platform.errors.Last(), 6);
    platform.errors.SetLast(0);
    platform.logFiles.Close(5);
    EXPECT_EQ(platform.errors.Last(), 6);
    platform.errors.SetLast(0);
    platform.processMemory.Close(5);
    EXPECT_EQ(platform.errors.Last(), 6);
}

TEST_F(SimulatedDesktopTest, ALogFileIsDeletedOnceItIsClosedAndAFolderNever) {
    desktop.files.AddFolder(u"C:\\Log");
    const auto first = platform.logFiles.CreateNew(u"C:\\Log\\a.txt");
    const auto second = platform.logFiles.CreateNew(u"C:\\Log\\b.txt");
    platform.logFiles.Close(second);

    EXPECT_TRUE(platform.logFiles.Delete(u"C:\\Log\\b.txt"));
    EXPECT_FALSE(platform.logFiles.Delete(u"C:\\Log\\a.txt"));
    EXPECT_EQ(platform.errors.Last(), 32);
    platform.logFiles.Close(first);
    EXPECT_TRUE(platform.logFiles.Delete(u"C:\\Log\\a.txt"));
    EXPECT_FALSE(platform.logFiles.Delete(u"C:\\Log"));
    EXPECT_EQ(platform.errors.Last(), 5);
}

TEST_F(SimulatedDesktopTest, AProcessIsOpenedAsAsked) {
    platform.processMemory.Open(0x410, true, 1);
    platform.processMemory.Open(0x410, false, 1);

    EXPECT_EQ(desktop.log.Starting("OpenProcess"),
              (Lines{"OpenProcess access=0x410 inherit=1 id=1", "OpenProcess access=0x410 inherit=0 id=1"}));
}

TEST_F(SimulatedDesktopTest, AContextKeepsPenAndBrushApart) {
    ScreenDrawing& screen = platform.screenDrawing;
    constexpr std::int32_t kNullBrush = 5;
    constexpr std::int32_t kWhitePen = 6;
    constexpr std::int32_t kNullPen = 8;
    constexpr std::int32_t kFirstFont = 10;
    const Handle context = screen.CreateDisplayContext();

    screen.SelectObject(context, screen.StockObject(kNullBrush));
    screen.SelectObject(context, screen.StockObject(kWhitePen));
    EXPECT_EQ(screen.SelectObject(context, screen.StockObject(kNullPen)), screen.StockObject(kWhitePen));
    EXPECT_EQ(screen.SelectObject(context, screen.CreatePen(0, 1, 0)), screen.StockObject(kNullPen));
    EXPECT_EQ(screen.SelectObject(context, screen.StockObject(kFirstFont)), screen.StockObject(kNullBrush));
}

TEST_F(SimulatedDesktopTest, TimersOfAThreadThatEndsStop) {
    struct Handler final : TimerHandler {
        void TimerProc() noexcept override { ++fired; }
        int fired = 0;
    } handler;
    platform.timers.Start(10, handler);
    platform.timers.Start(20, handler);

    desktop.timers.EndThread();

    EXPECT_EQ(desktop.timers.Running(), 0u);
    desktop.Advance(100);
    desktop.messages.ProcessPending();
    EXPECT_EQ(handler.fired, 0);
}

TEST_F(SimulatedDesktopTest, AnIconNeedsAWindow) {
    TrayRecord record;
    EXPECT_FALSE(platform.notificationArea.Add(record));
    record.window = 7;
    EXPECT_TRUE(platform.notificationArea.Add(record));
}

TEST_F(SimulatedDesktopTest, AQuotedProgramIsStartedIfItIsInstalled) {
    desktop.programs.installed = {u"C:\\a b.exe"};
    EXPECT_NE(platform.programs.Start(u"\"C:\\a b.exe\" x", 1), 0);
    EXPECT_EQ(RaisedNumber([&] { platform.programs.Start(u"\"C:\\c.exe\"", 1); }), 53);
}

TEST_F(SimulatedDesktopTest, MissingFileFolderAndImpossibleNameDiffer) {
    struct Row {
        Text path;
        std::int32_t code;
    };
    desktop.files.AddFolder(u"C:\\Data");
    desktop.files.AddFile(u"C:\\Data\\was.txt");
    desktop.files.Remove(u"C:\\Data\\was.txt");
    for (const Row& row : {Row{u"C:\\Data\\was.txt", 2}, Row{u"nothing.txt", 2}, Row{u"C:\\None\\a.txt", 3},
                           Row{u"", 3}, Row{u"C:\\Data\\*.txt", 123}}) {
        platform.errors.SetLast(0);
        EXPECT_EQ(platform.files.Attributes(row.path), FileSystem::kNoAttributes) << Shown(TextView(row.path));
        EXPECT_EQ(platform.errors.Last(), row.code) << Shown(TextView(row.path));
    }
    desktop.files.AddFile(u"C:\\Łódź.txt");
    EXPECT_EQ(platform.files.Attributes(u"C:\\Łódź.txt"), 0x20);
    EXPECT_EQ(platform.files.AttributesAnsi(u"C:\\Łódź.txt"), FileSystem::kNoAttributes);
}

TEST_F(SimulatedDesktopTest, EventLogRecordsEntriesOfOpenSources) {
    const auto source = platform.eventLog.Open(u"KWOMsg");
    ASSERT_NE(source, 0u);
    EXPECT_TRUE(platform.eventLog.Report(source, 2, 1, u"Careful"));
    EXPECT_EQ(desktop.eventLog.OpenSources(), 1u);
    platform.eventLog.Close(source);

    EXPECT_FALSE(platform.eventLog.Report(source, 2, 1, u"Too late"));
    EXPECT_EQ(platform.errors.Last(), 6);
    EXPECT_EQ(platform.eventLog.Open(u""), 0u);
    EXPECT_EQ(desktop.eventLog.OpenSources(), 0u);
    EXPECT_EQ(desktop.eventLog.entries, (std::vector<SimulatedEventLog::Entry>{{u"KWOMsg", 2, 1, u"Careful"}}));
    EXPECT_EQ(desktop.log.Starting("ReportEvent")[0], "ReportEvent type=2 id=1 Careful");
}

TEST_F(SimulatedDesktopTest, SystemTextsComeWithTheirLineBreakAndChangeTheLastError) {
    for (const std::int32_t code : {2, 5, 6, 122, 144, 234, 1208}) {
        EXPECT_TRUE(platform.errors.SystemText(code).ends_with(u".\r\n")) << code;
    }
    EXPECT_EQ(platform.errors.Last(), 0);
    EXPECT_EQ(platform.errors.SystemText(31999), u"");
    EXPECT_EQ(platform.errors.Last(), 317);

    desktop.errors.system[31999] = Text(254, u'x');
    EXPECT_EQ(platform.errors.SystemText(31999).size(), 254u);
    desktop.errors.system[31999] = Text(255, u'x');
    EXPECT_EQ(platform.errors.SystemText(31999), u"");
    EXPECT_EQ(platform.errors.Last(), 122);
}

TEST_F(SimulatedDesktopTest, ModuleTextsNeedTheModuleLoaded) {
    EXPECT_EQ(platform.errors.ModuleText(u"wininet.dll", 12007), u"");
    EXPECT_EQ(platform.errors.Last(), 126);

    desktop.errors.modules[u"wininet.dll"][12007] = u"No such server\r\n";
    EXPECT_EQ(platform.errors.ModuleText(u"WinInet.dll", 12007), u"No such server\r\n");
    EXPECT_EQ(platform.errors.ModuleText(u"wininet.dll", 12008), u"");
}

TEST_F(SimulatedDesktopTest, InternetResponseNeedsRoomForItsEnd) {
    desktop.errors.internetResponse = u"530 no";

    const auto small = platform.errors.LastInternetResponse(6);
    EXPECT_FALSE(small.succeeded);
    EXPECT_EQ(small.length, 6u);
    EXPECT_EQ(platform.errors.Last(), 122);

    const auto whole = platform.errors.LastInternetResponse(7);
    EXPECT_TRUE(whole.succeeded);
    EXPECT_EQ(whole.text, u"530 no");
}

TEST_F(SimulatedDesktopTest, NetworkErrorIsWhatWasSet) {
    desktop.errors.networkError = {u"No domain", u"Test Network"};

    EXPECT_EQ(platform.errors.LastNetworkError().text, u"No domain");
    EXPECT_EQ(platform.errors.LastNetworkError().provider, u"Test Network");
}

}  // namespace
}  // namespace kwo::platform::simulated
