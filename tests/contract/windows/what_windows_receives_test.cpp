// What the platform hands to Windows, call by call. The other suites see what comes back; a wrong flag, a handle that
// is not closed or an argument in the wrong place often changes nothing there.

#include <windows.h>
// The system's headers have a macro of that name.
#undef DrawText

#include <gtest/gtest.h>
#include <lmcons.h>
#include <psapi.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/component_error.h"
#include "platform/component_factory.h"
#include "platform/drawing.h"
#include "platform/event_log.h"
#include "platform/file_system.h"
#include "platform/host_application.h"
#include "platform/keyboard.h"
#include "platform/locale_source.h"
#include "platform/log_files.h"
#include "platform/message_loop.h"
#include "platform/mouse.h"
#include "platform/notification_area.h"
#include "platform/process_memory.h"
#include "platform/programs.h"
#include "platform/registry_store.h"
#include "platform/screen.h"
#include "platform/screen_drawing.h"
#include "platform/system_errors.h"
#include "platform/system_fonts.h"
#include "platform/system_metrics.h"
#include "platform/timer_service.h"
#include "platform/window_service.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/system_library.h"
#include "platform/windows/windows_platform.h"
#include "windows_calls/windows_calls.h"

namespace kwo::platform::windows {
namespace {

using windows_calls::Any;
using windows_calls::At;
using windows_calls::Bytes;
using windows_calls::MakeCall;
using windows_calls::Out;
using windows_calls::Same;
using windows_calls::WindowsCalls;
using windows_calls::Yes;

class WhatWindowsReceives : public testing::Test {
protected:
    /// From now on these functions are watched.
    WindowsCalls& Watch(const std::vector<std::string>& names) {
        mCalls = std::make_unique<WindowsCalls>(std::vector<HMODULE>{::GetModuleHandleW(nullptr)}, names);
        return *mCalls;
    }
    void ExpectCalls(const std::vector<windows_calls::Call>& expected) { EXPECT_TRUE(Same(mCalls->Taken(), expected)); }

    WindowsPlatform mWindows{::GetModuleHandleW(nullptr)};
    Platform platform = mWindows.Services();
    std::unique_ptr<WindowsCalls> mCalls;
};

TEST_F(WhatWindowsReceives, OfTheRegistry) {
    Watch({"RegOpenKeyExA", "RegCreateKeyExA", "RegDeleteKeyA", "RegDeleteValueA", "RegQueryValueExA", "RegSetValueExA",
           "RegCloseKey"});
    RegistryStore& registry = platform.registry;
    const auto root = static_cast<Handle>(0x80000001u);

    const auto made = registry.CreateKey(root, u"Software\\KWOUtilReceived", 0x20007, true);
    ASSERT_EQ(made.status, 0);
    const auto key = At<HKEY>(made.key);
    const SECURITY_ATTRIBUTES security = {sizeof security, nullptr, TRUE};
    ExpectCalls({MakeCall("RegCreateKeyExA", HKEY_CURRENT_USER, "Software\\KWOUtilReceived", 0, Out(), 0,
                          KEY_WRITE | KEY_QUERY_VALUE, &security, Out(), Any(), "")});

    EXPECT_EQ(registry.SetString(made.key, u"name", u"text", 5), 0);
    EXPECT_EQ(registry.SetString(made.key, u"name", u"text", 7), 0);
    ExpectCalls({MakeCall("RegSetValueExA", key, "name", 0, REG_SZ, Out(), 5, Bytes{std::string("text\0", 5)}),
                 MakeCall("RegSetValueExA", key, "name", 0, REG_SZ, Out(), 7, Bytes{std::string("text\0\0\0", 7)})});

    EXPECT_EQ(registry.Query(made.key, u"name", 20, '#').status, 0);
    const DWORD capacity = 20;
    const DWORD noType = 0;
    ExpectCalls({MakeCall("RegQueryValueExA", key, "name", nullptr, &noType, Out(), &capacity)});

    const auto opened = registry.OpenKey(root, u"Software\\KWOUtilReceived", KEY_SET_VALUE);
    ASSERT_EQ(opened.status, 0);
    EXPECT_EQ(registry.DeleteValue(opened.key, u"name"), 0);
    EXPECT_EQ(registry.CloseKey(opened.key), 0);
    EXPECT_EQ(registry.CloseKey(made.key), 0);
    EXPECT_EQ(registry.DeleteKey(root, u"Software\\KWOUtilReceived"), 0);
    ExpectCalls({MakeCall("RegOpenKeyExA", HKEY_CURRENT_USER, "Software\\KWOUtilReceived", 0, KEY_SET_VALUE, Out()),
                 MakeCall("RegDeleteValueA", At<HKEY>(opened.key), "name"),
                 MakeCall("RegCloseKey", At<HKEY>(opened.key)), MakeCall("RegCloseKey", key),
                 MakeCall("RegDeleteKeyA", HKEY_CURRENT_USER, "Software\\KWOUtilReceived")});

    const auto foreign = registry.CreateKey(root, u"Software\\KWOUtilReceived", 0x20007, false);
    const SECURITY_ATTRIBUTES notInherited = {sizeof notInherited, nullptr, FALSE};
    ExpectCalls(
        {MakeCall("RegCreateKeyExA", HKEY_CURRENT_USER, Any(), 0, Out(), 0, Any(), &notInherited, Out(), Any(), "")});
    EXPECT_EQ(registry.CloseKey(foreign.key), 0);
    EXPECT_EQ(registry.DeleteKey(root, u"Software\\KWOUtilReceived"), 0);
}

TEST_F(WhatWindowsReceives, OfAStringInTheRegistry) {
    Watch({"RegSetValueExA"}).Replace("RegSetValueExA", &Yes<LONG, HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD>);
    EXPECT_EQ(platform.registry.SetString(0x77, u"n", u"text", 5), 1);
    // The length may be less than the text, or more.
    EXPECT_EQ(platform.registry.SetString(0x77, u"n", u"text", 2), 1);
    EXPECT_EQ(platform.registry.SetString(0x77, u"n", u"text", 7), 1);
    ExpectCalls(
        {MakeCall("RegSetValueExA", At<HKEY>(0x77), "n", 0, REG_SZ, Out(), 5, Bytes{std::string("text\0", 5)}),
         MakeCall("RegSetValueExA", At<HKEY>(0x77), "n", 0, REG_SZ, Out(), 2, Bytes{"te"}),
         MakeCall("RegSetValueExA", At<HKEY>(0x77), "n", 0, REG_SZ, Out(), 7, Bytes{std::string("text\0\0\0", 7)})});
}

TEST_F(WhatWindowsReceives, OfAnIconOfTheNotificationArea) {
    Watch({"Shell_NotifyIconA"}).Replace("Shell_NotifyIconA", &Yes<BOOL, DWORD, NOTIFYICONDATAA*>);
    const TrayRecord record = {0x1234, TrayRecord::kMessage | TrayRecord::kTip, 777, -2, u"the tip"};
    NOTIFYICONDATAA expected = {};
    expected.cbSize = sizeof(void*) == 4 ? 88 : 104;
    expected.hWnd = At<HWND>(0x1234);
    expected.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(::GetModuleHandleW(nullptr)));
    expected.uFlags = NIF_MESSAGE | NIF_TIP;
    expected.uCallbackMessage = 777;
    expected.hIcon = At<HICON>(-2);
    std::strcpy(expected.szTip, "the tip");

