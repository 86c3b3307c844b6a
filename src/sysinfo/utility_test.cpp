#include "sysinfo/utility.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "support/raised.h"

namespace kwo::sysinfo {
namespace {

using platform::Empty;
using platform::Missing;
using platform::Null;
using platform::Variant;
using platform::simulated::SimulatedFileSystem;
using test_support::RaisedNumber;
using Lines = std::vector<std::string>;

class Utility : public testing::Test {
protected:
    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    KWOUtility utility{component};
};

TEST_F(Utility, CreationSetsTheProgramName) {
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

class FindInPath : public Utility {
protected:
    FindInPath() { desktop.host.libraryFolder = u"C:\\Lib"; }

    void Path(TextView path) { desktop.host.environment[u"PATH"] = Text(path); }
    Text Find(TextView name) { return utility.KWO_FindInPath(name); }
    int Probes() const { return desktop.faults.Calls("FindFirstFile"); }
};

TEST_F(FindInPath, AFileBesideTheLibraryIsFoundWithoutThePath) {
    desktop.files.AddFile(u"C:\\Lib\\tool.exe");
    desktop.files.AddFile(u"C:\\A\\tool.exe");
    Path(u"C:\\A");
    EXPECT_EQ(Find(u"tool.exe"), u"C:\\Lib\\tool.exe");
    EXPECT_EQ(Probes(), 1);
}

TEST_F(FindInPath, ALibraryInTheRootOfADriveGetsNoSecondSeparator) {
    desktop.host.libraryFolder = u"D:\\";
    desktop.files.AddFile(u"D:\\tool.exe");
    EXPECT_EQ(Find(u"tool.exe"), u"D:\\tool.exe");
}

TEST_F(FindInPath, EntriesAreTriedInTheirOrder) {
    desktop.files.AddFile(u"C:\\A\\both.exe");
    desktop.files.AddFile(u"C:\\B\\both.exe");
    Path(u"C:\\B;C:\\A");
    EXPECT_EQ(Find(u"both.exe"), u"C:\\B\\both.exe");
    EXPECT_EQ(Probes(), 2);
    Path(u"C:\\A;C:\\B");
    EXPECT_EQ(Find(u"both.exe"), u"C:\\A\\both.exe");
}

TEST_F(FindInPath, TheLastEntryNeedsNoSeparatorBehindIt) {
    desktop.files.AddFile(u"C:\\B\\last.exe");
    Path(u"C:\\A;C:\\B");
    EXPECT_EQ(Find(u"last.exe"), u"C:\\B\\last.exe");
    EXPECT_EQ(Probes(), 3);
    Path(u"C:\\A;C:\\B;");
    EXPECT_EQ(Find(u"last.exe"), u"C:\\B\\last.exe");
    EXPECT_EQ(Probes(), 6);
}

TEST_F(FindInPath, AnEntryWithABackslashGetsNoSecondOne) {
    desktop.files.AddFile(u"C:\\B\\tool.exe");
    Path(u"C:\\B\\");
    EXPECT_EQ(Find(u"tool.exe"), u"C:\\B\\tool.exe");
    desktop.files.AddFile(u"C:\\tool.exe");
    Path(u"C:\\;C:\\B");
    EXPECT_EQ(Find(u"tool.exe"), u"C:\\tool.exe");
}

TEST_F(FindInPath, AnEmptyEntryIsTheRootOfTheCurrentDrive) {
    desktop.files.AddFile(u"\\rooted.exe");
    Path(u"C:\\A;;C:\\B");
    EXPECT_EQ(Find(u"rooted.exe"), u"\\rooted.exe");
    EXPECT_EQ(Probes(), 3);
    Path(u";");
    EXPECT_EQ(Find(u"rooted.exe"), u"\\rooted.exe");
    Path(u";C:\\A");
    EXPECT_EQ(Find(u"rooted.exe"), u"\\rooted.exe");
    Path(u"C:\\A;");
    EXPECT_EQ(Find(u"rooted.exe"), u"");
}

TEST_F(FindInPath, WithoutAPathThereIsOnlyTheLibrarysFolder) {
    desktop.files.AddFile(u"\\tool.exe");
    EXPECT_EQ(Find(u"tool.exe"), u"");
    Path(u"");
    EXPECT_EQ(Find(u"tool.exe"), u"");
    EXPECT_EQ(Probes(), 2);
}

TEST_F(FindInPath, FoldersHiddenAndSystemFilesAreNoFiles) {
    desktop.files.AddFolder(u"C:\\A\\name");
    desktop.files.AddFile(u"C:\\B\\name", SimulatedFileSystem::kHidden | SimulatedFileSystem::kArchive);
    desktop.files.AddFile(u"C:\\C\\name", SimulatedFileSystem::kSystem);
    desktop.files.AddFile(u"C:\\D\\name", SimulatedFileSystem::kReadOnly | SimulatedFileSystem::kArchive);
    Path(u"C:\\A;C:\\B;C:\\C;C:\\D");
    EXPECT_EQ(Find(u"name"), u"C:\\D\\name");
    Path(u"C:\\A;C:\\B;C:\\C");
    EXPECT_EQ(Find(u"name"), u"");
}

TEST_F(FindInPath, ANameMayHoldAFolderOrWildcards) {
    desktop.files.AddFile(u"C:\\A\\sub\\tool.exe");
    Path(u"C:\\A");
    EXPECT_EQ(Find(u"sub\\tool.exe"), u"C:\\A\\sub\\tool.exe");
    EXPECT_EQ(Find(u"sub\\*.exe"), u"C:\\A\\sub\\*.exe");
    EXPECT_EQ(Find(u"sub\\t??l.*"), u"C:\\A\\sub\\t??l.*");
    EXPECT_EQ(Find(u"sub\\?.exe"), u"");
    EXPECT_EQ(Find(u"s*"), u"");
}

TEST_F(FindInPath, NoInputRaises) {
    Path(u"C:\\A;?:\\;<>|;\"C:\\quoted\";*");
    for (const TextView name : {u"", u"<>|", u"\\\\", u"a:b:c", u"\"", u";"})
        EXPECT_EQ(Find(name), u"");
    EXPECT_EQ(Find(Text(100'000, u'x')), u"");
    EXPECT_EQ(Find(Text(1, u'\0')), u"");
}

TEST_F(FindInPath, ANameWithAZeroCharacterIsNotFound) {
    desktop.files.AddFile(u"C:\\Lib\\tool.exe");
    desktop.files.AddFile(u"C:\\A\\tool.exe");
    Path(u"C:\\A");
    EXPECT_EQ(Find(TextView(u"tool.exe\0.txt", 13)), u"");
    EXPECT_EQ(Find(TextView(u"tool.exe\0", 9)), u"");
}

TEST_F(FindInPath, EveryEntryOfAPathOfTheGreatestLengthIsTried) {
    Text path;
    while (path.size() + 11 <= 32'767)
        path += u"C:\\Nowhere;";
    const auto entries = static_cast<int>(path.size() / 11);
    path.resize(32'767, u'x');
    desktop.files.AddFile(u"C:\\Last\\tool.exe");
    path.replace(path.size() - 8, 8, u";C:\\Last");
    Path(path);
    EXPECT_EQ(Find(u"tool.exe"), u"C:\\Last\\tool.exe");
    EXPECT_GE(Probes(), entries);
}

class Directories : public Utility {
protected:
    struct Flavour {
        Text (KWOUtility::*member)(Variant& slashAtEnd);
        std::string platform::simulated::SimulatedHostApplication::*directory;
        std::string call;
    };
    std::vector<Flavour> both = {
        {&KWOUtility::KWO_SystemDir, &platform::simulated::SimulatedHostApplication::systemDirectory,
         "GetSystemDirectory"},
        {&KWOUtility::KWO_WindowsDir, &platform::simulated::SimulatedHostApplication::windowsDirectory,
         "GetWindowsDirectory"}};

    Text Ask(const Flavour& flavour, Variant slashAtEnd = Missing()) { return (utility.*flavour.member)(slashAtEnd); }
    void Put(const Flavour& flavour, const std::string& directory) { desktop.host.*flavour.directory = directory; }
};

TEST_F(Directories, ThereIsNoBackslashUnlessItIsAskedFor) {
    EXPECT_EQ(Ask(both[0]), u"C:\\WINDOWS\\system32");
    EXPECT_EQ(Ask(both[1]), u"C:\\WINDOWS");
    EXPECT_EQ(Ask(both[0], true), u"C:\\WINDOWS\\system32\\");
    EXPECT_EQ(Ask(both[1], true), u"C:\\WINDOWS\\");
    for (const Flavour& flavour : both) {
        Put(flavour, "C:\\W");
        EXPECT_EQ(Ask(flavour, false), u"C:\\W");
        EXPECT_EQ(Ask(flavour, Null{}), u"C:\\W");
        EXPECT_EQ(Ask(flavour, Empty{}), u"C:\\W");
        EXPECT_EQ(Ask(flavour, std::int16_t{0}), u"C:\\W");
        EXPECT_EQ(Ask(flavour, std::int16_t{7}), u"C:\\W\\");
        EXPECT_EQ(Ask(flavour, Text(u"True")), u"C:\\W\\");
    }
}

TEST_F(Directories, AMissingArgumentBecomesFalse) {
    for (const Flavour& flavour : both) {
        Variant slashAtEnd = Missing();
        (utility.*flavour.member)(slashAtEnd);
        EXPECT_EQ(slashAtEnd, Variant(false));
        slashAtEnd = std::int16_t{7};
        (utility.*flavour.member)(slashAtEnd);
        EXPECT_EQ(slashAtEnd, Variant(std::int16_t{7}));
    }
}

TEST_F(Directories, WhatIsNeitherTrueNorFalseIsATypeMismatch) {
    for (const Flavour& flavour : both) {
        for (const Variant& bad : {Variant(Text(u"perhaps")), Variant(Text()), Variant(platform::HostObjectRef())})
            EXPECT_NE(RaisedNumber([&] { Ask(flavour, bad); }), 0);
        EXPECT_EQ(RaisedNumber([&] { Ask(flavour, Text(u"perhaps")); }), 13);
        // Nobody asks for the backslash of a directory that is not known.
        desktop.FailCall(flavour.call, 1, 5);
        EXPECT_EQ(Ask(flavour, Text(u"perhaps")), u"");
    }
}

TEST_F(Directories, ADirectoryAsLongAsTheBufferIsTakenWhole) {
    desktop.host.directoryNeedsNoEnd = true;
    for (const Flavour& flavour : both) {
        Put(flavour, std::string(260, 'x'));
        EXPECT_EQ(Ask(flavour), Text(260, u'x'));
        EXPECT_EQ(desktop.log.Starting(flavour.call), (Lines{flavour.call + " 260"}));
    }
}

TEST_F(Directories, ABufferThatIsTooSmallGrows) {
    for (const Flavour& flavour : both) {
        const auto calls = [&] { return desktop.log.Starting(flavour.call); };
        Put(flavour, std::string(259, 'x'));
        EXPECT_EQ(Ask(flavour), Text(259, u'x'));
        EXPECT_EQ(calls(), (Lines{flavour.call + " 260"}));
        desktop.log.Clear();
        Put(flavour, std::string(260, 'x'));
        EXPECT_EQ(Ask(flavour), Text(260, u'x'));
        EXPECT_EQ(calls(), (Lines{flavour.call + " 260", flavour.call + " 261"}));
        desktop.log.Clear();
        Put(flavour, std::string(5000, 'x'));
        EXPECT_EQ(Ask(flavour, true), Text(5000, u'x') + u"\\");
        EXPECT_EQ(calls(), (Lines{flavour.call + " 260", flavour.call + " 5001"}));
        desktop.log.Clear();
    }
}

TEST_F(Directories, AFailureIsAnEmptyTextWithoutABackslash) {
    for (const Flavour& flavour : both) {
        desktop.FailCall(flavour.call, 1, 5);
        EXPECT_EQ(Ask(flavour, true), u"");
        // Also at the second call.
        Put(flavour, std::string(300, 'x'));
        desktop.FailCall(flavour.call, 2, 5);
        EXPECT_EQ(Ask(flavour, true), u"");
    }
}

TEST_F(Directories, TheAnswerIsOneCharacterForEachByte) {
    for (const Flavour& flavour : both) {
        Put(flavour, "C:\\Gr\xFC n");
        EXPECT_EQ(Ask(flavour), u"C:\\Grü n");
    }
}

using DirectoriesIntended = Directories;

TEST_F(DirectoriesIntended, ARootThatEndsInABackslashGetsASecondOne) {
    for (const Flavour& flavour : both) {
        Put(flavour, "C:\\");
        EXPECT_EQ(Ask(flavour, true), u"C:\\\\");
        EXPECT_EQ(Ask(flavour), u"C:\\");
    }
}

class SystemVersion : public Utility {
protected:
    void Version(std::uint32_t major, std::uint32_t minor, std::uint32_t family) {
        desktop.host.platform = {major, minor, 2600, family};
    }
    int Queries() const { return desktop.faults.Calls("GetVersionEx"); }
};

TEST_F(SystemVersion, IsAskedForOnce) {
    Version(5, 1, 2);
    EXPECT_EQ(Queries(), 0);
    EXPECT_EQ(utility.KWO_WinMajorVersion(), 5);
    EXPECT_EQ(utility.KWO_WinMinorVersion(), 1);
    EXPECT_TRUE(utility.KWO_IsWinNT());
    EXPECT_FALSE(utility.KWO_IsWin32());
    EXPECT_EQ(Queries(), 1);
    Version(6, 0, 1);
    EXPECT_EQ(utility.KWO_WinMajorVersion(), 5);
    EXPECT_EQ(KWOUtility(component).KWO_WinMajorVersion(), 6);
}

TEST_F(SystemVersion, BelowThreeIsAskedForAgain) {
    Version(2, 99, 2);
    EXPECT_EQ(utility.KWO_WinMajorVersion(), 2);
    EXPECT_EQ(utility.KWO_WinMinorVersion(), 99);
    EXPECT_EQ(Queries(), 2);
    Version(3, 0, 2);
    EXPECT_EQ(utility.KWO_WinMajorVersion(), 3);
    EXPECT_EQ(utility.KWO_WinMajorVersion(), 3);
    EXPECT_EQ(Queries(), 3);
}

using FamilyIntended = SystemVersion;

TEST_F(FamilyIntended, IsWin32MeansTheFamilyThatIsNotNt) {
    const auto families = [&](std::uint32_t family) {
        Version(4, 0, family);
        KWOUtility fresh(component);
        const bool other = fresh.KWO_IsWin32();
        return std::pair(other, fresh.KWO_IsWinNT());
    };
    EXPECT_EQ(families(0), std::pair(false, false));
    EXPECT_EQ(families(1), std::pair(true, false));
    EXPECT_EQ(families(2), std::pair(false, true));
    EXPECT_EQ(families(3), std::pair(false, false));
}

TEST_F(SystemVersion, NumbersOfMoreThan16BitsOverflow) {
    Version(32'767, 32'767, 2);
    EXPECT_EQ(utility.KWO_WinMajorVersion(), 32'767);
    EXPECT_EQ(utility.KWO_WinMinorVersion(), 32'767);
    Version(32'768, 32'768, 2);
    KWOUtility fresh(component);
    EXPECT_EQ(RaisedNumber([&] { fresh.KWO_WinMajorVersion(); }), 6);
    EXPECT_EQ(RaisedNumber([&] { fresh.KWO_WinMinorVersion(); }), 6);
    EXPECT_TRUE(fresh.KWO_IsWinNT());
}

TEST_F(SystemVersion, AFailedQueryIsToldByABoxAndTriedAgain) {
    Version(5, 1, 2);
    std::vector<platform::simulated::SimulatedWindowService::Question> boxes;
    desktop.windows.onAsk = [&](const auto& question) {
        boxes.push_back(question);
        return 1;
    };
    desktop.host.moduleFileName = u"C:\\Tools\\KWODEV.EXE";
    desktop.FailCall("GetVersionEx", 1, 5);
    EXPECT_FALSE(utility.KWO_IsWinNT());
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_NE(boxes[0].prompt.find(u"GetVersionEx failed."), Text::npos);
    EXPECT_EQ(boxes[0].style & 0xFF, 16u);
    desktop.FailCall("GetVersionEx", 1, 5);
    EXPECT_EQ(utility.KWO_WinMajorVersion(), 0);
    EXPECT_EQ(boxes.size(), 2u);
    EXPECT_TRUE(utility.KWO_IsWinNT());
    EXPECT_EQ(boxes.size(), 2u);
}

TEST_F(SystemVersion, OutsideADevelopmentEnvironmentAFailedQueryShowsNothing) {
    desktop.FailCall("GetVersionEx", 1, 5);
    EXPECT_EQ(utility.KWO_WinMinorVersion(), 0);
    EXPECT_EQ(desktop.log.Starting("Ask"), Lines{});
    EXPECT_FALSE(utility.KWO_IsWin32());
}

class Pause : public Utility {
protected:
    Pause() {
        desktop.clock.SetTickCount(1000);
        desktop.clock.msPerReading = 1;
    }

    /// Milliseconds that the pause lasted, the reading at its beginning and at its end not counted.
    std::int64_t Lasts(std::int16_t seconds) {
        const std::int64_t before = desktop.clock.Elapsed().scaled;
        utility.KWO_Pause(seconds);
        return (desktop.clock.Elapsed().scaled - before) / platform::Milliseconds::kScale - 1;
    }
    std::int32_t Raises(std::int16_t seconds) {
        return RaisedNumber([&] { utility.KWO_Pause(seconds); });
    }
    std::size_t Rounds() const { return desktop.log.Starting("Pump").size(); }
};

TEST_F(Pause, WaitsForSeconds) {
    EXPECT_EQ(Lasts(1), 1000);
    EXPECT_EQ(Lasts(2), 2000);
    EXPECT_EQ(Lasts(32), 32'000);
}

TEST_F(Pause, ReturnsAtOnceForZeroAndLess) {
    for (const std::uint32_t ticks : {1000u, 0x7FFFFFFFu, 0x80000005u}) {
        desktop.clock.SetTickCount(ticks);
        for (const std::int16_t seconds : std::initializer_list<std::int16_t>{0, -1, -32, -33, -100, -32'768})
            EXPECT_EQ(Raises(seconds), 0) << seconds;
    }
    EXPECT_EQ(Rounds(), 0u);
}

TEST_F(Pause, GivesUpWhenTheProgramIsAskedToQuit) {
    desktop.PostAt(500, [&] { desktop.messages.RequestQuit(); });
    EXPECT_LE(Lasts(30), 600);
    EXPECT_LE(Lasts(30), 1);
}

TEST_F(Pause, ProcessesMessagesInEveryRound) {
    int seen = 0;
    desktop.PostAt(500, [&] { ++seen; });
    desktop.PostAt(1500, [&] { ++seen; });
    utility.KWO_Pause(1);
    EXPECT_EQ(seen, 1);
    // The first reading is the beginning, the one of the thousandth millisecond the end.
    EXPECT_EQ(Rounds(), 999u);
}

TEST_F(Pause, AMessageMayPauseItself) {
    desktop.PostAt(100, [&] { utility.KWO_Pause(2); });
    EXPECT_GE(Lasts(1), 2100);
}

TEST_F(Pause, AMessageThatRaisesEndsThePause) {
    desktop.PostAt(10, [] { platform::Raise(77, u"", u"out of an event"); });
    EXPECT_EQ(Raises(1), 77);
}

TEST_F(Pause, TheTickCountMustNotPassItsLargestValue) {
    desktop.clock.SetTickCount(0x7FFFFFFF - 1000);
    EXPECT_EQ(Lasts(1), 1000);
    desktop.clock.SetTickCount(0x7FFFFFFF - 999);
    EXPECT_EQ(Raises(1), 6);
    EXPECT_EQ(Raises(32), 6);
    // Ticks beyond are negative numbers: there is room again.
    desktop.clock.SetTickCount(0x80000000);
    EXPECT_EQ(Lasts(1), 1000);
}

using PauseIntended = Pause;

TEST_F(PauseIntended, FromAHundredOnTheNumberIsMilliseconds) {
    EXPECT_EQ(Lasts(100), 100);
    EXPECT_EQ(Lasts(101), 101);
    EXPECT_EQ(Lasts(32'767), 32'767);
}

TEST_F(PauseIntended, SecondsAreMultipliedIn16Bits) {
    EXPECT_EQ(Raises(33), 6);
    EXPECT_EQ(Raises(99), 6);
    EXPECT_EQ(Rounds(), 0u);
}

TEST_F(PauseIntended, AWaitAcrossTheWrapLastsUntilTheTicksComeRoundAgain) {
    desktop.clock.SetTickCount(0x7FFFFFFF - 250'000);
    // In the first round the ticks pass the end and turn negative.
    desktop.Post([this] {
        desktop.Advance(300'000);
        desktop.clock.msPerReading = 100'000;
    });
    const std::int64_t ms = Lasts(1);
    EXPECT_GT(ms, (std::int64_t{1} << 32) - 300'000);
    EXPECT_LE(ms, (std::int64_t{1} << 32) + 300'000);
}

class LoadApp : public Utility {
protected:
    LoadApp() {
        desktop.programs.installed = {u"C:\\Apps\\tool.exe"};
        desktop.windows.windows[7] = {.title = u"Running Tool"};
        desktop.windows.onAsk = [this](const auto& question) {
            boxes.push_back(question);
            return 1;
        };
    }

    std::int32_t Load(TextView path, TextView prog, TextView parms, std::int16_t mode, TextView name) {
        return utility.KWO_LoadApp(path, prog, parms, mode, name);
    }
    Lines Started() const { return desktop.log.Starting("Start"); }
    Lines Activated() const { return desktop.log.Starting("Activate"); }

    std::vector<platform::simulated::SimulatedWindowService::Question> boxes;
};

TEST_F(LoadApp, WithoutATitleAlwaysStarts) {
    EXPECT_EQ(Load(u"C:\\Apps\\", u"tool.exe", u"-a \"b c\"", 1, u""), 5001);
    EXPECT_EQ(Load(u"C:\\Apps\\", u"tool.exe", u"", -4, u""), 5002);
    EXPECT_EQ(Started(), (Lines{"Start \"C:\\Apps\\tool.exe -a \"b c\"\" 1", "Start \"C:\\Apps\\tool.exe \" -4"}));
    EXPECT_EQ(Activated(), Lines{});
    EXPECT_EQ(desktop.log.Starting("Pump"), Lines{});
    EXPECT_TRUE(boxes.empty());
}

using LoadAppIntended = LoadApp;

TEST_F(LoadAppIntended, AnActivatedInstanceGivesOneAndNoTask) {
    EXPECT_EQ(Load(u"C:\\Apps\\", u"tool.exe", u"", 1, u"Running Tool"), 1);
    EXPECT_EQ(desktop.log.Lines(), (Lines{"Activate \"Running Tool\"", "Pump"}));
}

TEST_F(LoadApp, WhatDoesNotRunIsStarted) {
    EXPECT_EQ(Load(u"C:\\Apps\\", u"tool.exe", u"", 3, u"Other"), 5001);
    EXPECT_EQ(desktop.log.Lines(), (Lines{"Activate \"Other\"", "Pump", "Start \"C:\\Apps\\tool.exe \" 3"}));
}

TEST_F(LoadApp, AProgramInAFolderWithABlankIsQuoted) {
    desktop.programs.installed = {u"C:\\My.exe", u"C:\\My Tools\\tool.exe"};
    EXPECT_EQ(Load(u"\"C:\\My Tools\\", u"tool.exe\"", u"/quiet", 1, u""), 5001);
    EXPECT_EQ(desktop.programs.started, (std::vector<Text>{u"C:\\My Tools\\tool.exe"}));
    // Without the quotation marks the system takes the first program that there is.
    EXPECT_EQ(Load(u"C:\\My Tools\\", u"tool.exe", u"/quiet", 1, u""), 5002);
    EXPECT_EQ(desktop.programs.started.back(), u"C:\\My.exe");
}

TEST_F(LoadApp, ACommandLineThatTheSystemDoesNotTakeIsRefused) {
    const Text longest(platform::Programs::kLongestCommandLine - 17, u'x');
    EXPECT_NE(Load(u"C:\\Apps\\", u"tool.exe", longest, 1, u""), 0);
    EXPECT_TRUE(boxes.empty());
    EXPECT_EQ(Load(u"C:\\Apps\\", u"tool.exe", longest + u"x", 1, u""), 0);
    EXPECT_EQ(Load(u"C:\\Apps\\", u"tool.exe", TextView(u"a\0b", 3), 1, u""), 0);
    EXPECT_EQ(boxes.size(), 2u);
}

TEST_F(LoadApp, NothingIsPutBetweenFolderAndProgram) {
    EXPECT_EQ(Load(u"C:\\Apps", u"tool.exe", u"", 1, u""), 0);
    EXPECT_EQ(Started(), (Lines{"Start \"C:\\Appstool.exe \" 1"}));
}

TEST_F(LoadApp, AFailedStartIsToldByABoxAndZero) {
    EXPECT_EQ(Load(u"C:\\No\\", u"none.exe", u"-x", 1, u""), 0);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].style & 0xFF, 48u);
    EXPECT_EQ(boxes[0].title, u"Host Application");
    // Without the companion there is no table, and no error either.
    EXPECT_EQ(boxes[0].prompt, u"Undefined Message");
}

TEST_F(LoadApp, TheBoxHasTheTablesText) {
    desktop.components.Install(u"KWOInit.KWOInitialize", [this] {
        auto companion = desktop.MakeObject();
        companion->SetMethod(u"KWO_MsgTableSize",
                             [](std::span<Variant> given) -> Variant {
                                 given[2] = std::int32_t{1930};
                                 given[3] = std::int32_t{1930};
                                 given[4] = std::int32_t{1};
                                 return true;
                             },
                             {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd", u"TextArraySize"});
        companion->SetMethod(
            u"KWO_MsgTableLoad",
            [](std::span<Variant> given) -> Variant {
                const auto index =
                    std::dynamic_pointer_cast<const platform::Int16Array>(std::get<platform::ForeignRef>(given[1]));
                auto places = std::make_shared<platform::Int16Array>(*index);
                const auto texts =
                    std::dynamic_pointer_cast<const platform::TextArray>(std::get<platform::ForeignRef>(given[2]));
                auto filled = std::make_shared<platform::TextArray>(*texts);
                filled->items.front() = u"%2 is not in %1.";
                given[1] = platform::ForeignRef(places);
                given[2] = platform::ForeignRef(filled);
                return Empty{};
            },
            {u"Language", u"IdxArray", u"TextArray"});
        return companion;
    });
    EXPECT_EQ(Load(u"C:\\No\\", u"none.exe", u"", 1, u"not running"), 0);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].prompt, u"none.exe is not in C:\\No\\.");
}

}  // namespace
}  // namespace kwo::sysinfo
