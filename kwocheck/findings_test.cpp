#include "kwocheck/findings.h"

#include <gtest/gtest.h>

#include "kwocheck/installed_fixture.h"

namespace kwocheck {
namespace {

using FindingsTest = Installed;
using Lines = std::vector<std::string>;

constexpr char kInstall[] = "Install KWOUtil: start install.cmd of the ZIP file, or the installer.";
constexpr char kAgain[] =
    "Install KWOUtil again: start install.cmd of the ZIP file. After an installer, type: msiexec /famus "
    "KWOUtil-4.5.0-x64.msi";
constexpr char kBoth[] = " [KWOUtil.KWOTimer] [KWOUtil.KWORegistry]";

TEST_F(FindingsTest, AnInstalledComponentHasNone) {
    EXPECT_EQ(Found(), Lines{});
}

TEST_F(FindingsTest, NothingIsRegistered) {
    system.registry.clear();
    system.creation = {Creation::Result::kNoName, 0x800401F3, u"Invalid class string"};

    EXPECT_EQ(Found(), (Lines{std::string("problem 64: KWOUtil.dll is not registered. > ") + kInstall + kBoth,
                              std::string("problem 64: KWOInit.dll is not registered. > ") + kInstall +
                                  " [KWOInit.KWOInitialize]"}));
}

TEST_F(FindingsTest, CopiesBesideTheProgramCanBeRegistered) {
    system.registry.clear();
    system.files[u"C:\\tools\\KWOUtil.dll"] = Ours(Bitness::k64);

    EXPECT_EQ(Found()[0], std::string("problem 64: KWOUtil.dll is not registered. > ") + kInstall +
                              " Or type: regsvr32 /n /i:user \"C:\\tools\\KWOUtil.dll\"" + kBoth);
    system.here.isElevated = true;
    EXPECT_EQ(Found()[0], std::string("problem 64: KWOUtil.dll is not registered. > ") + kInstall +
                              " Or type: regsvr32 \"C:\\tools\\KWOUtil.dll\"" + kBoth);
}

TEST_F(FindingsTest, OnlyTheOtherBitnessIsRegistered) {
    system.here.own = Bitness::k32;
    system.Unregister(Bitness::k32);

    const Lines found = Found();

    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0],
              std::string("problem 32: Only the 64-bit KWOUtil.dll is registered, so 32-bit programs cannot use "
                          "it. > ") +
                  kInstall + kBoth);
}

TEST_F(FindingsTest, Only32BitsAreRegistered) {
    system.Unregister(Bitness::k64);

    EXPECT_TRUE(
        Found()[0].starts_with("problem 64: Only the 32-bit KWOUtil.dll is registered, so 64-bit programs cannot use "
                               "it. > "))
        << Found()[0];
}

TEST_F(FindingsTest, TypeLibrariesThatMayNotBeReadAreOneFinding) {
    for (const KnownLibrary& library : libraries)
        system.Forbid(Scope::kMachine, Bitness::k64, RecordedSystem::TypeLibraryKey(library, Bitness::k64));

    EXPECT_EQ(Found().size(), 1u);
}

TEST_F(FindingsTest, ANameThatMayNotBeReadDoesNotMatterWithoutTheClass) {
    system.registry.clear();
    system.Forbid(Scope::kMachine, Bitness::k64, u"KWOUtil.KWOTimer\\CLSID");

    EXPECT_EQ(Found().size(), 2u);
}

TEST_F(FindingsTest, OnlyTheOwnBitnessIsRegistered) {
    system.Unregister(Bitness::k32);

    const Lines found = Found();

    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0],
              std::string("remark 32: Only the 64-bit KWOUtil.dll is registered, so 32-bit programs cannot use "
                          "it. > If you need it in such programs: ") +
                  kAgain + kBoth);
}

class UserOnly : public Installed {
protected:
    UserOnly() {
        system.registry.clear();
        for (const KnownLibrary& library : libraries)
            system.Register(library, Scope::kUser, Bitness::k64, Dll(library, Bitness::k64));
        system.here.isWindows64 = false;  // one view is enough
    }
};

TEST_F(UserOnly, IsFine) {
    EXPECT_EQ(Found(), Lines{});
}