    EXPECT_TRUE(platform.notificationArea.Add(record));
    EXPECT_TRUE(platform.notificationArea.Modify(record));
    EXPECT_TRUE(platform.notificationArea.Delete(record));
    ExpectCalls({MakeCall("Shell_NotifyIconA", NIM_ADD, &expected),
                 MakeCall("Shell_NotifyIconA", NIM_MODIFY, &expected),
                 MakeCall("Shell_NotifyIconA", NIM_DELETE, &expected)});
}

TEST_F(WhatWindowsReceives, OfATipThatFillsItsPlaceAndOfOneThatDoesNotCount) {
    Watch({"Shell_NotifyIconA"}).Replace("Shell_NotifyIconA", &Yes<BOOL, DWORD, NOTIFYICONDATAA*>);
    constexpr std::size_t kPlace = 64;
    platform.notificationArea.Modify({0x1234, TrayRecord::kMessage, 777, 0, Text(kPlace + 1, u'x')});
    NOTIFYICONDATAA expected = {};
    expected.cbSize = NOTIFYICONDATAA_V1_SIZE;
    expected.hWnd = At<HWND>(0x1234);
    expected.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(::GetModuleHandleW(nullptr)));
    expected.uFlags = NIF_MESSAGE;
    expected.uCallbackMessage = 777;
    std::memset(expected.szTip, 'x', kPlace);
    ExpectCalls({MakeCall("Shell_NotifyIconA", NIM_MODIFY, &expected)});
}

TEST_F(WhatWindowsReceives, OfAnObjectThatIsCreated) {
    Watch({"CLSIDFromProgID", "CoCreateInstance"});
    mCalls->Replace("CLSIDFromProgID", [](LPCOLESTR, CLSID* id) -> HRESULT {
        *id = IID_IDispatch;
        return S_OK;
    });
    mCalls->Replace("CoCreateInstance", [](REFCLSID id, IUnknown* outer, DWORD context, REFIID iid, void** object) {
        *object = nullptr;
        const bool isAsked =
            id == IID_IDispatch && outer == nullptr && context == CLSCTX_INPROC_SERVER && iid == IID_IDispatch;
        return isAsked ? E_OUTOFMEMORY : REGDB_E_CLASSNOTREG;
    });
    EXPECT_THROW(platform.components.Create(u"Vendor.Class"), std::bad_alloc) << "no other kind of server is asked for";
    const auto calls = mCalls->Taken();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0][1], MakeCall("", L"Vendor.Class")[1]);

    mCalls->Replace("CoCreateInstance", [](REFCLSID id, IUnknown* outer, DWORD context, REFIID iid, void** object) {
        *object = nullptr;
        const bool isAsked = id == IID_IDispatch && outer == nullptr &&
                             context == (CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER) && iid == IID_IDispatch;
        return isAsked ? E_OUTOFMEMORY : REGDB_E_CLASSNOTREG;
    });
    EXPECT_THROW(platform.components.Create(u"Vendor.Class"), std::bad_alloc) << "a program, if there is no DLL";
    EXPECT_EQ(mCalls->Taken().size(), 3u);
}

TEST_F(WhatWindowsReceives, OfTheWindowThatHearsOfANewTaskbar) {
    struct Listener : TaskbarListener {
        void TaskbarCreated() override {}
    } listener;
    Watch(
        {"RegisterWindowMessageW", "CreateWindowExW", "ChangeWindowMessageFilterEx", "DestroyWindow", "PostMessageW"});
    platform.notificationArea.Listen(listener);
    platform.notificationArea.Unlisten(listener);
    const auto calls = mCalls->Taken();
    const UINT created = ::RegisterWindowMessageW(L"TaskbarCreated");
    ASSERT_EQ(calls.size(), 4u);
    const std::string window = calls[2][1];
    EXPECT_TRUE(Same(calls, {MakeCall("RegisterWindowMessageW", L"TaskbarCreated"),
                             MakeCall("CreateWindowExW", WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP,
                                      0, 0, 0, 0, Any(), Any(), Any(), Any()),
                             {"ChangeWindowMessageFilterEx", window, std::to_string(created), "1", "null"},
                             {"DestroyWindow", window}}));
}

TEST_F(WhatWindowsReceives, OfFiles) {
    Watch({"GetFileAttributesW", "GetFileAttributesA", "FindFirstFileW", "FindNextFileW", "FindClose",
           "SetThreadErrorMode"});
    platform.files.Attributes(u"C:\\windows");
    ExpectCalls({MakeCall("SetThreadErrorMode", Any(), Any()), MakeCall("GetFileAttributesW", L"C:\\windows"),
                 MakeCall("SetThreadErrorMode", Any(), nullptr)});
    platform.files.AttributesAnsi(u"C:\\windows");
    ExpectCalls({MakeCall("SetThreadErrorMode", Any(), Any()), MakeCall("GetFileAttributesA", "C:\\windows"),
                 MakeCall("SetThreadErrorMode", Any(), nullptr)});
    EXPECT_FALSE(platform.files.ListsFile(u"C:\\win*ows"));
    const auto calls = mCalls->Taken();
    ASSERT_EQ(calls.size(), 5u);
    EXPECT_EQ(calls[1][1], "'C:\\win*ows'");
    EXPECT_EQ(calls[2][0], "FindNextFileW");
    EXPECT_EQ(calls[3], (windows_calls::Call{"FindClose", calls[2][1]}));
}

TEST_F(WhatWindowsReceives, OfTheErrorModeOfTheThread) {
    Watch({"SetThreadErrorMode"});
    DWORD before = 0;
    ::SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, &before);
    mCalls->Taken();
    platform.files.Attributes(u"C:\\windows");
    const auto calls = mCalls->Taken();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0][1], std::to_string(SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS));
    EXPECT_EQ(calls[1][1], std::to_string(SEM_NOGPFAULTERRORBOX));
    ::SetThreadErrorMode(before, nullptr);
}

TEST_F(WhatWindowsReceives, OfLogFiles) {
    wchar_t folder[MAX_PATH];
    ::GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + L"kwo received.log";
    const Text name(path.begin(), path.end());
    ::DeleteFileW(path.c_str());
    Watch({"CreateFileW", "WriteFile", "CloseHandle", "DeleteFileW"});

    const LogFiles::File file = platform.logFiles.CreateNew(name);
    ASSERT_NE(file, 0u);
    EXPECT_TRUE(platform.logFiles.Write(file, "a line"));
    platform.logFiles.Close(file);
    EXPECT_TRUE(platform.logFiles.Delete(name));
    const auto handle = reinterpret_cast<HANDLE>(file);
    ExpectCalls({MakeCall("CreateFileW", path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                          FILE_ATTRIBUTE_NORMAL, HANDLE(nullptr)),
                 MakeCall("WriteFile", handle, Any(), 6, Any(), nullptr, "a line"), MakeCall("CloseHandle", handle),
                 MakeCall("DeleteFileW", path.c_str())});
}

