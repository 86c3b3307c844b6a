#include "kwocheck/report.h"

#include <gtest/gtest.h>

#include "kwocheck/installed_fixture.h"

namespace kwocheck {
namespace {

class ReportTest : public Installed {
protected:
    std::string Report() {
        const Facts facts = Gathered();
        return Plain(ReportOf(facts, FindingsOf(facts)));
    }
    /// The line that begins like this, blanks in front left out; without its end.
    std::string LineOf(const std::string& begin) {
        const std::string report = Report();
        const auto found = report.find("  " + begin);
        if (found == std::string::npos) return "there is none";
        return report.substr(found + 2, report.find("\r\n", found) - found - 2);
    }
};

TEST_F(ReportTest, AnInstalledComponent) {
    libraries[0].classes.pop_back();
    EXPECT_EQ(
        Report(),
        "kwocheck 4.5.0.0, 64-bit, on Windows 10.0.19045 (64-bit)\r\n"
        "\r\n"
        "64-bit programs\r\n"
        "  KWOUtil.KWOTimer        works; registered for everybody: C:\\KWO\\x64\\KWOUtil.dll (4.5.0.0, 64-bit)\r\n"
        "  type library 4.5        registered for everybody: C:\\KWO\\x64\\KWOUtil.dll (4.5.0.0, 64-bit)\r\n"
        "  KWOInit.KWOInitialize   works; registered for everybody: C:\\KWO\\x64\\KWOInit.dll (4.5.0.0, 64-bit)\r\n"
        "  type library 1.0        registered for everybody: C:\\KWO\\x64\\KWOInit.dll (4.5.0.0, 64-bit)\r\n"
        "  message file            C:\\KWO\\x64\\KWOInit.nls (no problems)\r\n"
        "\r\n"
        "32-bit programs (what the registry says; nothing was created)\r\n"
        "  KWOUtil.KWOTimer        registered for everybody: C:\\KWO\\x86\\KWOUtil.dll (4.5.0.0, 32-bit)\r\n"
        "  type library 4.5        registered for everybody: C:\\KWO\\x86\\KWOUtil.dll (4.5.0.0, 32-bit)\r\n"
        "  KWOInit.KWOInitialize   registered for everybody: C:\\KWO\\x86\\KWOInit.dll (4.5.0.0, 32-bit)\r\n"
        "  type library 1.0        registered for everybody: C:\\KWO\\x86\\KWOInit.dll (4.5.0.0, 32-bit)\r\n"
        "  message file            C:\\KWO\\x86\\KWOInit.nls (no problems)\r\n"
        "\r\n"
        "0 problems, 0 remarks\r\n");
}

TEST_F(ReportTest, ProblemsStandBeforeRemarks) {
    ComponentFile().isBlocked = true;
    system.texts.erase(MessageFile(Bitness::k32));

    const std::string report = Report();

    EXPECT_LT(report.find("Problem (32-bit programs): The message file"),
              report.find("Remark (64-bit programs): Windows has marked"));
    EXPECT_NE(report.find("  Classes: KWOUtil.KWOTimer KWOUtil.KWORegistry\r\n  Next step: Open the file's properties"),
              std::string::npos);
    EXPECT_TRUE(report.ends_with("\r\n\r\n1 problem, 1 remark\r\n"));
}

TEST_F(ReportTest, HeadOfA32BitAdministrator) {
    system.here.own = Bitness::k32;
    system.here.isWindows64 = false;
    system.here.isElevated = true;

    EXPECT_TRUE(Report().starts_with("kwocheck 4.5.0.0, 32-bit, on Windows 10.0.19045 (32-bit), as administrator\r\n"));
}

TEST_F(ReportTest, EntriesThatDoNotCountStandInBrackets) {
    system.Put(Scope::kUser, Bitness::k64, RecordedSystem::ServerKey(Timer()), u"C:\\Mine\\KWOUtil.dll");

    EXPECT_NE(
        Report().find("KWOUtil.KWOTimer        works; registered for you: C:\\Mine\\KWOUtil.dll (does not exist)\r\n"
                      "                          [also registered for everybody: C:\\KWO\\x64\\KWOUtil.dll "),
        std::string::npos)
        << Report();
}

TEST_F(ReportTest, BracketsAreClosed) {
    system.Put(Scope::kUser, Bitness::k64, RecordedSystem::ServerKey(Timer()), u"C:\\Mine\\KWOUtil.dll");

    EXPECT_NE(Report().find("KWOUtil.dll (4.5.0.0, 64-bit)]\r\n"), std::string::npos) << Report();
}

TEST_F(ReportTest, StatesOfAFile) {
    ComponentFile().state = FileFacts::State::kDenied;
    EXPECT_NE(LineOf("KWOUtil.KWOTimer").find("KWOUtil.dll (cannot be read)"), std::string::npos);
    ComponentFile() = {FileFacts::State::kThere, std::nullopt, u"KWOUtil", u"", true};
    EXPECT_NE(LineOf("KWOUtil.KWOTimer").find("KWOUtil.dll (no version, no DLL, from the Internet)"),
              std::string::npos);
    system.Forbid(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Timer()));
    EXPECT_NE(LineOf("KWOUtil.KWOTimer").find("registered for everybody, but you may not read it"), std::string::npos);
    system.registry.clear();
    EXPECT_NE(LineOf("KWOUtil.KWOTimer").find("works; not registered"), std::string::npos);
    EXPECT_NE(LineOf("type library").find(" not registered"), std::string::npos);
}

TEST_F(ReportTest, HowFarACreationWent) {
    system.creation = {Creation::Result::kNoName, 0x800401F3, {}};
    EXPECT_NE(LineOf("KWOUtil.KWOTimer").find("is not found by its name (0x800401F3); "), std::string::npos);
    system.creation.result = Creation::Result::kNoObject;
    EXPECT_NE(LineOf("KWOUtil.KWOTimer").find("cannot be created (0x800401F3); "), std::string::npos);
    system.creation.result = Creation::Result::kNoAnswer;
    EXPECT_NE(LineOf("KWOUtil.KWOTimer").find("was created, but does not answer (0x800401F3); "), std::string::npos);
}

TEST_F(ReportTest, StatesOfTheMessageFile) {
    Text path = MessageFile(Bitness::k64);
    system.texts[path] = "[KWOUtil]\nbad\nbad\n";
    EXPECT_NE(LineOf("message file").find("KWOInit.nls (problems: 2)"), std::string::npos);
    system.texts[path] = "\xFF\xFE";
    EXPECT_NE(LineOf("message file").find("KWOInit.nls (refused)"), std::string::npos);
    system.readState = FileFacts::State::kDenied;
    EXPECT_NE(LineOf("message file").find("KWOInit.nls (cannot be read)"), std::string::npos);
    system.texts.clear();
    EXPECT_NE(LineOf("message file").find("KWOInit.nls (does not exist)"), std::string::npos);
}

TEST_F(ReportTest, LongNamesKeepABlank) {
    libraries[0].classes[0].name = u"KWOWithAVeryLongNameIndeed";

    EXPECT_NE(Report().find("  KWOUtil.KWOWithAVeryLongNameIndeed works; "), std::string::npos);
}

TEST_F(ReportTest, ExitCodes) {
    EXPECT_EQ(ExitCodeOf(FindingsOf(Gathered())), ExitCode::kGood);
    ComponentFile().isBlocked = true;
    EXPECT_EQ(ExitCodeOf(FindingsOf(Gathered())), ExitCode::kGood);
    ComponentFile().bitness = std::nullopt;
    EXPECT_EQ(ExitCodeOf(FindingsOf(Gathered())), ExitCode::kProblems);
}

TEST(MessageFileReport, ProblemsAndRemarks) {
    const MessageFileFacts file{
        u"x.nls", FileFacts::State::kThere, false, {u"x.nls(2): bad"}, {u"x.nls: none", u"x.nls: two"}};

    EXPECT_EQ(Plain(ReportOf(file)),
              "x.nls(2): bad\r\nRemark: x.nls: none\r\nRemark: x.nls: two\r\n1 problem, 2 remarks\r\n");
    EXPECT_EQ(ExitCodeOf(file), ExitCode::kProblems);
}

TEST(MessageFileReport, RemarksAloneAreGood) {
    const MessageFileFacts file{u"x.nls", FileFacts::State::kThere, false, {}, {u"x.nls: none"}};

    EXPECT_EQ(Plain(ReportOf(file)), "Remark: x.nls: none\r\n0 problems, 1 remark\r\n");
    EXPECT_EQ(ExitCodeOf(file), ExitCode::kGood);
}

TEST(MessageFileReport, AFileThatCannotBeRead) {
    MessageFileFacts file{u"x.nls", FileFacts::State::kMissing, false, {}, {}};
    EXPECT_EQ(Plain(ReportOf(file)), "x.nls: there is no such file\r\n");
    EXPECT_EQ(ExitCodeOf(file), ExitCode::kCannotCheck);
    file.state = FileFacts::State::kDenied;
    EXPECT_EQ(Plain(ReportOf(file)), "x.nls: it cannot be read\r\n");
}

}  // namespace
}  // namespace kwocheck