TEST_F(UserOnly, IsNotFoundByAnAdministrator) {
    system.here.isElevated = true;

    EXPECT_EQ(
        Found()[0],
        std::string("problem 64: KWOUtil.dll is registered for you alone. Programs that run as administrator, as this "
                    "one does, find only what is registered for everybody. > Start the program without an "
                    "administrator's rights. Or: Open the command prompt with \"Run as administrator\""
                    ", change to the folder of the ZIP file, and type: .\\install.cmd /machine") +
            kBoth);
}

TEST_F(FindingsTest, TheFileIsGone) {
    system.files.erase(Dll(Component(), Bitness::k64));

    EXPECT_EQ(Found(),
              (Lines{std::string("problem 64: The file \"C:\\KWO\\x64\\KWOUtil.dll\", registered for everybody, does "
                                 "not exist. > ") +
                     kAgain + kBoth}));
}

TEST_F(FindingsTest, TheFileMayNotBeRead) {
    ComponentFile().state = FileFacts::State::kDenied;

    EXPECT_EQ(Found(),
              (Lines{std::string("problem 64: You may not read the file \"C:\\KWO\\x64\\KWOUtil.dll\", registered for "
                                 "everybody, so your programs cannot load it. > Ask the administrator of this "
                                 "computer to let you read it, or install again.") +
                     kBoth}));
}

TEST_F(FindingsTest, AForeignFileHasTheClass) {
    system.Put(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Timer()), u"C:\\Other\\other.dll");
    system.files[u"C:\\Other\\other.dll"] = {FileFacts::State::kThere, Bitness::k64, u"Other Suite", u"1.0.0.0", false};

    const Lines found = Found();

    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found[0], std::string("problem 64: The file \"C:\\Other\\other.dll\", registered for everybody, is not "
                                    "KWOUtil.dll of KWOUtil, but belongs to \"Other Suite\". > Remove the program that "
                                    "registered it, if you do not need it. ") +
                            kAgain + " [KWOUtil.KWOTimer]");
}

TEST_F(FindingsTest, AForeignFileWithoutAProductIsNamedToo) {
    ComponentFile().product.clear();

    EXPECT_TRUE(
        Found()[0].starts_with("problem 64: The file \"C:\\KWO\\x64\\KWOUtil.dll\", registered for everybody, is not "
                               "KWOUtil.dll of KWOUtil. > "))
        << Found()[0];
}

TEST_F(FindingsTest, AForeignClassHasTheName) {
    system.Put(Scope::kUser, Bitness::k64, u"KWOUtil.KWOTimer\\CLSID", u"{C001}");

    EXPECT_EQ(Found(),
              (Lines{std::string("problem 64: The name belongs to a class of another vendor, {C001}, registered for "
                                 "you. > Remove the program that uses this name, if you do not need it. ") +
                     kAgain + " [KWOUtil.KWOTimer]"}));
}

TEST_F(FindingsTest, AForeignClassHasTheNameAndOursIsNotRegistered) {
    system.registry.clear();
    system.Put(Scope::kMachine, Bitness::k64, u"KWOUtil.KWOTimer\\CLSID", u"{C001}");

    const Lines found = Found();

    ASSERT_EQ(found.size(), 3u);
    EXPECT_TRUE(found[0].starts_with("problem 64: KWOUtil.dll is not registered. > ")) << found[0];
    EXPECT_TRUE(
        found[1].starts_with("problem 64: The name belongs to a class of another vendor, {C001}, registered for "
                             "everybody. > "))
        << found[1];
}

TEST_F(FindingsTest, IdentifiersAreTheSameInSmallLetters) {
    system.Put(Scope::kMachine, Bitness::k64, u"KWOUtil.KWOTimer\\CLSID", u"{a001}");

    EXPECT_EQ(Found(), Lines{});
}

TEST_F(FindingsTest, TheNameIsMissing) {
    EraseForAll(Bitness::k64, u"KWOUtil.KWOTimer\\CLSID");
    system.creation = {Creation::Result::kNoName, 0x800401F3, {}};

    EXPECT_EQ(Found()[0],
              std::string("problem 64: The class is registered, but its name is not, so CreateObject does not find "
                          "it. > ") +
                  kAgain + " [KWOUtil.KWOTimer]");
}

