#include <cstdio>
#include <optional>

#include "box_answerer.h"
#include "com_test.h"
#include "dll_under_test.h"
#include "temporary_folder.h"
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
constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);

/// Sets an environment variable for one test.
class EnvironmentVariable {
public:
    EnvironmentVariable(const wchar_t* name, const std::wstring& value) : mName(name) {
        mBefore.resize(GetEnvironmentVariableW(name, nullptr, 0));
        if (!mBefore.empty())
            mBefore.resize(GetEnvironmentVariableW(name, mBefore.data(), static_cast<DWORD>(mBefore.size())));
        SetEnvironmentVariableW(name, value.c_str());
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { SetEnvironmentVariableW(mName, mBefore.empty() ? nullptr : mBefore.c_str()); }

private:
    const wchar_t* mName;
    std::wstring mBefore;
};

class UtilityClass : public ::testing::Test {
protected:
    void SetUp() override {
        mUtility = Create(L"KWOUtility");
        ASSERT_TRUE(mUtility);
    }
    std::wstring Find(const std::wstring& name) {
        const Outcome outcome = Call(mUtility.Get(), L"KWO_FindInPath", {name});
        EXPECT_EQ(Hex(S_OK), Hex(outcome.status));
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
    TemporaryFolder mFolder;
    std::wstring mA;
    std::wstring mB;
};

TEST_F(FindInPathOfFolders, AFileBesideTheLibraryComesFirst) {
    const EnvironmentVariable path(L"PATH", mA);
    mFolder.MakeFile(L"a\\KWOUtil.dll");

    EXPECT_EQ(DistFolder() + L"\\KWOUtil.dll", Find(L"KWOUtil.dll"));
}

TEST_F(FindInPathOfFolders, AnswersTheFirstEntryThatHasTheFile) {
    mFolder.MakeFile(L"a\\one.txt");
    mFolder.MakeFile(L"b\\one.txt");
    mFolder.MakeFile(L"b\\two.txt");
    const EnvironmentVariable path(L"PATH", mA + L";" + mB);

    EXPECT_EQ(mA + L"\\one.txt", Find(L"one.txt"));
    EXPECT_EQ(mB + L"\\two.txt", Find(L"two.txt"));
    EXPECT_EQ(mB + L"\\TWO.TXT", Find(L"TWO.TXT"));
    EXPECT_EQ(L"", Find(L"three.txt"));
}

TEST_F(FindInPathOfFolders, AnEntryThatEndsInABackslashGetsNoSecondOne) {
    mFolder.MakeFile(L"a\\one.txt");
    const EnvironmentVariable path(L"PATH", mA + L"\\;");

    EXPECT_EQ(mA + L"\\one.txt", Find(L"one.txt"));
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
        ASSERT_EQ(row.attributes & kept, GetFileAttributesW(file.c_str()) & kept) << Narrow(row.name);
        EXPECT_EQ(row.found ? file : L"", Find(row.name)) << Narrow(row.name);
        mFolder.MakeFile(std::wstring(L"b\\") + row.name);
        EXPECT_EQ(row.found ? file : mB + L"\\" + row.name, Find(row.name)) << Narrow(row.name);
    }
}

TEST_F(FindInPathOfFolders, AFolderOfTheSameNameIsPassedOver) {
    mFolder.MakeFolder(L"a\\name");
    const EnvironmentVariable path(L"PATH", mA + L";" + mB);

    EXPECT_EQ(L"", Find(L"name"));
    mFolder.MakeFile(L"b\\name");
    EXPECT_EQ(mB + L"\\name", Find(L"name"));
}

TEST_F(FindInPathOfFolders, WildcardsAndFoldersInTheNameArePassedOn) {
    mFolder.MakeFolder(L"a\\sub");
    mFolder.MakeFile(L"a\\sub\\file.dat");
    mFolder.MakeFile(L"b\\hit.log", FILE_ATTRIBUTE_NORMAL);
    mFolder.MakeFile(L"b\\a hidden.log", FILE_ATTRIBUTE_HIDDEN);
    const EnvironmentVariable path(L"PATH", mA + L";" + mB);

    EXPECT_EQ(mA + L"\\sub\\file.dat", Find(L"sub\\file.dat"));
    EXPECT_EQ(mB + L"\\*.log", Find(L"*.log"));
    EXPECT_EQ(mB + L"\\h?t.*", Find(L"h?t.*"));
    EXPECT_EQ(L"", Find(L"*.none"));
    // Folders alone are no files.
    EXPECT_EQ(L"", Find(L"su*"));
}

TEST_F(FindInPathOfFolders, AnEmptyEntryIsTheRootOfTheCurrentDrive) {
    wchar_t before[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    SetCurrentDirectoryW(mA.c_str());
    const std::wstring root = mA.substr(0, 3) + L"kwo in the root.txt";
    CloseHandle(CreateFileW(root.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    {
        const EnvironmentVariable path(L"PATH", mA + L";;" + mB);
        EXPECT_EQ(L"\\kwo in the root.txt", Find(L"kwo in the root.txt"));
    }
    {
        const EnvironmentVariable path(L"PATH", mA + L";" + mB);
        EXPECT_EQ(L"", Find(L"kwo in the root.txt"));
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
    ASSERT_EQ(longest + 1, GetEnvironmentVariableW(L"PATH", nullptr, 0));

    EXPECT_EQ(mB + L"\\last.txt", Find(L"last.txt"));
    EXPECT_EQ(L"", Find(L"missing.txt"));
}

TEST_F(FindInPathOfFolders, WithoutAPathThereIsNothingToSearch) {
    mFolder.MakeFile(L"a\\one.txt");
    const EnvironmentVariable path(L"PATH", L"");
    EXPECT_EQ(L"", Find(L"one.txt"));
    SetEnvironmentVariableW(L"PATH", nullptr);
    EXPECT_EQ(L"", Find(L"one.txt"));
}

TEST_F(FindInPathOfFolders, NoNameIsAnError) {
    const EnvironmentVariable path(L"PATH", mA + L";<>|;\"" + mB + L"\";?:\\");
    for (const std::wstring& name :
         {std::wstring(), std::wstring(L"<>|\""), std::wstring(L"..\\..\\..\\*:*"), std::wstring(100'000, L'x'),
          std::wstring(L"a\0b", 3), std::wstring(L"\\\\no server\\no share\\x")})
        EXPECT_EQ(L"", Find(name)) << name.size();
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
        EXPECT_EQ(directory, ask({}));
        EXPECT_EQ(directory, ask({Var::Missing()}));
        EXPECT_EQ(directory, ask({false}));
        EXPECT_EQ(directory, ask({Var::Null()}));
        EXPECT_EQ(directory, ask({Var()}));
        EXPECT_EQ(directory + L"\\", ask({true}));
        EXPECT_EQ(directory + L"\\", ask({1}));
        EXPECT_EQ(directory + L"\\", ask({L"True"}));
        const Outcome outcome = Call(mUtility.Get(), row.member, {L"perhaps"});
        EXPECT_EQ(Hex(kTypeMismatch), Hex(outcome.scode));
        EXPECT_EQ(std::wstring(L"KWOUtility.") + row.member, outcome.source);
    }
}

TEST_F(UtilityClass, AMissingSlashComesBackAsFalse) {
    for (const wchar_t* const member : {L"KWO_SystemDir", L"KWO_WindowsDir"}) {
        Var slash = Var::Missing();
        EXPECT_EQ(Hex(S_OK), Hex(Call(mUtility.Get(), member, {Var::Ref(&slash)}).status));
        EXPECT_EQ(VT_BOOL, slash.vt);
        EXPECT_EQ(VARIANT_FALSE, slash.boolVal);
        Var given(7);
        EXPECT_EQ(Hex(S_OK), Hex(Call(mUtility.Get(), member, {Var::Ref(&given)}).status));
        EXPECT_EQ(VT_I4, given.vt);
        EXPECT_EQ(7, given.lVal);
    }
}

TEST_F(UtilityClass, TheVersionIsWhatTheSystemTells) {
    OSVERSIONINFOA version = {};
    version.dwOSVersionInfoSize = sizeof version;
    ASSERT_TRUE(GetVersionExA(&version));

    EXPECT_EQ(static_cast<short>(version.dwMajorVersion), Get(mUtility.Get(), L"KWO_WinMajorVersion").result.iVal);
    EXPECT_EQ(static_cast<short>(version.dwMinorVersion), Get(mUtility.Get(), L"KWO_WinMinorVersion").result.iVal);
    EXPECT_EQ(VARIANT_FALSE, Get(mUtility.Get(), L"KWO_IsWin32").result.boolVal);
    EXPECT_EQ(VARIANT_TRUE, Get(mUtility.Get(), L"KWO_IsWinNT").result.boolVal);
}

DWORD MillisecondsOf(IDispatch* utility, int seconds) {
    const DWORD before = GetTickCount();
    EXPECT_EQ(Hex(S_OK), Hex(Call(utility, L"KWO_Pause", {seconds}).status)) << seconds;
    return GetTickCount() - before;
}

TEST_F(UtilityClass, APauseIsNeverTooShort) {
    EXPECT_GE(MillisecondsOf(mUtility.Get(), 1), 1000u);
    EXPECT_GE(MillisecondsOf(mUtility.Get(), 100), 100u);
    EXPECT_LT(MillisecondsOf(mUtility.Get(), 0), 1000u);
    EXPECT_LT(MillisecondsOf(mUtility.Get(), -32), 1000u);
}

TEST_F(UtilityClass, From33To99SecondsAnOverflowComesBeforeAnyWait) {
    for (const int seconds : {33, 99, -33}) {
        const DWORD before = GetTickCount();
        const Outcome outcome = Call(mUtility.Get(), L"KWO_Pause", {seconds});
        EXPECT_EQ(Hex(kOverflow), Hex(outcome.scode)) << seconds;
        EXPECT_EQ(L"KWOUtility.KWO_Pause", outcome.source);
        EXPECT_LT(GetTickCount() - before, 1000u);
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

/// Starts the second program, whose windows are closed at the end.
class StartOrActivate : public UtilityClass {
protected:
    void SetUp() override {
        UtilityClass::SetUp();
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        mProgramFolder = path;
        mProgramFolder.resize(mProgramFolder.rfind(L'\\') + 1);
        ASSERT_NE(INVALID_FILE_ATTRIBUTES, GetFileAttributesW((mProgramFolder + kProgram).c_str()));
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
        EXPECT_EQ(Hex(S_OK), Hex(outcome.status)) << Narrow(outcome.description);
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
    static HWND WindowOf(const wchar_t* title) { return FindWindowW(L"KWOSecondProgram", title); }
    /// Another program's window takes its time, and on a busy screen the focus may be lost on the way: it is asked for
    /// again from time to time.
    bool ComesToTheFront(HWND window) {
        for (int i = 0; i < 1000 && GetForegroundWindow() != window; ++i) {
            if (i % 100 == 99) EXPECT_EQ(1, LoadSecond(L"Other", SW_SHOWNORMAL, L"The Running One"));
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
    TemporaryFolder mFolder;
    std::wstring mProgramFolder;
    std::wstring mReport;
};

TEST_F(StartOrActivate, StartsWithItsCommandLineAndItsWindowMode) {
    const std::wstring parameters = L"/a \"two words\" \"\" -x=\"y z\" Started";
    const long task = LoadSecond(parameters, SW_SHOWMAXIMIZED);

    EXPECT_EQ(Narrow(L"\"" + mProgramFolder + kProgram + L"\" " + parameters + L"\n3\n"), Report());
    const HWND window = WindowOf(L"Started");
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(static_cast<long>(ProcessOf(window)), task);
    EXPECT_TRUE(IsZoomed(window));
}

TEST_F(StartOrActivate, TheWindowModeIsPassedAsItStands) {
    for (const int mode : {0, 2, 6, 7, 4660, -1}) {
        EXPECT_NE(0, LoadSecond(L"Mode", static_cast<short>(mode)));
        const std::string report = Report();
        EXPECT_EQ("\n" + std::to_string(mode & 0xFFFF) + "\n", report.substr(report.find('\n'))) << mode;
    }
}

TEST_F(StartOrActivate, ABlankStandsBehindAProgramWithoutParameters) {
    EXPECT_NE(0, LoadSecond(L""));
    EXPECT_EQ(Narrow(L"\"" + mProgramFolder + kProgram + L"\" \n1\n"), Report());
}

TEST_F(StartOrActivate, ARunningInstanceComesToTheFrontInstead) {
    const long task = LoadSecond(L"\"The Running One\"");
    ASSERT_NE("", Report());
    const HWND own = CreateWindowExW(0, L"STATIC", L"own", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100, nullptr,
                                     nullptr, GetModuleHandleW(nullptr), nullptr);
    SetForegroundWindow(own);
    ASSERT_EQ(own, GetForegroundWindow());

    EXPECT_EQ(1, LoadSecond(L"Other", SW_SHOWNORMAL, L"the running one"));

    const HWND window = WindowOf(L"The Running One");
    EXPECT_EQ(static_cast<long>(ProcessOf(window)), task);
    EXPECT_TRUE(ComesToTheFront(window));
    EXPECT_EQ(nullptr, WindowOf(L"Other"));
    DestroyWindow(own);
}

TEST_F(StartOrActivate, OnlyTheWholeTitleCounts) {
    LoadSecond(L"\"Exact Title\"");
    ASSERT_NE("", Report());

    EXPECT_LT(1, LoadSecond(L"Second", SW_SHOWNORMAL, L"Exact"));
    ASSERT_NE("", Report());
    EXPECT_LT(1, LoadSecond(L"Third", SW_SHOWNORMAL, L"Exact Title "));
    ASSERT_NE("", Report());
}

TEST_F(StartOrActivate, WithoutATitleEveryCallStarts) {
    const long first = LoadSecond(L"Same");
    ASSERT_NE("", Report());
    const long second = LoadSecond(L"Same");
    ASSERT_NE("", Report());

    EXPECT_NE(first, second);
}

TEST_F(StartOrActivate, AMissingProgramIsToldByABoxAndZero) {
    BoxAnswerer user;
    EXPECT_EQ(0, Load(L"C:\\No Such Folder\\", L"none.exe", L"-x", 1, L""));

    ASSERT_EQ(1u, user.boxes.size());
    // The text comes from the message file beside the companion.
    EXPECT_NE(std::wstring::npos, user.boxes[0].text.find(L"none.exe")) << Narrow(user.boxes[0].text);
    EXPECT_NE(std::wstring::npos, user.boxes[0].text.find(L"C:\\No Such Folder\\")) << Narrow(user.boxes[0].text);
    EXPECT_TRUE(user.boxes[0].hasIcon);
    EXPECT_EQ(1, user.boxes[0].buttons);
}

TEST_F(StartOrActivate, NothingIsPutBetweenFolderAndProgram) {
    BoxAnswerer user;
    EXPECT_EQ(0, Load(mFolder.Path(), L"second program.exe", L"", 1, L"no such window"));
    EXPECT_EQ(1u, user.boxes.size());
}

TEST_F(StartOrActivate, WhatIsNoProgramIsAFailedStart) {
    BoxAnswerer user;
    EXPECT_EQ(0, Load(L"", L"", L"", 1, L""));
    EXPECT_EQ(0, Load(mFolder.Path(), L"", L"", 1, L""));
    EXPECT_EQ(0, Load(L"", std::wstring(L"a\0b", 3), L"", 1, std::wstring(L"\0", 1)));
    EXPECT_EQ(3u, user.boxes.size());
}

TEST_F(UtilityClass, EarlyBoundCallersGetTheSame) {
    const ComPtr<ITypeInfo> type = TypeInfoOf(TypeLibraryOfTheDll().Get(), L"_KWOUtility");
    const ComPtr<UtilitySlots> slots = As<UtilitySlots>(mUtility.Get(), TypeAttributes(type.Get())->guid);
    ASSERT_TRUE(slots);
    Var slash = Var::Missing();
    Bstr directory;
    EXPECT_EQ(Hex(S_OK), Hex(slots->KWO_SystemDir(&slash, directory.Out())));
    EXPECT_EQ(VT_BOOL, slash.vt);
    EXPECT_EQ(VARIANT_FALSE, slash.boolVal);
    EXPECT_EQ(Call(mUtility.Get(), L"KWO_SystemDir").result.Text(), directory.Text());
    EXPECT_EQ(Hex(S_OK), Hex(slots->KWO_WindowsDir(nullptr, directory.Out())));
    EXPECT_EQ(Call(mUtility.Get(), L"KWO_WindowsDir").result.Text(), directory.Text());

    Bstr name(L"KWOUtil.dll");
    Bstr found;
    EXPECT_EQ(Hex(S_OK), Hex(slots->KWO_FindInPath(name.Ref(), found.Out())));
    EXPECT_EQ(DistFolder() + L"\\KWOUtil.dll", found.Text());
    EXPECT_EQ(L"KWOUtil.dll", name.Text());
    EXPECT_EQ(Hex(E_POINTER), Hex(slots->KWO_FindInPath(nullptr, found.Out())));
    EXPECT_EQ(Hex(E_POINTER), Hex(slots->KWO_FindInPath(name.Ref(), nullptr)));

    VARIANT_BOOL isNt = VARIANT_FALSE;
    EXPECT_EQ(Hex(S_OK), Hex(slots->get_KWO_IsWinNT(&isNt)));
    EXPECT_EQ(VARIANT_TRUE, isNt);
    short seconds = 33;
    EXPECT_EQ(Hex(kOverflow), Hex(slots->KWO_Pause(&seconds)));
    EXPECT_EQ(L"Overflow", TakeErrorObject().description);
    EXPECT_EQ(33, seconds);
    IDispatch* none = nullptr;
    EXPECT_EQ(Hex(S_OK), Hex(slots->KWO_CenterForm(&none, nullptr)));
    EXPECT_EQ(Hex(S_OK), Hex(slots->KWO_SetFormPosition(&none, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)));
}

}  // namespace
}  // namespace kwo::com_test
