#include <algorithm>
#include <cstdio>
#include <optional>

#include "box_answerer.h"
#include "com_support/module_path.h"
#include "com_test.h"
#include "dll_under_test.h"
#include "environment_variable.h"
#include "process_resources.h"
#include "replaced_function.h"
#include "support/foreground.h"
#include "support/temporary_folder.h"
#include "type_library_dump.h"

namespace kwo::com_test {

/// The slots of the class as early-bound clients compile them.
/// Not in an unnamed namespace: there the compiler concludes that nothing can implement it.
struct UtilitySlots : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE KWO_FindInPath(BSTR*, BSTR*) = 0;
    virtual HRESULT STDMETHODCALLTYPE KWO_CenterForm(IDispatch**, VARIANT*) = 0;
    virtual HRESULT STDMETHODCALLTYPE KWO_SetFormPosition(IDispatch**, VARIANT*, VARIANT*, VARIANT*, VARIANT*, VARIANT*,
                                                          VARIANT*) = 0;
    virtual HRESULT STDMETHODCALLTYPE KWO_LoadApp(BSTR*, BSTR*, BSTR*, short*, BSTR*, LONG*) = 0;
    virtual HRESULT STDMETHODCALLTYPE KWO_Pause(short*) = 0;
    virtual HRESULT STDMETHODCALLTYPE KWO_SystemDir(VARIANT*, BSTR*) = 0;
    virtual HRESULT STDMETHODCALLTYPE KWO_WindowsDir(VARIANT*, BSTR*) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_KWO_IsWin32(VARIANT_BOOL*) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_KWO_IsWinNT(VARIANT_BOOL*) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_KWO_WinMajorVersion(short*) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_KWO_WinMinorVersion(short*) = 0;
};