TEST_F(FindingsTest, KeysThatMayNotBeRead) {
    system.Forbid(Scope::kMachine, Bitness::k64, u"KWOUtil.KWOTimer\\CLSID");
    system.Forbid(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Component().classes[1]));
    system.Forbid(Scope::kMachine, Bitness::k64, RecordedSystem::TypeLibraryKey(Companion(), Bitness::k64));
    const std::string ask = " > Ask the administrator of this computer to let you read it, or install again.";

    EXPECT_EQ(Found(),
              (Lines{"problem 64: You may not read the registry key of the name." + ask + " [KWOUtil.KWOTimer]",
                     "problem 64: You may not read the registry key of the class." + ask + " [KWOUtil.KWORegistry]",
                     "problem 64: You may not read the registry key of the type library." + ask}));
}

TEST_F(FindingsTest, AnOlderVersion) {
    ComponentFile().version = u"4.4.12.0";

    EXPECT_EQ(Found(),
              (Lines{std::string(
                         "problem 64: The file \"C:\\KWO\\x64\\KWOUtil.dll\", registered for everybody, has the "
                         "older version 4.4.12.0, this check is of 4.5.0.0. > Close all programs that use KWOUtil. ") +
                     kInstall + kBoth}));
}

TEST_F(FindingsTest, ANewerVersion) {
    ComponentFile().version = u"4.10.0.0";

    EXPECT_EQ(Found(),
              (Lines{std::string("remark 64: The file \"C:\\KWO\\x64\\KWOUtil.dll\", registered for everybody, has the "
                                 "newer version 4.10.0.0, this check is of 4.5.0.0. > Use the kwocheck.exe of that "
                                 "version.") +
                     kBoth}));
}

TEST_F(FindingsTest, AVersionThatIsNoneCountsAsOlder) {
    ComponentFile().version = u"";

    EXPECT_NE(Found()[0].find("has the older version "), std::string::npos);
}

TEST_F(FindingsTest, AVersionOfOtherCharactersIsComparedAllTheSame) {
    ComponentFile().version = u"4x4";
    EXPECT_NE(Found()[0].find("has the older version 4x4"), std::string::npos);
    ComponentFile().version = u"123456789.0";
    EXPECT_NE(Found()[0].find("has the newer version 123456789.0"), std::string::npos);
}

TEST_F(FindingsTest, TheFileHasTheOtherBitness) {
    ComponentFile().bitness = Bitness::k32;

    EXPECT_EQ(Found(),
              (Lines{std::string("problem 64: The file \"C:\\KWO\\x64\\KWOUtil.dll\", registered for everybody, is "
                                 "32-bit, so 64-bit programs cannot load it. > ") +
                     kAgain + kBoth}));
}

TEST_F(FindingsTest, TheFileIsDamaged) {
    ComponentFile().bitness = std::nullopt;

    EXPECT_NE(Found()[0].find("is damaged, so 64-bit programs cannot load it"), std::string::npos);
}

TEST_F(FindingsTest, AnotherThreadingModel) {
    system.Put(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Timer()), u"Both", u"ThreadingModel");
    EraseForAll(Bitness::k32, RecordedSystem::ServerKey(Timer()), u"ThreadingModel");

    const Lines found = Found();

    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0],
              std::string("problem 64: The class is registered with the wrong threading model: \"Both\" instead of "
                          "\"Apartment\". So Windows may create its objects on another thread than the program's. > ") +
                  kAgain + " [KWOUtil.KWOTimer]");
    EXPECT_NE(found[1].find("problem 32: The class is registered with the wrong threading model: none instead"),
              std::string::npos);
}

TEST_F(FindingsTest, TheThreadingModelOfAFileThatIsNoneOfOursDoesNotMatter) {
    system.Put(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Timer()), u"Both", u"ThreadingModel");
    ComponentFile().product = u"Other";
    EXPECT_EQ(Found().size(), 1u);
    ComponentFile().state = FileFacts::State::kDenied;
    EXPECT_EQ(Found().size(), 1u);
    ComponentFile().state = FileFacts::State::kMissing;
    EXPECT_EQ(Found().size(), 1u);
}

TEST_F(FindingsTest, AFileFromTheInternet) {
    ComponentFile().isBlocked = true;

    EXPECT_EQ(Found(),
              (Lines{std::string("remark 64: Windows has marked the file \"C:\\KWO\\x64\\KWOUtil.dll\", registered for "
                                 "everybody, as one that comes from the Internet. Some programs and rules refuse such "
                                 "files. > Open the file's properties and choose \"Unblock\", or unblock the ZIP file, "
                                 "unpack it again, and start install.cmd again.") +
                     kBoth}));
}