TEST_F(WhatWindowsReceives, OfAStartedProgram) {
    Watch({"CreateProcessW", "CloseHandle"});
    mCalls->Replace("CreateProcessW",
                    [](LPCWSTR, LPWSTR, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, LPVOID, LPCWSTR,
                       STARTUPINFOW*, PROCESS_INFORMATION* process) -> BOOL {
                        *process = {At<HANDLE>(0x1110), At<HANDLE>(0x2220), 33, 44};
                        return TRUE;
                    });
    mCalls->Replace("CloseHandle", &Yes<BOOL, HANDLE>);
    for (const std::int16_t mode : {std::int16_t{1}, std::int16_t{7}}) {
        EXPECT_EQ(platform.programs.Start(u"program argument", mode), 33);
        STARTUPINFOW start = {};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESHOWWINDOW;
        start.wShowWindow = static_cast<WORD>(mode);
        ExpectCalls({MakeCall("CreateProcessW", nullptr, Any(), nullptr, nullptr, FALSE, 0, HANDLE(nullptr), nullptr,
                              &start, Out(), L"program argument"),
                     MakeCall("CloseHandle", At<HANDLE>(0x2220)), MakeCall("CloseHandle", At<HANDLE>(0x1110))});
    }
}

TEST_F(WhatWindowsReceives, NothingOfACommandLineThatIsTooLong) {
    Watch({"CreateProcessW"});
    mCalls->Replace("CreateProcessW",
                    [](LPCWSTR, LPWSTR, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, LPVOID, LPCWSTR,
                       STARTUPINFOW*, PROCESS_INFORMATION*) -> BOOL { return FALSE; });
    const Text longest(platform::Programs::kLongestCommandLine, u'x');
    EXPECT_THROW(platform.programs.Start(longest, 1), ComponentError);
    EXPECT_EQ(mCalls->Taken().size(), 1u);
    // The system would try each part up to a blank, which takes long.
    EXPECT_THROW(platform.programs.Start(longest + u"x", 1), ComponentError);
    EXPECT_EQ(mCalls->Taken().size(), 0u);
}

constexpr std::intptr_t kWanted = 0x5150;

BOOL WINAPI OneWindow(WNDENUMPROC look, LPARAM parameter) {
    for (const std::intptr_t window : {std::intptr_t{0x10}, kWanted, std::intptr_t{0x20}}) {
        if (!look(At<HWND>(window), parameter)) return FALSE;
    }
    return TRUE;
}

int WINAPI TitleOfWanted(HWND window, LPWSTR text, int) {
    ::lstrcpyW(text, window == At<HWND>(kWanted) ? L"The TITLE" : L"another");
    return ::lstrlenW(text);
}

TEST_F(WhatWindowsReceives, OfAnActivatedProgram) {
    Watch({"EnumWindows", "IsWindowVisible", "InternalGetWindowText", "DwmGetWindowAttribute", "IsIconic",
           "ShowWindowAsync", "SetForegroundWindow"});
    mCalls->Replace("EnumWindows", &OneWindow);
    mCalls->Replace("IsWindowVisible", &Yes<BOOL, HWND>);
    mCalls->Replace("InternalGetWindowText", &TitleOfWanted);
    mCalls->Replace("DwmGetWindowAttribute", [](HWND, DWORD, void* cloaked, DWORD) -> HRESULT {
        *static_cast<DWORD*>(cloaked) = 0;
        return S_OK;
    });
    mCalls->Replace("IsIconic", &Yes<BOOL, HWND>);
    mCalls->Replace("ShowWindowAsync", &Yes<BOOL, HWND, int>);
    mCalls->Replace("SetForegroundWindow", &Yes<BOOL, HWND>);
    platform.programs.Activate(u"the title");

    const auto wanted = At<HWND>(kWanted);
    const int size = 11;  // one more than the title, so that a longer one shows, and the end
    ExpectCalls({MakeCall("EnumWindows", Any(), Any()), MakeCall("IsWindowVisible", At<HWND>(0x10)),
                 MakeCall("InternalGetWindowText", At<HWND>(0x10), Out(), size), MakeCall("IsWindowVisible", wanted),
                 MakeCall("InternalGetWindowText", wanted, Out(), size),
                 MakeCall("DwmGetWindowAttribute", wanted, 14, Any(), sizeof(DWORD)), MakeCall("IsIconic", wanted),
                 MakeCall("ShowWindowAsync", wanted, SW_RESTORE), MakeCall("SetForegroundWindow", wanted)});

    mCalls->Replace("IsIconic", [](HWND) -> BOOL { return FALSE; });
    platform.programs.Activate(u"the title");
    const auto calls = mCalls->Taken();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[calls.size() - 2][0], "IsIconic") << "a window that is not minimised keeps its size";

    mCalls->Replace("IsWindowVisible", [](HWND) -> BOOL { return FALSE; });
    EXPECT_THROW(platform.programs.Activate(u"the title"), ComponentError);
    for (const auto& call : mCalls->Taken())
        EXPECT_NE(call[0], "SetForegroundWindow");
}

TEST_F(WhatWindowsReceives, OfTheEventLog) {
    Watch({"RegisterEventSourceA", "RegisterEventSourceW", "ReportEventW", "DeregisterEventSource"});
    const auto handle = At<HANDLE>(0x4321);
    mCalls->Replace("RegisterEventSourceA", [](LPCSTR, LPCSTR) { return At<HANDLE>(0x4321); });
    mCalls->Replace("RegisterEventSourceW", [](LPCWSTR, LPCWSTR) { return At<HANDLE>(0x4321); });
    mCalls->Replace("ReportEventW", &Yes<BOOL, HANDLE, WORD, WORD, DWORD, PSID, WORD, DWORD, LPCWSTR*, LPVOID>);
    mCalls->Replace("DeregisterEventSource", &Yes<BOOL, HANDLE>);

    const EventLog::Source source = platform.eventLog.Open(u"a source");
    EXPECT_TRUE(platform.eventLog.Report(source, EVENTLOG_WARNING_TYPE, 1234, u"a text"));
    platform.eventLog.Close(source);
    ExpectCalls({MakeCall("RegisterEventSourceA", nullptr, "a source"),
                 MakeCall("ReportEventW", handle, EVENTLOG_WARNING_TYPE, 0, 1234, HANDLE(nullptr), 1, 0, Out(),
                          HANDLE(nullptr), L"a text"),
                 MakeCall("DeregisterEventSource", handle)});

    platform.host.WriteLog(u"a line");
    ExpectCalls({MakeCall("RegisterEventSourceW", nullptr, L"contract_tests"),
                 MakeCall("ReportEventW", handle, EVENTLOG_INFORMATION_TYPE, 0, 1, HANDLE(nullptr), 1, 0, Out(),
                          HANDLE(nullptr), L"a line"),
                 MakeCall("DeregisterEventSource", handle)});

    mCalls->Replace("RegisterEventSourceW", [](LPCWSTR, LPCWSTR) { return HANDLE(nullptr); });
    platform.host.WriteLog(u"a line");
    EXPECT_EQ(mCalls->Taken().size(), 1u) << "there is no log to write to";
}

