// The diagnostic build of the component, which lies where the build puts it and is not registered.

#include <fstream>
#include <sstream>

#include "com_support/module_path.h"
#include "com_test.h"
#include "dll_under_test.h"
#include "environment_variable.h"
#include "support/temporary_folder.h"

namespace kwo::com_test {
namespace {

std::wstring BuiltSources() {
    const std::wstring program = com_support::ModulePath(nullptr);
    return program.substr(0, program.rfind(L'\\')) + L"\\..\\..\\src";
}

std::wstring DiagnosticDll() {
    return BuiltSources() + L"\\com\\diagnostic\\KWOUtil.dll";
}

/// The package brings these tests along, but not the diagnostic build.
bool IsPackaged() {
    return GetFileAttributesW(BuiltSources().c_str()) == INVALID_FILE_ATTRIBUTES;
}

class TimerUse : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(LetTheDllGo()) << "an earlier test still holds the DLL"; }

    static ComPtr<IDispatch> MakeTimer(const Library& library) {
        ComPtr<IClassFactory> factory;
        ComPtr<IDispatch> timer;
        const CLSID id = ClassIdIn(DllPath(), L"KWOTimer");
        EXPECT_EQ(Hex(library.GetClassObject(id, IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
        EXPECT_EQ(Hex(factory->CreateInstance(nullptr, IID_IDispatch, timer.OutVoid())), Hex(S_OK));
        return timer;
    }
    /// Uses a timer of the DLL, which goes then.
    static void UseATimer(const std::wstring& dll) {
        const Library library(dll);
        ASSERT_TRUE(library) << Narrow(dll);
        const ComPtr<IDispatch> timer = MakeTimer(library);
        EXPECT_EQ(Hex(Let(timer.Get(), L"Interval", 250).status), Hex(S_OK));
        EXPECT_EQ(Get(timer.Get(), L"Interval").result.lVal, 250);
        EXPECT_EQ(Hex(Call(timer.Get(), L"AddAlarm", {Var::Date(1e300), 1}).status), Hex(DISP_E_EXCEPTION));
    }
    /// What the logs in the folder say; empty if there is none.
    std::string Logs() const {
        std::ostringstream text;
        WIN32_FIND_DATAW entry;
        const HANDLE listing = FindFirstFileW((mFolder.Path() + L"\\*.log").c_str(), &entry);
        if (listing == INVALID_HANDLE_VALUE) return {};
        do
            text << std::ifstream(Narrow(mFolder.Path() + L"\\" + entry.cFileName), std::ios::binary).rdbuf();
        while (FindNextFileW(listing, &entry));
        FindClose(listing);
        return text.str();
    }

    const test_support::TemporaryFolder mFolder;
};

class DiagnosticBuild : public TimerUse {
protected:
    void SetUp() override {
        if (IsPackaged()) GTEST_SKIP() << "the package has no diagnostic build";
        TimerUse::SetUp();
    }
};
using UsualBuild = TimerUse;

TEST_F(DiagnosticBuild, LogsEachCallIntoTheFolderOfTheVariable) {
    const EnvironmentVariable folder(L"KWO_TRACE_FOLDER", mFolder.Path());

    UseATimer(DiagnosticDll());

    const std::string logs = Logs();
    std::size_t at = 0;
    for (const char* const line :
         {"Trace Log started for ", "Push KWOTimer.Interval (Let)", "Pop  KWOTimer.Interval (Let)",
          "Push KWOTimer.Interval (Get)", "Pop  KWOTimer.Interval (Get)", "Push KWOTimer.AddAlarm",
          "Pop  KWOTimer.AddAlarm"}) {
        at = logs.find(line, at);
        ASSERT_NE(at, std::string::npos) << line << " is missing or misplaced in:\n" << logs;
    }
}

TEST_F(DiagnosticBuild, ASecondLogLeavesTheFirstAsItIs) {
    const EnvironmentVariable folder(L"KWO_TRACE_FOLDER", mFolder.Path());

    UseATimer(DiagnosticDll());
    UseATimer(DiagnosticDll());

    const std::string logs = Logs();
    const std::size_t first = logs.find("Trace Log started for ");
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(logs.find("Trace Log started for ", first + 1), std::string::npos);
}

TEST_F(DiagnosticBuild, WorksWithoutALogIfTheVariableIsMissing) {
    UseATimer(DiagnosticDll());

    EXPECT_EQ(Logs(), "");
}

TEST_F(DiagnosticBuild, WorksWithoutALogIfThereIsNoSuchFolder) {
    const EnvironmentVariable folder(L"KWO_TRACE_FOLDER", mFolder.Path() + L"\\missing");

    UseATimer(DiagnosticDll());

    EXPECT_EQ(Logs(), "");
}

TEST_F(UsualBuild, LogsNothing) {
    const EnvironmentVariable folder(L"KWO_TRACE_FOLDER", mFolder.Path());

    UseATimer(DllPath());

    EXPECT_EQ(Logs(), "");
}

}  // namespace
}  // namespace kwo::com_test