class TwoCopies : public Installed {
protected:
    TwoCopies() {
        for (const KnownLibrary& library : libraries)
            system.Register(library, Scope::kUser, Bitness::k64, u"C:\\Mine\\" + library.FileName());
        system.files[u"C:\\Mine\\KWOUtil.dll"] = Ours(Bitness::k64);
        system.files[u"C:\\Mine\\KWOInit.dll"] = Ours(Bitness::k64);
        system.texts[u"C:\\Mine\\KWOInit.nls"] = "[KWOUtil]\n1900 = text\n";
    }
    /// What the first remark says of the other copy.
    std::string State() {
        const Lines found = Found();
        if (found.empty()) return "nothing found";
        const auto begin = found[0].find('(');
        return found[0].substr(begin, found[0].find(')') - begin + 1);
    }
};

TEST_F(TwoCopies, TheHiddenOneIsNamed) {
    EXPECT_EQ(Found()[0],
              std::string("remark 64: Another copy is registered for everybody: \"C:\\KWO\\x64\\KWOUtil.dll\" "
                          "(version 4.5.0.0). Your programs use yours; programs that run as administrator use that "
                          "one. > Keep one of them. To remove the other, start uninstall.cmd in its folder, or "
                          "remove KWOUtil in the settings of Windows, under Apps.") +
                  kBoth);
    EXPECT_EQ(Found().size(), 2u);
}

TEST_F(TwoCopies, StateOfTheHiddenOne) {
    ComponentFile().version = u"4.4.0.0";
    EXPECT_EQ(State(), "(version 4.4.0.0)");
    ComponentFile().product = u"Other";
    EXPECT_EQ(State(), "(not of KWOUtil)");
    ComponentFile().state = FileFacts::State::kMissing;
    EXPECT_EQ(State(), "(the file does not exist)");
}

TEST_F(TwoCopies, AnAdministratorsProgramsSeeOne) {
    system.here.isElevated = true;

    EXPECT_EQ(Found(), Lines{});
}

TEST_F(TwoCopies, TheSameFileTwiceIsOneCopy) {
    for (const KnownLibrary& library : libraries)
        system.Register(library, Scope::kUser, Bitness::k64, u"c:\\kwo\\X64\\" + library.FileName());
    for (const KnownLibrary& library : libraries)
        system.files[u"c:\\kwo\\X64\\" + library.FileName()] = Ours(Bitness::k64);
    system.texts[u"c:\\kwo\\X64\\KWOInit.nls"] = "[KWOUtil]\n1900 = text\n";

    EXPECT_EQ(Found(), Lines{});
}

TEST_F(TwoCopies, TheSameFileWrittenInTwoWaysIsOneCopy) {
    for (const KnownLibrary& library : libraries) {
        const Text quoted = u'"' + Dll(library, Bitness::k64) + u'"';
        system.Register(library, Scope::kUser, Bitness::k64, quoted);
        system.files[quoted] = Ours(Bitness::k64);
        system.files[quoted].path = Dll(library, Bitness::k64);
    }

    EXPECT_EQ(Found(), Lines{});
}

TEST_F(TwoCopies, AHiddenOneThatMayNotBeReadIsLeftAlone) {
    for (const KnownLibrary& library : libraries)
        for (const KnownClass& one : library.classes)
            system.Forbid(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(one));

    EXPECT_EQ(Found(), Lines{});
}

TEST_F(FindingsTest, CreatingFailsForAReasonThatIsKnown) {
    const struct {
        std::uint32_t code;
        const char* meaning;
    } rows[] = {
        {0x80040154, "Windows does not find the class (0x80040154)"},
        {0x8007007E, "Windows cannot load the file, or a file that it needs (0x8007007E)"},
        {0x800700C1, "the file is damaged, or of the other bitness (0x800700C1)"},
        {0x80070005, "this user may not use the file (0x80070005)"},
        {0x8007000E, "there is not enough memory (0x8007000E)"},
        {0x800700E1, "a virus scanner holds the file back (0x800700E1)"},
        {0x800700E2, "a virus scanner has removed the file (0x800700E2)"},
        {0x800704EC, "a rule of this computer forbids to load the file (0x800704EC)"},
        {0x800711C7,
         "a rule of this computer, or Smart App Control of Windows 11, forbids to load the file (0x800711C7)"},
        {0x80070241,
         "a rule of this computer, or Smart App Control of Windows 11, forbids to load files without a signature "
         "(0x80070241)"},
        {0x8007045A, "the file, or one that it needs, cannot start in the program (0x8007045A)"},
        {0x80040111, "the file does not have this class (0x80040111)"},
        {0x80004005, "0x80004005, said the system"},
    };
    for (const auto& row : rows) {
        system.creation = {Creation::Result::kNoObject, row.code, u"said the system"};

        const Lines found = Found();

        ASSERT_EQ(found.size(), 1u) << row.meaning;
        EXPECT_EQ(
            found[0].find(std::string("problem 64: It is registered, but cannot be created: ") + row.meaning + ". > "),
            0u)
            << found[0];
        EXPECT_NE(found[0].find("[KWOUtil.KWOTimer] [KWOUtil.KWORegistry] [KWOInit.KWOInitialize]"), std::string::npos);
    }
}