TEST_F(WhatWindowsReceives, OfMessageBoxesAndWindows) {
    Watch({"MessageBoxA", "FlashWindow", "IsWindow", "IsIconic", "GetWindowTextA"});
    mCalls->Replace("MessageBoxA", [](HWND, LPCSTR, LPCSTR, UINT) -> int { return IDRETRY; });
    mCalls->Replace("FlashWindow", &Yes<BOOL, HWND, BOOL>);
    mCalls->Replace("IsWindow", &Yes<BOOL, HWND>);
    mCalls->Replace("IsIconic", &Yes<BOOL, HWND>);
    mCalls->Replace("GetWindowTextA", [](HWND, LPSTR text, int) -> int {
        ::lstrcpyA(text, "caption");
        return 7;
    });
    const auto window = At<HWND>(0x99);

    EXPECT_EQ(platform.windows.AskUser(0x99, u"prompt", u"title", MB_RETRYCANCEL), IDRETRY);
    platform.windows.Flash(0x99, true);
    platform.windows.Flash(0x99, false);
    EXPECT_TRUE(platform.windows.WindowExists(0x99));
    EXPECT_TRUE(platform.windows.IsMinimised(0x99));
    EXPECT_EQ(platform.windows.WindowText(0x99), u"caption");
    ExpectCalls({MakeCall("MessageBoxA", window, "prompt", "title", MB_RETRYCANCEL),
                 MakeCall("FlashWindow", window, TRUE), MakeCall("FlashWindow", window, FALSE),
                 MakeCall("IsWindow", window), MakeCall("IsIconic", window), MakeCall("IsWindow", window),
                 MakeCall("GetWindowTextA", window, Out(), 255)});
}

TEST_F(WhatWindowsReceives, OfDrawing) {
    Watch(
        {"GetClientRect", "DrawEdge", "DrawFrameControl", "DrawTextA", "DrawFocusRect", "FrameRect", "GetStockObject"});
    mCalls->Replace("DrawEdge", &Yes<BOOL, HDC, LPRECT, UINT, UINT>);
    mCalls->Replace("DrawFrameControl", &Yes<BOOL, HDC, LPRECT, UINT, UINT>);
    mCalls->Replace("DrawTextA", &Yes<int, HDC, LPCSTR, int, LPRECT, UINT>);
    mCalls->Replace("DrawFocusRect", &Yes<BOOL, HDC, const RECT*>);
    mCalls->Replace("FrameRect", &Yes<int, HDC, const RECT*, HBRUSH>);
    mCalls->Replace("GetStockObject", [](int) -> HGDIOBJ { return At<HGDIOBJ>(0x55); });
    mCalls->Replace("GetClientRect", [](HWND, LPRECT area) -> BOOL {
        *area = {1, 2, 30, 40};
        return TRUE;
    });
    const Rect area = {11, 12, 23, 34};
    const RECT native = {11, 12, 23, 34};
    const auto context = At<HDC>(0x66);

    Rect client;
    platform.drawing.ClientRect(0x44, client);
    EXPECT_EQ(client, (Rect{1, 2, 30, 40}));
    platform.drawing.DrawEdge(0x66, area, EDGE_ETCHED, BF_RECT);
    platform.drawing.DrawFrameControl(0x66, area, DFC_SCROLL, DFCS_SCROLLRIGHT);
    platform.drawing.DrawText(0x66, u"&Text", area, DT_CENTER | DT_WORDBREAK);
    platform.drawing.DrawFocusRect(0x66, area);
    platform.drawing.FrameRect(0x66, area, 0x77);
    EXPECT_EQ(platform.drawing.StockObject(WHITE_BRUSH), 0x55);
    ExpectCalls({MakeCall("GetClientRect", At<HWND>(0x44), Any()),
                 MakeCall("DrawEdge", context, &native, EDGE_ETCHED, BF_RECT),
                 MakeCall("DrawFrameControl", context, &native, DFC_SCROLL, DFCS_SCROLLRIGHT),
                 MakeCall("DrawTextA", context, "&Text", 5, &native, DT_CENTER | DT_WORDBREAK),
                 MakeCall("DrawFocusRect", context, &native), MakeCall("FrameRect", context, &native, At<HBRUSH>(0x77)),
                 MakeCall("GetStockObject", WHITE_BRUSH)});
}

TEST_F(WhatWindowsReceives, OfDrawingOnTheScreen) {
    Watch({"CreateDCA", "DeleteDC", "CreatePen", "DeleteObject", "SelectObject", "SetROP2", "ClientToScreen",
           "MoveToEx", "LineTo", "GetStockObject"});
    mCalls->Replace("CreateDCA", [](LPCSTR, LPCSTR, LPCSTR, const DEVMODEA*) { return At<HDC>(0x66); });
    mCalls->Replace("DeleteDC", &Yes<BOOL, HDC>);
    mCalls->Replace("CreatePen", [](int, int, COLORREF) { return At<HPEN>(0x88); });
    mCalls->Replace("DeleteObject", &Yes<BOOL, HGDIOBJ>);
    mCalls->Replace("SelectObject", [](HDC, HGDIOBJ) -> HGDIOBJ { return At<HGDIOBJ>(0x99); });
    mCalls->Replace("SetROP2", &Yes<int, HDC, int>);
    mCalls->Replace("GetStockObject", [](int) -> HGDIOBJ { return At<HGDIOBJ>(0x55); });
    mCalls->Replace("ClientToScreen", [](HWND, LPPOINT point) -> BOOL {
        *point = {point->x + 100, point->y + 200};
        return TRUE;
    });
    mCalls->Replace("MoveToEx", &Yes<BOOL, HDC, int, int, LPPOINT>);
    mCalls->Replace("LineTo", &Yes<BOOL, HDC, int, int>);
    ScreenDrawing& screen = platform.screenDrawing;
    const auto context = At<HDC>(0x66);

    EXPECT_EQ(screen.CreateDisplayContext(), 0x66);
    EXPECT_EQ(screen.CreatePen(PS_DOT, 3, 0x010203), 0x88);
    EXPECT_EQ(screen.SetRasterOperation(0x66, R2_NOT), 1);
    EXPECT_EQ(screen.SelectObject(0x66, 0x88), 0x99);
    EXPECT_EQ(screen.StockObject(NULL_BRUSH), 0x55);
    Point point = {5, 6};
    screen.ClientToScreen(0x44, point);
    EXPECT_EQ(point, (Point{105, 206}));
    screen.MoveTo(0x66, {7, 8});
    screen.LineTo(0x66, {9, 10});
    screen.DeleteObject(0x88);
    screen.DeleteContext(0x66);
    const POINT given = {5, 6};
    ExpectCalls({MakeCall("CreateDCA", "DISPLAY", nullptr, nullptr, nullptr),
                 MakeCall("CreatePen", PS_DOT, 3, 0x010203), MakeCall("SetROP2", context, R2_NOT),
                 MakeCall("SelectObject", context, At<HGDIOBJ>(0x88)), MakeCall("GetStockObject", NULL_BRUSH),
                 MakeCall("ClientToScreen", At<HWND>(0x44), &given), MakeCall("MoveToEx", context, 7, 8, nullptr),
                 MakeCall("LineTo", context, 9, 10), MakeCall("DeleteObject", At<HGDIOBJ>(0x88)),
                 MakeCall("DeleteDC", context)});
}