namespace {

constexpr HRESULT kOverflow = static_cast<HRESULT>(0x800A0006);

class UtilityClass : public ::testing::Test {
protected:
    void SetUp() override {
        mUtility = Create(L"KWOUtility");
        ASSERT_TRUE(mUtility);
    }
    std::wstring Find(const std::wstring& name) {
        const Outcome outcome = Call(mUtility.Get(), L"KWO_FindInPath", {name});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
        return outcome.result.Text();
    }
    ComPtr<IDispatch> mUtility;
};

class FindInPathOfFolders : public UtilityClass {
protected:
    /// `a` has the trap, `b` the file.
    void SetUp() override {
        UtilityClass::SetUp();
        mA = mFolder.MakeFolder(L"a");
        mB = mFolder.MakeFolder(L"b");
    }
    test_support::TemporaryFolder mFolder;
    std::wstring mA;
    std::wstring mB;
};

TEST_F(FindInPathOfFolders, AFileBesideTheLibraryComesFirst) {
    const EnvironmentVariable path(L"PATH", mA);
    mFolder.MakeFile(L"a\\KWOUtil.dll");

    EXPECT_EQ(Find(L"KWOUtil.dll"), DistFolder() + L"\\KWOUtil.dll");
}

TEST_F(FindInPathOfFolders, AnswersTheFirstEntryThatHasTheFile) {
    mFolder.MakeFile(L"a\\one.txt");
    mFolder.MakeFile(L"b\\one.txt");
    mFolder.MakeFile(L"b\\two.txt");
    const EnvironmentVariable path(L"PATH", mA + L";" + mB);

    EXPECT_EQ(Find(L"one.txt"), mA + L"\\one.txt");
    EXPECT_EQ(Find(L"two.txt"), mB + L"\\two.txt");
    EXPECT_EQ(Find(L"TWO.TXT"), mB + L"\\TWO.TXT");
    EXPECT_EQ(Find(L"three.txt"), L"");
}

TEST_F(FindInPathOfFolders, AnEntryThatEndsInABackslashGetsNoSecondOne) {
    mFolder.MakeFile(L"a\\one.txt");
    const EnvironmentVariable path(L"PATH", mA + L"\\;");

    EXPECT_EQ(Find(L"one.txt"), mA + L"\\one.txt");
}

TEST_F(FindInPathOfFolders, OnlyPlainFilesCount) {
    const EnvironmentVariable path(L"PATH", mA + L";" + mB);
    const struct {
        const wchar_t* name;
        DWORD attributes;
        bool found;
    } rows[] = {{L"plain.txt", FILE_ATTRIBUTE_NORMAL, true},
                {L"read only.txt", FILE_ATTRIBUTE_READONLY, true},
                {L"archive.txt", FILE_ATTRIBUTE_ARCHIVE, true},
                {L"hidden.txt", FILE_ATTRIBUTE_HIDDEN, false},
                {L"system.txt", FILE_ATTRIBUTE_SYSTEM, false},
                {L"both.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM, false}};
    for (const auto& row : rows) {
        const std::wstring file = mFolder.MakeFile(std::wstring(L"a\\") + row.name, row.attributes);
        // What the file system underneath does not keep cannot be asked of the search.
        const DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
        ASSERT_EQ(GetFileAttributesW(file.c_str()) & kept, row.attributes & kept) << Narrow(row.name);
        EXPECT_EQ(Find(row.name), row.found ? file : L"") << Narrow(row.name);
        mFolder.MakeFile(std::wstring(L"b\\") + row.name);
        EXPECT_EQ(Find(row.name), row.found ? file : mB + L"\\" + row.name) << Narrow(row.name);
    }
}

TEST_F(FindInPathOfFolders, AFolderOfTheSameNameIsPassedOver) {
    mFolder.MakeFolder(L"a\\name");
    const EnvironmentVariable path(L"PATH", mA + L";" + mB);

    EXPECT_EQ(Find(L"name"), L"");
    mFolder.MakeFile(L"b\\name");
    EXPECT_EQ(Find(L"name"), mB + L"\\name");
}

TEST_F(FindInPathOfFolders, WildcardsAndFoldersInTheNameArePassedOn) {
    mFolder.MakeFolder(L"a\\sub");
    mFolder.MakeFile(L"a\\sub\\file.dat");
    mFolder.MakeFile(L"b\\hit.log", FILE_ATTRIBUTE_NORMAL);
    mFolder.MakeFile(L"b\\a hidden.log", FILE_ATTRIBUTE_HIDDEN);
    const EnvironmentVariable path(L"PATH", mA + L";" + mB);

    EXPECT_EQ(Find(L"sub\\file.dat"), mA + L"\\sub\\file.dat");
    EXPECT_EQ(Find(L"*.log"), mB + L"\\*.log");
    EXPECT_EQ(Find(L"h?t.*"), mB + L"\\h?t.*");
    EXPECT_EQ(Find(L"*.none"), L"");
    // Folders alone are no files.
    EXPECT_EQ(Find(L"su*"), L"");
}

TEST_F(FindInPathOfFolders, AnEmptyEntryIsTheRootOfTheCurrentDrive) {
    wchar_t before[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    SetCurrentDirectoryW(mA.c_str());
    const std::wstring root = mA.substr(0, 3) + L"kwo in the root.txt";
    CloseHandle(CreateFileW(root.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    {
        const EnvironmentVariable path(L"PATH", mA + L";;" + mB);
        EXPECT_EQ(Find(L"kwo in the root.txt"), L"\\kwo in the root.txt");
    }
    {
        const EnvironmentVariable path(L"PATH", mA + L";" + mB);
        EXPECT_EQ(Find(L"kwo in the root.txt"), L"");
    }
    DeleteFileW(root.c_str());
    SetCurrentDirectoryW(before);
}

TEST_F(FindInPathOfFolders, TheLongestPathIsSearchedToItsEnd) {
    mFolder.MakeFile(L"b\\last.txt");
    std::wstring value;
    const std::wstring entry = L"C:\\no such folder;";
    // The system takes 32,767 characters at the most, the end of the text among them.
    const std::size_t longest = 32'766;
    while (value.size() + entry.size() + mB.size() + 1 <= longest)
        value += entry;
    value += std::wstring(longest - value.size() - mB.size() - 1, L'x') + L";" + mB;
    const EnvironmentVariable path(L"PATH", value);
    ASSERT_EQ(GetEnvironmentVariableW(L"PATH", nullptr, 0), longest + 1);

    EXPECT_EQ(Find(L"last.txt"), mB + L"\\last.txt");
    EXPECT_EQ(Find(L"missing.txt"), L"");
}

TEST_F(FindInPathOfFolders, WithoutAPathThereIsNothingToSearch) {
    mFolder.MakeFile(L"a\\one.txt");
    const EnvironmentVariable path(L"PATH", L"");
    EXPECT_EQ(Find(L"one.txt"), L"");
    SetEnvironmentVariableW(L"PATH", nullptr);
    EXPECT_EQ(Find(L"one.txt"), L"");
}

TEST_F(FindInPathOfFolders, NoNameIsAnError) {
    const EnvironmentVariable path(L"PATH", mA + L";<>|;\"" + mB + L"\";?:\\");
    for (const std::wstring& name :
         {std::wstring(), std::wstring(L"<>|\""), std::wstring(L"..\\..\\..\\*:*"), std::wstring(100'000, L'x'),
          std::wstring(L"a\0b", 3), std::wstring(L"\\\\no server\\no share\\x")})
        EXPECT_EQ(Find(name), L"") << name.size();
}

TEST_F(FindInPathOfFolders, ANameWithAZeroCharacterIsNotFound) {
    mFolder.MakeFile(L"a\\one.txt");
    const EnvironmentVariable path(L"PATH", mA);
    EXPECT_EQ(Find(L"one.txt"), mA + L"\\one.txt");
    EXPECT_EQ(Find(std::wstring(L"one.txt\0.bak", 12)), L"");
    EXPECT_EQ(Find(std::wstring(L"one.txt\0", 8)), L"");
}

std::vector<DWORD> theErrorModes;

HANDLE WINAPI NoteErrorMode(const wchar_t* name, WIN32_FIND_DATAW* entry) {
    theErrorModes.push_back(GetThreadErrorMode());
    return FindFirstFileW(name, entry);
}

TEST_F(FindInPathOfFolders, ADriveWithoutADiskIsNotAskedFor) {
    const EnvironmentVariable path(L"PATH", mA);
    DWORD before = 0;
    ASSERT_TRUE(SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, &before));
    theErrorModes.clear();
    const ReplacedFunction search("FindFirstFileW", &NoteErrorMode);
    Find(L"one.txt");

    ASSERT_EQ(theErrorModes.size(), 2u);
    for (const DWORD mode : theErrorModes)
        EXPECT_EQ(mode, static_cast<DWORD>(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX));
    EXPECT_EQ(GetThreadErrorMode(), static_cast<DWORD>(SEM_NOGPFAULTERRORBOX));
    SetThreadErrorMode(before, nullptr);
}

TEST_F(FindInPathOfFolders, NoSearchLeavesAHandle) {
    // So many that the system does not read the folder in one go.
    for (int i = 0; i < 300; ++i)
        mFolder.MakeFile(L"a\\" + std::wstring(50, L'x') + std::to_wstring(i) + L".txt");
    const EnvironmentVariable path(L"PATH", mA);
    Find(L"*.txt");
    const long before = HandlesInUse();
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(Find(L"*.txt"), mA + L"\\*.txt");
        EXPECT_EQ(Find(L"*.none"), L"");
    }
    EXPECT_LT(HandlesInUse(), before + 10);
}

TEST_F(UtilityClass, DirectoriesAreThoseOfTheSystem) {
    const struct {
        const wchar_t* member;
        UINT(WINAPI* function)(LPWSTR, UINT);
    } rows[] = {{L"KWO_SystemDir", GetSystemDirectoryW}, {L"KWO_WindowsDir", GetWindowsDirectoryW}};
    for (const auto& row : rows) {
        wchar_t expected[MAX_PATH];
        row.function(expected, MAX_PATH);
        const std::wstring directory = expected;
        const auto ask = [&](const std::vector<Var>& arguments) {
            return Call(mUtility.Get(), row.member, arguments).result.Text();
        };
        EXPECT_EQ(ask({}), directory);
        EXPECT_EQ(ask({Var::Missing()}), directory);
        EXPECT_EQ(ask({false}), directory);
        EXPECT_EQ(ask({Var::Null()}), directory);
        EXPECT_EQ(ask({Var()}), directory);
        EXPECT_EQ(ask({true}), directory + L"\\");
        EXPECT_EQ(ask({1}), directory + L"\\");
        EXPECT_EQ(ask({L"True"}), directory + L"\\");
        const Outcome outcome = Call(mUtility.Get(), row.member, {L"perhaps"});
        EXPECT_EQ(Hex(outcome.scode), Hex(kTypeMismatch));
        EXPECT_EQ(outcome.source, std::wstring(L"KWOUtility.") + row.member);
        Probe stranger;
        for (const Var& bad : {Var(L""), Var(static_cast<IDispatch*>(nullptr)), Var(&stranger),
                               Var::Error(DISP_E_OVERFLOW), Var::Error(static_cast<SCODE>(0x800A0005))}) {
            const Outcome refused = Call(mUtility.Get(), row.member, {bad});
            EXPECT_TRUE(FAILED(refused.status)) << bad.vt;
        }
        EXPECT_EQ(stranger.references, 0u);
    }
}

TEST_F(UtilityClass, AMissingSlashComesBackAsFalse) {
    for (const wchar_t* const member : {L"KWO_SystemDir", L"KWO_WindowsDir"}) {
        Var slash = Var::Missing();
        EXPECT_EQ(Hex(Call(mUtility.Get(), member, {Var::Ref(&slash)}).status), Hex(S_OK));
        EXPECT_EQ(slash.vt, VT_BOOL);
        EXPECT_EQ(slash.boolVal, VARIANT_FALSE);
        Var given(7);
        EXPECT_EQ(Hex(Call(mUtility.Get(), member, {Var::Ref(&given)}).status), Hex(S_OK));
        EXPECT_EQ(given.vt, VT_I4);
        EXPECT_EQ(given.lVal, 7);
    }
}

TEST_F(UtilityClass, TheVersionIsWhatTheSystemTells) {
    OSVERSIONINFOA version = {};
    version.dwOSVersionInfoSize = sizeof version;
    ASSERT_TRUE(GetVersionExA(&version));

    EXPECT_EQ(Get(mUtility.Get(), L"KWO_WinMajorVersion").result.iVal, static_cast<short>(version.dwMajorVersion));
    EXPECT_EQ(Get(mUtility.Get(), L"KWO_WinMinorVersion").result.iVal, static_cast<short>(version.dwMinorVersion));
    EXPECT_EQ(Get(mUtility.Get(), L"KWO_IsWin32").result.boolVal, VARIANT_FALSE);
    EXPECT_EQ(Get(mUtility.Get(), L"KWO_IsWinNT").result.boolVal, VARIANT_TRUE);
}

DWORD MillisecondsOf(IDispatch* utility, int seconds) {
    const DWORD before = GetTickCount();
    EXPECT_EQ(Hex(Call(utility, L"KWO_Pause", {seconds}).status), Hex(S_OK)) << seconds;
    return GetTickCount() - before;
}

/// The shortest of some pauses that should take no time: a busy machine prolongs one, but hardly each of them.
DWORD ShortestOf(IDispatch* utility, int seconds) {
    DWORD shortest = MAXDWORD;
    for (int i = 0; i < 5; ++i)
        shortest = std::min(shortest, MillisecondsOf(utility, seconds));
    return shortest;
}

TEST_F(UtilityClass, APauseIsNeverTooShort) {
    EXPECT_GE(MillisecondsOf(mUtility.Get(), 1), 1000u);
    EXPECT_GE(MillisecondsOf(mUtility.Get(), 100), 100u);
    for (const int seconds : {0, -1, -32, -33, -100, -32'768})
        EXPECT_LT(ShortestOf(mUtility.Get(), seconds), 1000u) << seconds;
}

TEST_F(UtilityClass, APauseGivesUpWhenTheProgramIsAskedToQuit) {
    PostQuitMessage(7);
    EXPECT_LT(MillisecondsOf(mUtility.Get(), 20), 10'000u);

    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(UtilityClass, From33To99SecondsAnOverflowComesBeforeAnyWait) {
    for (const int seconds : {33, 99}) {
        const DWORD before = GetTickCount();
        const Outcome outcome = Call(mUtility.Get(), L"KWO_Pause", {seconds});
        EXPECT_EQ(Hex(outcome.scode), Hex(kOverflow)) << seconds;
        EXPECT_EQ(outcome.source, L"KWOUtility.KWO_Pause");
        EXPECT_LT(GetTickCount() - before, 10'000u);
    }
}

int theTicks = 0;

void CALLBACK CountTick(HWND, UINT, UINT_PTR, DWORD) {
    ++theTicks;
}

TEST_F(UtilityClass, MessagesAreProcessedDuringAPause) {
    theTicks = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, CountTick);
    MillisecondsOf(mUtility.Get(), 300);
    KillTimer(nullptr, timer);

    EXPECT_GE(theTicks, 2);
}

/// A window of this program, which it tries to put in front of all others.
class OwnWindow {
public:
    OwnWindow() { test_support::TakeForeground(mWindow); }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;
    ~OwnWindow() { DestroyWindow(mWindow); }
    bool IsInFront() const { return GetForegroundWindow() == mWindow; }

private:
    HWND mWindow = CreateWindowExW(0, L"STATIC", L"own", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100, nullptr,
                                   nullptr, GetModuleHandleW(nullptr), nullptr);
};

/// Starts the second program, whose windows are closed at the end.
class StartOrActivate : public UtilityClass {
protected:
    void SetUp() override {
        UtilityClass::SetUp();
        mProgramFolder = com_support::ModulePath(nullptr);
        mProgramFolder.resize(mProgramFolder.rfind(L'\\') + 1);
        ASSERT_NE(GetFileAttributesW((mProgramFolder + kProgram).c_str()), INVALID_FILE_ATTRIBUTES);
        mReport = mFolder.Path() + L"\\report.txt";
        SetEnvironmentVariableW(L"KWO_REPORT", mReport.c_str());
    }
    void TearDown() override {
        SetEnvironmentVariableW(L"KWO_REPORT", nullptr);
        while (const HWND window = FindWindowW(L"KWOSecondProgram", nullptr)) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
            PostMessageW(window, WM_CLOSE, 0, 0);
            WaitForSingleObject(handle, 10'000);
            CloseHandle(handle);
        }
    }

    long Load(const std::wstring& path, const std::wstring& program, const std::wstring& parameters, short mode,
              const std::wstring& name) {
        const Outcome outcome = Call(mUtility.Get(), L"KWO_LoadApp", {path, program, parameters, Var(mode), name});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        return outcome.result.lVal;
    }
    /// Its name has a blank: quoted, as a command line wants it.
    long LoadSecond(const std::wstring& parameters, short mode = SW_SHOWNORMAL, const std::wstring& name = L"") {
        return Load(L"\"" + mProgramFolder, std::wstring(kProgram) + L"\"", parameters, mode, name);
    }
    /// What the program said of its start; empty when it said nothing in time.
    std::string Report() const {
        for (int i = 0; i < 1000; ++i) {
            FILE* const file = _wfopen(mReport.c_str(), L"rb");
            if (file == nullptr) {
                Sleep(20);
                continue;
            }
            char text[2000] = "";
            const std::size_t size = std::fread(text, 1, sizeof text, file);
            std::fclose(file);
            DeleteFileW(mReport.c_str());
            return std::string(text, size);
        }
        return {};
    }
    /// Empty if no program has been started within half a second.
    std::string ReportSoon() const {
        Sleep(500);
        return GetFileAttributesW(mReport.c_str()) == INVALID_FILE_ATTRIBUTES ? std::string() : Report();
    }
    static HWND WindowOf(const wchar_t* title) { return FindWindowW(L"KWOSecondProgram", title); }
    /// Another program's window takes its time, and on a busy screen the focus may be lost on the way: it is asked for
    /// again from time to time.
    bool ComesToTheFront(const wchar_t* title) {
        const HWND window = WindowOf(title);
        for (int i = 0; i < 1000 && GetForegroundWindow() != window; ++i) {
            if (i % 100 == 99) {
                EXPECT_EQ(LoadSecond(L"Other", SW_SHOWNORMAL, title), 1);
            }
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
            Sleep(10);
        }
        return GetForegroundWindow() == window;
    }
    static DWORD ProcessOf(HWND window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        return process;
    }

    static constexpr const wchar_t* kProgram = L"second program.exe";
    test_support::TemporaryFolder mFolder;
    std::wstring mProgramFolder;
    std::wstring mReport;
};

TEST_F(StartOrActivate, StartsWithItsCommandLineAndItsWindowMode) {
    const std::wstring parameters = L"/a \"two words\" \"\" -x=\"y z\" Started";
    const long task = LoadSecond(parameters, SW_SHOWMAXIMIZED);

    EXPECT_EQ(Report(), Narrow(L"\"" + mProgramFolder + kProgram + L"\" " + parameters + L"\n3\n"));
    const HWND window = WindowOf(L"Started");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(task, static_cast<long>(ProcessOf(window)));
    EXPECT_TRUE(IsZoomed(window));
}

TEST_F(StartOrActivate, TheWindowModeIsPassedAsItStands) {
    for (const int mode : {0, 2, 6, 7, 4660, -1}) {
        EXPECT_NE(LoadSecond(L"Mode", static_cast<short>(mode)), 0);
        const std::string report = Report();
        EXPECT_EQ(report.substr(report.find('\n')), "\n" + std::to_string(mode & 0xFFFF) + "\n") << mode;
    }
}

TEST_F(StartOrActivate, ABlankStandsBehindAProgramWithoutParameters) {
    EXPECT_NE(LoadSecond(L""), 0);
    EXPECT_EQ(Report(), Narrow(L"\"" + mProgramFolder + kProgram + L"\" \n1\n"));
}

TEST_F(StartOrActivate, ARunningInstanceComesToTheFrontInstead) {
    const long task = LoadSecond(L"\"The Running One\"");
    ASSERT_NE(Report(), "");
    const OwnWindow own;
    ASSERT_TRUE(own.IsInFront());

    EXPECT_EQ(LoadSecond(L"Other", SW_SHOWNORMAL, L"the running one"), 1);

    EXPECT_EQ(task, static_cast<long>(ProcessOf(WindowOf(L"The Running One"))));
    EXPECT_TRUE(ComesToTheFront(L"The Running One"));
    EXPECT_EQ(WindowOf(L"Other"), nullptr);
}

TEST_F(StartOrActivate, AMinimisedInstanceIsRestored) {
    for (const short mode : std::initializer_list<short>{SW_SHOWMINNOACTIVE, SW_SHOWMINIMIZED}) {
        const std::wstring title = L"Minimised " + std::to_wstring(mode);
        LoadSecond(L"\"" + title + L"\"", mode);
        ASSERT_NE(Report(), "");
        const HWND window = WindowOf(title.c_str());
        ASSERT_TRUE(IsIconic(window));

        EXPECT_EQ(LoadSecond(L"Other", SW_SHOWNORMAL, title), 1);

        for (int i = 0; i < 1000 && IsIconic(window); ++i)
            Sleep(10);
        EXPECT_FALSE(IsIconic(window)) << mode;
    }
    EXPECT_EQ(WindowOf(L"Other"), nullptr);
}

TEST_F(StartOrActivate, AMaximisedInstanceStaysMaximised) {
    LoadSecond(L"Maximised", SW_SHOWMAXIMIZED);
    ASSERT_NE(Report(), "");
    const OwnWindow own;
    ASSERT_TRUE(own.IsInFront());
    EXPECT_EQ(LoadSecond(L"Other", SW_SHOWNORMAL, L"Maximised"), 1);
    ASSERT_TRUE(ComesToTheFront(L"Maximised"));
    EXPECT_TRUE(IsZoomed(WindowOf(L"Maximised")));
}

TEST_F(StartOrActivate, AHiddenInstanceIsNotTakenForARunningOne) {
    const long first = LoadSecond(L"Hidden", SW_HIDE);
    ASSERT_NE(Report(), "");
    ASSERT_FALSE(IsWindowVisible(WindowOf(L"Hidden")));

    const long second = LoadSecond(L"Second", SW_SHOWNORMAL, L"Hidden");
    EXPECT_LT(1, second);
    EXPECT_NE(second, first);
    ASSERT_NE(Report(), "");
}

HWND theCloakedWindow = nullptr;
bool cloakingIsKnown = true;

HRESULT WINAPI TellWhatIsCloaked(HWND window, DWORD attribute, void* value, DWORD size) {
    if (attribute != 14 || size != sizeof(DWORD) || !cloakingIsKnown) return E_INVALIDARG;
    *static_cast<DWORD*>(value) = window == theCloakedWindow ? 2 : 0;
    return S_OK;
}

TEST_F(StartOrActivate, ACloakedInstanceIsNotTakenForARunningOne) {
    const ReplacedFunction cloaks("DwmGetWindowAttribute", &TellWhatIsCloaked);
    LoadSecond(L"Cloaked");
    ASSERT_NE(Report(), "");
    cloakingIsKnown = true;
    theCloakedWindow = nullptr;
    EXPECT_EQ(LoadSecond(L"Second", SW_SHOWNORMAL, L"Cloaked"), 1);
    theCloakedWindow = WindowOf(L"Cloaked");
    ASSERT_NE(theCloakedWindow, nullptr);

    EXPECT_LT(1, LoadSecond(L"Second", SW_SHOWNORMAL, L"Cloaked"));
    ASSERT_NE(Report(), "");
    // If the system cannot tell, a visible window counts.
    cloakingIsKnown = false;
    EXPECT_EQ(LoadSecond(L"Third", SW_SHOWNORMAL, L"Cloaked"), 1);
}

TEST_F(StartOrActivate, NoStartLeavesAHandle) {
    LoadSecond(L"First");
    ASSERT_NE(Report(), "");
    const long before = HandlesInUse();
    for (int i = 0; i < 10; ++i) {
        LoadSecond(L"Again", SW_HIDE);
        ASSERT_NE(Report(), "");
    }
    EXPECT_LT(HandlesInUse(), before + 5);
}

TEST_F(StartOrActivate, ALongCommandLineIsRefused) {
    BoxAnswerer user;
    std::wstring blanks;
    while (blanks.size() < 65'536)
        blanks += L"x ";
    EXPECT_EQ(Load(L"", blanks, L"", 1, L""), 0);

    const std::wstring program = L"\"" + mProgramFolder + kProgram + L"\"";
    const std::size_t room = 32'766 - program.size() - 1;
    EXPECT_EQ(Load(L"", program, std::wstring(room + 1, L'x'), 1, L""), 0);
    EXPECT_EQ(Load(L"", program, std::wstring(L"a\0b", 3), 1, L""), 0);
    EXPECT_EQ(user.boxes.size(), 3u);
    EXPECT_EQ(ReportSoon(), "");
    EXPECT_NE(Load(L"", program, std::wstring(room, L'x'), 1, L""), 0);
    EXPECT_NE(Report(), "");
}

TEST_F(StartOrActivate, AFolderWithABlankIsQuoted) {
    const std::wstring tools = mFolder.MakeFolder(L"My Tools") + L"\\";
    const std::wstring program = mProgramFolder + kProgram;
    ASSERT_TRUE(CopyFileW(program.c_str(), (tools + L"tool.exe").c_str(), TRUE));
    ASSERT_TRUE(CopyFileW(program.c_str(), (mFolder.Path() + L"\\My.exe").c_str(), TRUE));

    EXPECT_NE(Load(L"\"" + tools, L"tool.exe\"", L"/quiet Quoted", 1, L""), 0);
    EXPECT_EQ(Report(), Narrow(L"\"" + tools + L"tool.exe\" /quiet Quoted\n1\n"));
}

TEST_F(StartOrActivate, OnlyTheWholeTitleCounts) {
    LoadSecond(L"\"Exact Title\"");
    ASSERT_NE(Report(), "");

    EXPECT_LT(1, LoadSecond(L"Second", SW_SHOWNORMAL, L"Exact"));
    ASSERT_NE(Report(), "");
    EXPECT_LT(1, LoadSecond(L"Third", SW_SHOWNORMAL, L"Exact Title "));
    ASSERT_NE(Report(), "");
}

TEST_F(StartOrActivate, WithoutATitleEveryCallStarts) {
    const long first = LoadSecond(L"Same");
    ASSERT_NE(Report(), "");
    const long second = LoadSecond(L"Same");
    ASSERT_NE(Report(), "");

    EXPECT_NE(second, first);
}

TEST_F(StartOrActivate, AMissingProgramIsToldByABoxAndZero) {
    BoxAnswerer user;
    EXPECT_EQ(Load(L"C:\\No Such Folder\\", L"none.exe", L"-x", 1, L""), 0);

    ASSERT_EQ(user.boxes.size(), 1u);
    // The text comes from the message file beside the companion.
    EXPECT_NE(user.boxes[0].text.find(L"none.exe"), std::wstring::npos) << Narrow(user.boxes[0].text);
    EXPECT_NE(user.boxes[0].text.find(L"C:\\No Such Folder\\"), std::wstring::npos) << Narrow(user.boxes[0].text);
    EXPECT_TRUE(user.boxes[0].hasIcon);
    EXPECT_EQ(user.boxes[0].title, L"com_tests");
    EXPECT_EQ(user.boxes[0].buttons, 1);
}

TEST_F(StartOrActivate, NothingIsPutBetweenFolderAndProgram) {
    BoxAnswerer user;
    EXPECT_EQ(Load(mFolder.Path(), L"second program.exe", L"", 1, L"no such window"), 0);
    EXPECT_EQ(user.boxes.size(), 1u);
}

TEST_F(StartOrActivate, WhatIsNoProgramIsAFailedStart) {
    BoxAnswerer user;
    EXPECT_EQ(Load(L"", L"", L"", 1, L""), 0);
    EXPECT_EQ(Load(mFolder.Path(), L"", L"", 1, L""), 0);
    EXPECT_EQ(Load(L"", std::wstring(L"a\0b", 3), L"", 1, std::wstring(L"\0", 1)), 0);
    EXPECT_EQ(user.boxes.size(), 3u);
}

TEST_F(UtilityClass, EarlyBoundCallersGetTheSame) {
    const ComPtr<ITypeInfo> type = TypeInfoOf(TypeLibraryOfTheDll().Get(), L"_KWOUtility");
    const ComPtr<UtilitySlots> slots = As<UtilitySlots>(mUtility.Get(), TypeAttributes(*type)->guid);
    ASSERT_TRUE(slots);
    Var slash = Var::Missing();
    Bstr directory;
    EXPECT_EQ(Hex(slots->KWO_SystemDir(&slash, directory.Out())), Hex(S_OK));
    EXPECT_EQ(slash.vt, VT_BOOL);
    EXPECT_EQ(slash.boolVal, VARIANT_FALSE);
    EXPECT_EQ(directory.Text(), Call(mUtility.Get(), L"KWO_SystemDir").result.Text());
    EXPECT_EQ(Hex(slots->KWO_WindowsDir(nullptr, directory.Out())), Hex(S_OK));
    EXPECT_EQ(directory.Text(), Call(mUtility.Get(), L"KWO_WindowsDir").result.Text());

    Bstr name(L"KWOUtil.dll");
    Bstr found;
    EXPECT_EQ(Hex(slots->KWO_FindInPath(name.InOut(), found.Out())), Hex(S_OK));
    EXPECT_EQ(found.Text(), DistFolder() + L"\\KWOUtil.dll");
    EXPECT_EQ(name.Text(), L"KWOUtil.dll");
    EXPECT_EQ(Hex(slots->KWO_FindInPath(nullptr, found.Out())), Hex(E_POINTER));
    EXPECT_EQ(Hex(slots->KWO_FindInPath(name.InOut(), nullptr)), Hex(E_POINTER));

    VARIANT_BOOL isNt = VARIANT_FALSE;
    EXPECT_EQ(Hex(slots->get_KWO_IsWinNT(&isNt)), Hex(S_OK));
    EXPECT_EQ(isNt, VARIANT_TRUE);
    short seconds = 33;
    EXPECT_EQ(Hex(slots->KWO_Pause(&seconds)), Hex(kOverflow));
    EXPECT_EQ(TakeErrorObject().description, L"Overflow");
    EXPECT_EQ(seconds, 33);
    IDispatch* none = nullptr;
    EXPECT_EQ(Hex(slots->KWO_CenterForm(&none, nullptr)), Hex(S_OK));
    EXPECT_EQ(Hex(slots->KWO_SetFormPosition(&none, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)), Hex(S_OK));
}

}  // namespace
}  // namespace kwo::com_test