TEST_F(FindingsTest, ADamagedFileIsInstalledAgain) {
    system.creation = {Creation::Result::kNoObject, 0x800700C1, {}};

    EXPECT_NE(Found()[0].find(std::string(" > ") + kAgain + " ["), std::string::npos) << Found()[0];
}

TEST_F(FindingsTest, TheInstallerOf32BitWindowsHasAnotherName) {
    system.here.isWindows64 = false;
    system.here.own = Bitness::k32;
    system.files.erase(Dll(Component(), Bitness::k32));

    EXPECT_NE(Found()[0].find("type: msiexec /famus KWOUtil-4.5.0-x86.msi ["), std::string::npos) << Found()[0];
}

TEST_F(FindingsTest, SmartAppControlAllowsNoSingleFile) {
    system.creation = {Creation::Result::kNoObject, 0x800711C7, {}};

    EXPECT_NE(
        Found()[0].find(" > Ask the administrator of this computer to allow KWOUtil.dll and KWOInit.dll. Smart App "
                        "Control allows no single files;"),
        std::string::npos)
        << Found()[0];
}

TEST_F(FindingsTest, AMemberFails) {
    system.creation = {Creation::Result::kNoAnswer, 0x800A005B, {}};

    EXPECT_EQ(Found(), (Lines{std::string("problem 64: An object can be created, but calling a member of it fails: "
                                          "0x800A005B. > ") +
                              kAgain + kBoth + " [KWOInit.KWOInitialize]"}));
}

TEST_F(FindingsTest, AFailedCreationThatIsExplainedIsNotSaidTwice) {
    system.creation = {Creation::Result::kNoObject, 0x8007007E, {}};
    system.files.clear();

    for (const std::string& line : Found())
        EXPECT_EQ(line.find("cannot be created:"), std::string::npos) << line;
}

TEST_F(FindingsTest, TheTypeLibraryIsNotRegistered) {
    EraseForAll(Bitness::k64, RecordedSystem::TypeLibraryKey(Component(), Bitness::k64));

    EXPECT_EQ(Found(),
              (Lines{std::string("problem 64: The type library of KWOUtil.dll is not registered. Editors do not "
                                 "complete names, and calls between threads fail. > ") +
                     kAgain}));
}

TEST_F(FindingsTest, AnotherVersionOfTheTypeLibraryIsRegistered) {
    system.Put(Scope::kUser, Bitness::k64, RecordedSystem::TypeLibraryKey(Component(), u"4.4", Bitness::k64),
               u"D:\\old\\KWOUtil.dll");
    system.Put(Scope::kMachine, Bitness::k32, RecordedSystem::TypeLibraryKey(Companion(), u"2.0", Bitness::k32),
               u"D:\\new\\KWOInit.dll");
    system.files[u"D:\\new\\KWOInit.dll"] = Ours(Bitness::k32);
    const std::string step =
        " > Remove that version of KWOUtil: start its uninstall.cmd, or remove it in the settings of Windows, under "
        "Apps.";

    EXPECT_EQ(Found(), (Lines{"remark 64: The type library of KWOUtil.dll is registered in version 4.4, too, for you: "
                              "\"D:\\old\\KWOUtil.dll\", which does not exist." +
                                  step,
                              "remark 32: The type library of KWOInit.dll is registered in version 2.0, too, for "
                              "everybody: \"D:\\new\\KWOInit.dll\"." +
                                  step}));
}

TEST_F(FindingsTest, AnotherVersionOfTheTypeLibraryThatMayNotBeRead) {
    system.Forbid(Scope::kMachine, Bitness::k64, RecordedSystem::TypeLibraryKey(Component(), u"4.4", Bitness::k64));

    ASSERT_EQ(Found().size(), 1u);
    EXPECT_EQ(Found()[0].find("remark 64: The type library of KWOUtil.dll is registered in version 4.4, too, for "
                              "everybody. > Remove"),
              0u)
        << Found()[0];
}