TEST_F(WhatWindowsReceives, OfTheScreen) {
    Watch({"GetDC", "GetDeviceCaps", "ReleaseDC", "GetSystemMetrics", "GetCursor", "SetCursor", "LoadCursorW",
           "GetActiveWindow", "GetWindowContextHelpId", "SetWindowContextHelpId"});
    mCalls->Replace("GetDC", [](HWND) { return At<HDC>(0x66); });
    mCalls->Replace("ReleaseDC", &Yes<int, HWND, HDC>);
    mCalls->Replace("GetDeviceCaps", [](HDC, int index) -> int { return index == LOGPIXELSX ? 96 : 144; });
    mCalls->Replace("GetSystemMetrics", [](int index) -> int { return index == SM_CXSCREEN ? 800 : 600; });
    mCalls->Replace("GetActiveWindow", [] { return At<HWND>(0x44); });
    mCalls->Replace("GetWindowContextHelpId", [](HWND) -> DWORD { return 4711; });
    mCalls->Replace("SetWindowContextHelpId", &Yes<BOOL, HWND, DWORD>);
    const auto desktop = HWND(nullptr);
    const auto context = At<HDC>(0x66);

    EXPECT_EQ(platform.screen.Width(), 12'000.0f);
    EXPECT_EQ(platform.screen.Height(), 6'000.0f);
    const auto ask = [&](int axis) {
        return std::vector{MakeCall("GetDC", desktop), MakeCall("GetDeviceCaps", context, axis),
                           MakeCall("ReleaseDC", desktop, context)};
    };
    auto calls = mCalls->Taken();
    std::ranges::sort(calls);
    std::vector expected = ask(LOGPIXELSX);
    for (const auto& call : ask(LOGPIXELSY))
        expected.push_back(call);
    expected.push_back(MakeCall("GetSystemMetrics", SM_CXSCREEN));
    expected.push_back(MakeCall("GetSystemMetrics", SM_CYSCREEN));
    std::ranges::sort(expected);
    EXPECT_TRUE(Same(calls, expected));

    EXPECT_EQ(platform.screen.TwipsPerPixelX(), 15);
    ExpectCalls(ask(LOGPIXELSX));
    EXPECT_EQ(platform.screen.TwipsPerPixelY(), 10);
    ExpectCalls(ask(LOGPIXELSY));

    EXPECT_EQ(platform.screen.ActiveForm(), 0x44);
    EXPECT_EQ(platform.screen.HelpContext(0x44), 4711);
    platform.screen.SetHelpContext(0x44, 12);
    ExpectCalls({MakeCall("GetActiveWindow"), MakeCall("GetWindowContextHelpId", At<HWND>(0x44)),
                 MakeCall("SetWindowContextHelpId", At<HWND>(0x44), 12)});

    // Without a display the usual density counts, and nothing is released.
    mCalls->Replace("GetDC", [](HWND) { return HDC(nullptr); });
    EXPECT_EQ(platform.screen.TwipsPerPixelX(), 15);
    ExpectCalls({MakeCall("GetDC", desktop)});
}

TEST_F(WhatWindowsReceives, OfThePointer) {
    Watch({"GetCursor", "SetCursor", "LoadCursorW"});
    mCalls->Replace("LoadCursorW", [](HINSTANCE, LPCWSTR name) -> HCURSOR {
        return name == IDC_ARROW ? At<HCURSOR>(0xA0) : At<HCURSOR>(0xB0);
    });
    mCalls->Replace("GetCursor", []() -> HCURSOR { return At<HCURSOR>(0xC0); });
    mCalls->Replace("SetCursor", [](HCURSOR cursor) -> HCURSOR { return cursor; });

    EXPECT_EQ(platform.screen.MousePointer(), 0xC0);
    platform.screen.SetMousePointer(0xD0);
    platform.screen.SetMousePointer(0);
    mCalls->Replace("GetCursor", []() -> HCURSOR { return At<HCURSOR>(0xA0); });
    EXPECT_EQ(platform.screen.MousePointer(), 0);
    std::vector<windows_calls::Call> set;
    for (const auto& call : mCalls->Taken()) {
        if (call[0] == "SetCursor") set.push_back(call);
    }
    EXPECT_TRUE(Same(set, {MakeCall("SetCursor", At<HCURSOR>(0xD0)), MakeCall("SetCursor", At<HCURSOR>(0xA0))}));
}

struct Ticks : TimerHandler {
    void TimerProc() noexcept override {}
};

TEST_F(WhatWindowsReceives, OfALibraryOfTheSystem) {
    Watch({"LoadLibraryExW"});
    static DWORD error = 0;
    mCalls->Replace("LoadLibraryExW", [](LPCWSTR, HANDLE, DWORD) -> HMODULE {
        ::SetLastError(error);
        return nullptr;
    });
    const auto plain = MakeCall("LoadLibraryExW", L"kwo.dll", HANDLE(nullptr), LOAD_LIBRARY_SEARCH_SYSTEM32);
    SystemLibrary library(L"kwo.dll");

    error = ERROR_MOD_NOT_FOUND;
    EXPECT_EQ(library.Find<void()>("Function"), nullptr);
    ExpectCalls({plain});

    // As a system answers that is older than the flag.
    error = ERROR_INVALID_PARAMETER;
    EXPECT_EQ(library.Find<void()>("Function"), nullptr);
    wchar_t folder[MAX_PATH];
    ASSERT_NE(::GetSystemDirectoryW(folder, MAX_PATH), 0u);
    const std::wstring path = std::wstring(folder) + L"\\kwo.dll";
    ExpectCalls({plain, MakeCall("LoadLibraryExW", path.c_str(), HANDLE(nullptr), LOAD_WITH_ALTERED_SEARCH_PATH)});
}

TEST_F(WhatWindowsReceives, OfTimers) {
    Ticks ticks;
    Watch({"SetTimer", "KillTimer"});
    mCalls->Replace("SetTimer", [](HWND, UINT_PTR, UINT, TIMERPROC) -> UINT_PTR { return 4711; });
    mCalls->Replace("KillTimer", &Yes<BOOL, HWND, UINT_PTR>);
    EXPECT_EQ(platform.timers.Start(2500, ticks), 4711);
    platform.timers.Stop(12);
    platform.timers.Stop(4711);
    platform.timers.Stop(4711);
    ExpectCalls({MakeCall(
                     "SetTimer", HWND(nullptr), 0, 2500, +[] {}),
                 MakeCall("KillTimer", HWND(nullptr), 4711)});

    EXPECT_EQ(platform.timers.Start(1, ticks), 4711);
    mWindows.StopCallbacks();
    ExpectCalls({MakeCall(
                     "SetTimer", HWND(nullptr), 0, 1, +[] {}),
                 MakeCall("KillTimer", HWND(nullptr), 4711)});
}

TEST_F(WhatWindowsReceives, OfTheWatchOverTheEndOfTheApartment) {
    Ticks ticks;
    static UINT_PTR next = 4711;
    Watch({"SetTimer", "KillTimer", "CoRegisterInitializeSpy", "CoRevokeInitializeSpy"});
    mCalls->Replace("SetTimer", [](HWND, UINT_PTR, UINT, TIMERPROC) -> UINT_PTR { return next++; });
    mCalls->Replace("KillTimer", &Yes<BOOL, HWND, UINT_PTR>);
    const auto watches = [&] {
        std::vector<std::string> names;
        for (const auto& call : mCalls->Taken()) {
            if (call[0].starts_with("Co")) names.push_back(call[0]);
        }
        return names;
    };
    using Names = std::vector<std::string>;
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    const std::int32_t first = platform.timers.Start(1, ticks);
    const std::int32_t second = platform.timers.Start(1, ticks);
    EXPECT_EQ(watches(), Names{"CoRegisterInitializeSpy"});
    platform.timers.Stop(first);
    EXPECT_EQ(watches(), Names{});
    platform.timers.Stop(second);
    EXPECT_EQ(watches(), Names{"CoRevokeInitializeSpy"});
    ::CoUninitialize();
}

TEST_F(WhatWindowsReceives, OfAWatchThatItRefuses) {
    Ticks ticks;
    Watch({"SetTimer", "KillTimer", "CoRegisterInitializeSpy", "CoRevokeInitializeSpy"});
    mCalls->Replace("SetTimer", [](HWND, UINT_PTR, UINT, TIMERPROC) -> UINT_PTR { return 4711; });
    mCalls->Replace("KillTimer", &Yes<BOOL, HWND, UINT_PTR>);
    mCalls->Replace("CoRegisterInitializeSpy",
                    [](IInitializeSpy*, ULARGE_INTEGER*) -> HRESULT { return E_OUTOFMEMORY; });
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    platform.timers.Stop(platform.timers.Start(1, ticks));
    ::CoUninitialize();
    std::vector<std::string> names;
    for (const auto& call : mCalls->Taken())
        names.push_back(call[0]);
    // There is no watch to end.
    EXPECT_EQ(names, (std::vector<std::string>{"SetTimer", "CoRegisterInitializeSpy", "KillTimer"}));
}

std::string KeyInput(WORD code, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return windows_calls::TextOf(&input);
}

TEST_F(WhatWindowsReceives, OfKeys) {
    Watch({"SendInput", "MapVirtualKeyW", "GetAsyncKeyState"});
    mCalls->Replace("GetAsyncKeyState", [](int) -> SHORT { return 0; });  // the user holds no key
    mCalls->Replace("SendInput", &Yes<UINT, UINT, LPINPUT, int>);
    const auto sent = [&](bool backwards) {
        platform.keyboard.SendTab(backwards);
        auto calls = mCalls->Taken();
        std::erase_if(calls, [](const auto& call) { return call[0] != "SendInput"; });
        return calls;
    };
    const std::string tab = KeyInput(VK_TAB, 0);
    const std::string tabUp = KeyInput(VK_TAB, KEYEVENTF_KEYUP);
    const std::string size = std::to_string(sizeof(INPUT));
    EXPECT_TRUE(Same(sent(false), {{"SendInput", "2", "*", size, tab, tabUp}}));
    EXPECT_TRUE(Same(sent(true), {{"SendInput", "4", "*", size, KeyInput(VK_SHIFT, 0), tab, tabUp,
                                   KeyInput(VK_SHIFT, KEYEVENTF_KEYUP)}}));
}

TEST_F(WhatWindowsReceives, OfKeysWhileTheUserHoldsAnother) {
    struct HeldKey {
        WORD code;
        DWORD flags;  ///< right-hand keys and logo keys have a code of two bytes
    };
    static WORD held = 0;
    constexpr WORD kUnassigned = 0xE8;
    Watch({"SendInput", "GetAsyncKeyState"});
    mCalls->Replace("SendInput", &Yes<UINT, UINT, LPINPUT, int>);
    // The lowest bit of the others says that they were pressed before.
    mCalls->Replace("GetAsyncKeyState",
                    [](int key) -> SHORT { return key == held ? static_cast<SHORT>(0x8000) : SHORT{1}; });
    const std::string size = std::to_string(sizeof(INPUT));
    for (const HeldKey key :
         {HeldKey{VK_LSHIFT, 0}, HeldKey{VK_RSHIFT, 0}, HeldKey{VK_LCONTROL, 0},
          HeldKey{VK_RCONTROL, KEYEVENTF_EXTENDEDKEY}, HeldKey{VK_LMENU, 0}, HeldKey{VK_RMENU, KEYEVENTF_EXTENDEDKEY},
          HeldKey{VK_LWIN, KEYEVENTF_EXTENDEDKEY}, HeldKey{VK_RWIN, KEYEVENTF_EXTENDEDKEY}}) {
        held = key.code;
        platform.keyboard.SendTab(false);

        auto calls = mCalls->Taken();
        std::erase_if(calls, [](const auto& call) { return call[0] != "SendInput"; });
        EXPECT_TRUE(Same(calls, {{"SendInput", "6", "*", size, KeyInput(key.code, key.flags | KEYEVENTF_KEYUP),
                                  KeyInput(VK_TAB, 0), KeyInput(VK_TAB, KEYEVENTF_KEYUP), KeyInput(key.code, key.flags),
                                  KeyInput(kUnassigned, 0), KeyInput(kUnassigned, KEYEVENTF_KEYUP)}}))
            << "key " << key.code;
    }
}

TEST_F(WhatWindowsReceives, OfTheMouse) {
    Watch({"GetAsyncKeyState", "GetKeyState", "GetSystemMetrics"});
    mCalls->Replace("GetAsyncKeyState", [](int) -> SHORT { return static_cast<SHORT>(0x8000); });
    mCalls->Replace("GetKeyState", [](int) -> SHORT { return static_cast<SHORT>(0x8000); });
    mCalls->Replace("GetSystemMetrics", [](int) -> int { return 0; });
    EXPECT_TRUE(platform.mouse.IsHeld());
    EXPECT_TRUE(platform.mouse.WasPressed());
    mCalls->Replace("GetSystemMetrics", [](int) -> int { return 1; });
    EXPECT_TRUE(platform.mouse.IsHeld());
    EXPECT_TRUE(platform.mouse.WasPressed());
    ExpectCalls({MakeCall("GetSystemMetrics", SM_SWAPBUTTON), MakeCall("GetAsyncKeyState", VK_LBUTTON),
                 MakeCall("GetKeyState", VK_LBUTTON), MakeCall("GetSystemMetrics", SM_SWAPBUTTON),
                 MakeCall("GetAsyncKeyState", VK_RBUTTON), MakeCall("GetKeyState", VK_LBUTTON)});
    // Only the highest bit tells that a button is down.
    mCalls->Replace("GetAsyncKeyState", [](int) -> SHORT { return 0x7FFF; });
    mCalls->Replace("GetKeyState", [](int) -> SHORT { return 0x7FFF; });
    EXPECT_FALSE(platform.mouse.IsHeld());
    EXPECT_FALSE(platform.mouse.WasPressed());
}

TEST_F(WhatWindowsReceives, OfWaits) {
    Watch({"MsgWaitForMultipleObjectsEx", "MsgWaitForMultipleObjects"});
    platform.messages.WaitForInputEx(3, QS_TIMER, MWMO_INPUTAVAILABLE);
    platform.messages.WaitForInput(4, QS_KEY);
    ExpectCalls({MakeCall("MsgWaitForMultipleObjectsEx", 0, nullptr, 3, QS_TIMER, MWMO_INPUTAVAILABLE),
                 MakeCall("MsgWaitForMultipleObjects", 0, nullptr, FALSE, 4, QS_KEY)});
}

TEST_F(WhatWindowsReceives, OfMessages) {
    Watch({"PeekMessageW", "TranslateMessage", "DispatchMessageW", "PostQuitMessage"});
    ::PostThreadMessageW(::GetCurrentThreadId(), WM_APP + 7, 0, 0);
    EXPECT_TRUE(platform.messages.ProcessPending());
    const auto peek = MakeCall("PeekMessageW", Any(), HWND(nullptr), 0, 0, PM_REMOVE);
    ExpectCalls({peek, MakeCall("TranslateMessage", Any()), MakeCall("DispatchMessageW", Any()), peek});
    mCalls->Replace("PostQuitMessage", [](int) {});
    ::PostQuitMessage(9);
    MSG message = {};
    // The request to quit: it ends the processing and is asked for again.
    mCalls->Taken();
    mCalls->Replace("PeekMessageW", [](LPMSG found, HWND, UINT, UINT, UINT) -> BOOL {
        *found = {};
        found->message = WM_QUIT;
        found->wParam = 9;
        return TRUE;
    });
    EXPECT_FALSE(platform.messages.ProcessPending());
    ExpectCalls({peek, MakeCall("PostQuitMessage", 9)});
    mCalls.reset();
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
}

TEST_F(WhatWindowsReceives, OfTheLocaleAndTheTimeZone) {
    Watch({"GetLocaleInfoA", "GetTimeZoneInformation"});
    platform.locale.Setting(LOCALE_SDECIMAL, 5);
    LocaleSource::TimeZone zone;
    mCalls->Replace("GetTimeZoneInformation", [](TIME_ZONE_INFORMATION* record) -> DWORD {
        *record = {};
        record->Bias = -60;
        ::lstrcpyW(record->StandardName, L"standard");
        record->StandardDate = {1, 10, 3, 5, 2, 15, 0, 0};
        record->StandardBias = 7;
        ::lstrcpyW(record->DaylightName, L"daylight");
        record->DaylightDate = {2, 4, 6, 8, 9, 11, 0, 0};
        record->DaylightBias = -59;
        return TIME_ZONE_ID_DAYLIGHT;
    });
    EXPECT_EQ(platform.locale.QueryTimeZone(zone), 2u);
    EXPECT_EQ(zone.bias, -60);
    EXPECT_EQ(zone.standardName, u"standard");
    EXPECT_EQ(zone.standardDate, (LocaleSource::ChangeDate{1, 10, 3, 5, 2, 15}));
    EXPECT_EQ(zone.standardBias, 7);
    EXPECT_EQ(zone.daylightName, u"daylight");
    EXPECT_EQ(zone.daylightDate, (LocaleSource::ChangeDate{2, 4, 6, 8, 9, 11}));
    EXPECT_EQ(zone.daylightBias, -59);
    ExpectCalls({MakeCall("GetLocaleInfoA", LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, Out(), 5),
                 MakeCall("GetTimeZoneInformation", Out())});
}

TEST_F(WhatWindowsReceives, OfTheClock) {
    Watch({"GetLocalTime", "QueryPerformanceCounter", "QueryPerformanceFrequency", "GetTickCount",
           "LocalFileTimeToFileTime"});
    mCalls->Replace("GetLocalTime", [](SYSTEMTIME* now) { *now = {2026, 11, 0, 22, 18, 0, 0, 500}; });
    mCalls->Replace("GetTickCount", []() -> DWORD { return 0xFFFFFFF0; });
    mCalls->Replace("QueryPerformanceCounter", [](LARGE_INTEGER* count) -> BOOL {
        count->QuadPart = 0x1234567890;
        return TRUE;
    });
    mCalls->Replace("QueryPerformanceFrequency", [](LARGE_INTEGER* frequency) -> BOOL {
        frequency->QuadPart = 0x2345678901;
        return TRUE;
    });
    mCalls->Replace("LocalFileTimeToFileTime", [](const FILETIME* local, FILETIME* utc) -> BOOL {
        *utc = {local->dwLowDateTime + 1, local->dwHighDateTime + 2};
        return TRUE;
    });
    EXPECT_NEAR(platform.clock.Now().days, 46348.75 + 0.5 / 86400, 1e-9);
    EXPECT_EQ(platform.clock.TickCount(), 0xFFFFFFF0u);
    EXPECT_EQ(platform.clock.Counter(), 0x1234567890);
    EXPECT_EQ(platform.clock.CounterFrequency(), 0x2345678901);
    EXPECT_EQ(platform.clock.LocalFileTimeToUtc(0x500000003), 0x700000004);
}

TEST_F(WhatWindowsReceives, OfTheTextOfAFailure) {
    Watch({"FormatMessageW"});
    mCalls->Replace("FormatMessageW", [](DWORD, const void*, DWORD, DWORD, wchar_t* place, DWORD, va_list*) -> DWORD {
        static constexpr wchar_t kText[] = L"There is no room. \r\n";
        auto* const text = static_cast<wchar_t*>(::LocalAlloc(LMEM_FIXED, sizeof kText));
        std::copy(std::begin(kText), std::end(kText), text);
        *reinterpret_cast<wchar_t**>(place) = text;
        return std::size(kText) - 1;
    });
    try {
        RaiseFailure(static_cast<HRESULT>(0x80030070));
    } catch (const ComponentError& error) {
        EXPECT_EQ(error.description, u"There is no room.") << "some texts of Windows have a blank before their end";
    }
    constexpr DWORD kFlags =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    ExpectCalls({MakeCall("FormatMessageW", kFlags, At<const void*>(0), 0x80030070u, 0, Out(), 0, nullptr)});
}

TEST_F(WhatWindowsReceives, OfMemoryUse) {
    Watch({"OpenProcess", "CloseHandle", "GetProcessMemoryInfo"});
    mCalls->Replace("OpenProcess", [](DWORD, BOOL, DWORD) { return At<HANDLE>(0x66); });
    mCalls->Replace("CloseHandle", &Yes<BOOL, HANDLE>);
    mCalls->Replace("GetProcessMemoryInfo", [](HANDLE, PROCESS_MEMORY_COUNTERS* counters, DWORD) -> BOOL {
        *counters = {sizeof *counters, 1, 2, 3, 4, 5, 6, 7, 8, 9};
        return TRUE;
    });
    EXPECT_EQ(platform.processMemory.Open(ProcessMemory::kQueryInformation, false, 77), 0x66);
    EXPECT_EQ(platform.processMemory.Open(16, true, 78), 0x66);
    EXPECT_EQ(platform.processMemory.Query(0x66), (ProcessMemory::Counters{1, 3, 5, 7, 8}));
    platform.processMemory.Close(0x66);
    ExpectCalls({MakeCall("OpenProcess", PROCESS_QUERY_INFORMATION, FALSE, 77), MakeCall("OpenProcess", 16, TRUE, 78),
                 MakeCall("GetProcessMemoryInfo", At<HANDLE>(0x66), Out(), sizeof(void*) == 4 ? 40 : 72),
                 MakeCall("CloseHandle", At<HANDLE>(0x66))});
}

TEST_F(WhatWindowsReceives, OfTheHost) {
    Watch({"GetComputerNameA", "GetUserNameA", "GetVersionExA", "WNetGetUserA", "GetModuleFileNameA",
           "GetSystemDirectoryA", "GetWindowsDirectoryA", "GetEnvironmentVariableW"});
    mCalls->Replace("WNetGetUserA", [](LPCSTR, LPSTR user, LPDWORD) -> DWORD {
        ::lstrcpyA(user, "somebody");
        return NO_ERROR;
    });
    mCalls->Replace("GetVersionExA", [](OSVERSIONINFOA* version) -> BOOL {
        version->dwMajorVersion = 5;
        version->dwMinorVersion = 6;
        version->dwBuildNumber = 7;
        version->dwPlatformId = 8;
        return TRUE;
    });
    Text name;
    EXPECT_TRUE(platform.host.ComputerName(name));
    EXPECT_TRUE(platform.host.UserName(name));
    EXPECT_TRUE(platform.host.NetworkUserName(name));
    EXPECT_EQ(name, u"somebody");
    HostApplication::Platform version;
    EXPECT_TRUE(platform.host.QueryPlatform(version));
    EXPECT_EQ(version.majorVersion, 5u);
    EXPECT_EQ(version.minorVersion, 6u);
    EXPECT_EQ(version.buildNumber, 7u);
    EXPECT_EQ(version.platformId, 8u);
    platform.host.ModuleFileName();
    std::string buffer(100, '#');
    platform.host.SystemDirectory(buffer);
    platform.host.WindowsDirectory(buffer);
    platform.host.EnvironmentVariable(u"kwo no such variable");
    const DWORD computerSize = 16;
    const DWORD userSize = UNLEN + 1;
    OSVERSIONINFOA asked = {};
    asked.dwOSVersionInfoSize = 148;
    ExpectCalls({MakeCall("GetComputerNameA", Out(), &computerSize), MakeCall("GetUserNameA", Out(), &userSize),
                 MakeCall("WNetGetUserA", nullptr, Out(), &userSize), MakeCall("GetVersionExA", &asked),
                 MakeCall("GetModuleFileNameA", ::GetModuleHandleW(nullptr), Out(), 255),
                 MakeCall("GetSystemDirectoryA", Out(), 100), MakeCall("GetWindowsDirectoryA", Out(), 100),
                 MakeCall("GetEnvironmentVariableW", L"kwo no such variable", Out(), 256)});
}

TEST_F(WhatWindowsReceives, OfErrorTexts) {
    Watch({"FormatMessageA", "GetModuleHandleA", "InternetGetLastResponseInfoA", "WNetGetLastErrorA"});
    mCalls->Replace("FormatMessageA", [](DWORD, LPCVOID, DWORD, DWORD, LPSTR text, DWORD, va_list*) -> DWORD {
        ::lstrcpyA(text, "a text");
        return 6;
    });
    mCalls->Replace("GetModuleHandleA", [](LPCSTR) { return At<HMODULE>(0x10000); });
    mCalls->Replace("InternetGetLastResponseInfoA", [](DWORD*, LPSTR text, DWORD* length) -> BOOL {
        ::lstrcpyA(text, "a response");
        *length = 10;
        return TRUE;
    });
    mCalls->Replace("WNetGetLastErrorA", [](DWORD*, LPSTR text, DWORD, LPSTR provider, DWORD) -> DWORD {
        ::lstrcpyA(text, "a net text");
        ::lstrcpyA(provider, "a provider");
        return NO_ERROR;
    });
    EXPECT_EQ(platform.errors.SystemText(5), u"a text");
    EXPECT_EQ(platform.errors.ModuleText(u"a module.dll", 12'007), u"a text");
    const auto response = platform.errors.LastInternetResponse(300);
    EXPECT_TRUE(response.succeeded);
    EXPECT_EQ(response.length, 10u);
    EXPECT_EQ(response.text, u"a response");
    const auto network = platform.errors.LastNetworkError();
    EXPECT_EQ(network.text, u"a net text");
    EXPECT_EQ(network.provider, u"a provider");
    const DWORD capacity = 300;
    ExpectCalls(
        {MakeCall("FormatMessageA", FORMAT_MESSAGE_FROM_SYSTEM, HANDLE(nullptr), 5, 0, Out(), 255, nullptr),
         MakeCall("GetModuleHandleA", "a module.dll"),
         MakeCall("FormatMessageA", FORMAT_MESSAGE_FROM_HMODULE, At<HANDLE>(0x10000), 12'007, 0, Out(), 255, nullptr),
         MakeCall("InternetGetLastResponseInfoA", Any(), Out(), &capacity),
         MakeCall("WNetGetLastErrorA", Any(), Out(), 256, Out(), 256)});
}

TEST_F(WhatWindowsReceives, OfTheRoomForAnInternetResponse) {
    Watch({"InternetGetLastResponseInfoA"});
    mCalls->Replace("InternetGetLastResponseInfoA", [](DWORD*, LPSTR, DWORD*) -> BOOL { return FALSE; });
    const DWORD none = 0;
    const DWORD one = 1;
    platform.errors.LastInternetResponse(none);
    platform.errors.LastInternetResponse(one);
    ExpectCalls({MakeCall("InternetGetLastResponseInfoA", Any(), nullptr, &none),
                 MakeCall("InternetGetLastResponseInfoA", Any(), Out(), &one)});
}

TEST_F(WhatWindowsReceives, OfFonts) {
    Watch({"SystemParametersInfoA", "OleCreateFontIndirect"});
    mCalls->Replace("SystemParametersInfoA", [](UINT, UINT, void* record, UINT) -> BOOL {
        auto& metrics = *static_cast<NONCLIENTMETRICSA*>(record);
        LONG height = 10;
        for (LOGFONTA* const font : {&metrics.lfCaptionFont, &metrics.lfSmCaptionFont, &metrics.lfMenuFont,
                                     &metrics.lfStatusFont, &metrics.lfMessageFont}) {
            *font = {};
            font->lfHeight = ++height;
            font->lfWidth = 1000;
            font->lfWeight = height * 10;
            font->lfItalic = static_cast<BYTE>(height * 2);
            font->lfUnderline = static_cast<BYTE>(height * 3);
            font->lfStrikeOut = static_cast<BYTE>(height * 4);
            ::lstrcpyA(font->lfFaceName, ("font " + std::to_string(height)).c_str());
        }
        return TRUE;
    });
    NonClientFonts fonts;
    EXPECT_TRUE(platform.fonts.QueryNonClient(fonts));
    std::int32_t height = 10;
    for (const FontRecord* const font :
         {&fonts.caption, &fonts.smallCaption, &fonts.menu, &fonts.status, &fonts.message}) {
        ++height;
        EXPECT_EQ(font->height, height);
        EXPECT_EQ(font->weight, height * 10);
        EXPECT_EQ(font->italic, height * 2);
        EXPECT_EQ(font->underline, height * 3);
        EXPECT_EQ(font->strikeOut, height * 4);
        EXPECT_EQ(font->faceName, u"font " + Text(1, u'1') + Text(1, static_cast<char16_t>(u'0' + height - 10)));
    }
    ExpectCalls({MakeCall("SystemParametersInfoA", SPI_GETNONCLIENTMETRICS, 0, Any(), 0, 340)});

    platform.fonts.MakeFont();
    FONTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    wchar_t noName[] = L"";
    description.lpstrName = noName;
    description.sWeight = FW_NORMAL;
    description.sCharset = DEFAULT_CHARSET;
    ExpectCalls({MakeCall("OleCreateFontIndirect", &description, IID_IDispatch, Out())});
}

TEST_F(WhatWindowsReceives, OfMetrics) {
    Watch({"GetSystemMetrics"}).Replace("GetSystemMetrics", [](int index) -> int { return 10'000 + index; });
    for (int index = 0; index < 100; ++index)
        EXPECT_EQ(platform.metrics.Metric(index), 10'000 + index);
}

}  // namespace
}  // namespace kwo::platform::windows