TEST_F(FindingsTest, AVersionThatTheseProgramsDoNotSeeDoesNotMatter) {
    system.Put(Scope::kMachine, Bitness::k64, RecordedSystem::TypeLibraryKey(Component(), u"4.4", Bitness::k32),
               u"D:\\a");

    EXPECT_EQ(Found(), Lines{});
}

TEST_F(FindingsTest, TheTypeLibraryLeadsElsewhere) {
    const Text elsewhere = u"D:\\old\\KWOUtil.dll";
    system.Put(Scope::kMachine, Bitness::k64, RecordedSystem::TypeLibraryKey(Component(), Bitness::k64), elsewhere);
    const std::string where = "\"D:\\old\\KWOUtil.dll\", registered for everybody,";
    const auto said = [&] { return Found().size() == 1 ? Found()[0] : "not one finding"; };
    const std::string again = std::string(" > ") + kAgain;

    EXPECT_EQ(said(),
              "problem 64: The type library of KWOUtil.dll leads to " + where + " which does not exist." + again);
    system.files[elsewhere] = {FileFacts::State::kDenied, {}, {}, {}, false};
    EXPECT_EQ(said(),
              "problem 64: The type library of KWOUtil.dll leads to " + where + " which you may not read." + again);
    system.files[elsewhere] = {FileFacts::State::kThere, Bitness::k64, u"Other", u"1.0.0.0", false};
    EXPECT_EQ(said(),
              "problem 64: The type library of KWOUtil.dll leads to " + where + " which is not of KWOUtil." + again);
    system.files[elsewhere] = Ours(Bitness::k64, u"4.4.0.0");
    EXPECT_EQ(said(), "remark 64: The type library of KWOUtil.dll leads to another copy than the classes: " + where +
                          " version 4.4.0.0." + again);
}

TEST_F(FindingsTest, ATypeLibraryAloneThatIsWholeIsLeftAlone) {
    system.registry.clear();
    system.Put(Scope::kMachine, Bitness::k32, RecordedSystem::TypeLibraryKey(Component(), Bitness::k32),
               Dll(Component(), Bitness::k32));

    for (const std::string& line : Found())
        EXPECT_EQ(line.find("type library"), std::string::npos) << line;
}

TEST_F(FindingsTest, TheMessageFileIsMissing) {
    system.texts.erase(MessageFile(Bitness::k64));

    EXPECT_EQ(Found(),
              (Lines{"problem 64: The message file \"C:\\KWO\\x64\\KWOInit.nls\" does not exist. The component shows "
                     "its built-in English texts, and some texts read \"Undefined Message\". > Copy KWOInit.nls of "
                     "the ZIP file into that folder."}));
}

TEST_F(FindingsTest, TheMessageFileMayNotBeRead) {
    system.readState = FileFacts::State::kDenied;

    EXPECT_EQ(Found()[0],
              "problem 64: The message file \"C:\\KWO\\x64\\KWOInit.nls\" cannot be read by you. > Ask the "
              "administrator of this computer to let you read it, or install again.");
}

TEST_F(FindingsTest, EveryBadLineOfTheMessageFileIsNamedWithItsReason) {
    system.texts[MessageFile(Bitness::k64)] = "[KWOUtil]\n1900 =\nno number = x\n";
    const std::string step =
        " > Correct this line of the message file. The pages of the manual about message texts say how.";

    EXPECT_EQ(Found(), (Lines{"problem 64: C:\\KWO\\x64\\KWOInit.nls(2): there is no text after the number" + step,
                              "problem 64: C:\\KWO\\x64\\KWOInit.nls(3): there is no number" + step}));
}

TEST_F(FindingsTest, AMessageFileThatIsRefused) {
    system.texts[MessageFile(Bitness::k64)] = std::string("[KWOUtil]\nbad\n\0", 15);

    const Lines found = Found();

    ASSERT_EQ(found.size(), 1u);
    EXPECT_NE(
        found[0].find("it holds zero bytes, so it is no UTF-8 text > Save the file as UTF-8 text, or copy KWOInit.nls "
                      "of the ZIP file there."),
        std::string::npos)
        << found[0];
}

}  // namespace
}  // namespace kwocheck
