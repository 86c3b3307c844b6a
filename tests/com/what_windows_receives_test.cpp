// What a call to a member makes of it when it reaches Windows: the calls and their arguments, by the DLL's own imports.
// What a member answers is tested with its class.

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>

#include "com_test.h"
#include "dll_under_test.h"
#include "host_box.h"
#include "windows_calls/windows_calls.h"

namespace kwo::com_test {
namespace {

using windows_calls::Any;
using windows_calls::At;
using windows_calls::Bytes;
using windows_calls::MakeCall;
using windows_calls::Out;
using windows_calls::Same;
using windows_calls::WindowsCalls;
using windows_calls::Yes;

class WhatWindowsReceives : public ::testing::Test {
protected:
    WindowsCalls& Watch(const std::vector<std::string>& names) {
        mCalls = std::make_unique<WindowsCalls>(std::vector<HMODULE>{mLibrary.Module()}, names);
        return *mCalls;
    }
    void ExpectCalls(const std::vector<windows_calls::Call>& expected) { EXPECT_TRUE(Same(mCalls->Taken(), expected)); }
    void ExpectCallsOf(const Outcome& outcome, const std::vector<windows_calls::Call>& expected) {
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        ExpectCalls(expected);
    }

    Library mLibrary;
    std::unique_ptr<WindowsCalls> mCalls;
};

TEST_F(WhatWindowsReceives, FromTheRegistryMembers) {
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    Watch({"RegOpenKeyExA", "RegCreateKeyExA", "RegDeleteKeyA", "RegDeleteValueA", "RegQueryValueExA", "RegSetValueExA",
           "RegCloseKey"});
    mCalls->Replace("RegOpenKeyExA", [](HKEY, LPCSTR, DWORD, REGSAM, HKEY* key) -> LONG {
        *key = At<HKEY>(0x70);
        return ERROR_SUCCESS;
    });
    mCalls->Replace("RegCreateKeyExA",
                    [](HKEY, LPCSTR, DWORD, LPSTR, DWORD, REGSAM, SECURITY_ATTRIBUTES*, HKEY* key, DWORD*) -> LONG {
                        *key = At<HKEY>(0x71);
                        return ERROR_SUCCESS;
                    });
    mCalls->Replace("RegDeleteKeyA", [](HKEY, LPCSTR) -> LONG { return ERROR_SUCCESS; });
    mCalls->Replace("RegDeleteValueA", [](HKEY, LPCSTR) -> LONG { return ERROR_SUCCESS; });
    mCalls->Replace("RegSetValueExA",
                    [](HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) -> LONG { return ERROR_SUCCESS; });
    mCalls->Replace("RegQueryValueExA", [](HKEY, LPCSTR, DWORD*, DWORD* type, BYTE* data, DWORD* size) -> LONG {
        *type = REG_SZ;
        *size = std::min<DWORD>(*size, 3);
        std::memcpy(data, "ab", *size);
        return ERROR_SUCCESS;
    });
    mCalls->Replace("RegCloseKey", [](HKEY) -> LONG { return ERROR_SUCCESS; });
    const long machine = static_cast<long>(0x80000002);
    const auto root = HKEY_LOCAL_MACHINE;
    const auto opened = At<HKEY>(0x70);
    const auto created = At<HKEY>(0x71);
    const SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const auto query = [](HKEY key, DWORD capacity) {
        const DWORD noType = 0;
        return MakeCall("RegQueryValueExA", key, "name", nullptr, &noType, Out(), &capacity);
    };

    ExpectCallsOf(Call(registry.Get(), L"KWO_RegDeleteKey", {machine, L"key"}),
                  {MakeCall("RegDeleteKeyA", root, "key")});
    ExpectCallsOf(Call(registry.Get(), L"KWO_RegDeleteValue", {machine, L"key", L"name"}),
                  {MakeCall("RegOpenKeyExA", root, "key", 0, KEY_ALL_ACCESS, Out()),
                   MakeCall("RegDeleteValueA", opened, "name"), MakeCall("RegCloseKey", opened)});
    ExpectCallsOf(Call(registry.Get(), L"KWO_RegCreateKey", {machine, L"key"}),
                  {MakeCall("RegCreateKeyExA", root, "key", 0, Out(), 0, KEY_WRITE | KEY_QUERY_VALUE, &inherited, Out(),
                            Any(), "")});
    ExpectCallsOf(Call(registry.Get(), L"KWO_RegSetValue", {machine, L"key", L"name", L"value"}),
                  {MakeCall("RegCreateKeyExA", root, "key", 0, Out(), 0, KEY_WRITE, &inherited, Out(), Any(), ""),
                   MakeCall("RegSetValueExA", created, "name", 0, REG_SZ, Out(), 6, Bytes{std::string("value\0", 6)}),
                   MakeCall("RegCloseKey", created)});
    Bstr value(L"before");
    ExpectCallsOf(Call(registry.Get(), L"KWO_RegGetValue", {machine, L"key", L"name", Var::Ref(value.InOut())}),
                  {MakeCall("RegOpenKeyExA", root, "key", 0, KEY_QUERY_VALUE, Out()), query(opened, 1024),
                   MakeCall("RegCloseKey", opened)});
    EXPECT_EQ(value.Text(), L"ab");
    ExpectCallsOf(Call(registry.Get(), L"KWO_RegGetValueEx", {0x72, L"name", L"default"}),
                  {query(At<HKEY>(0x72), 260)});
    ExpectCallsOf(Call(registry.Get(), L"KWO_RegGetValueEx", {0x72, L"name", 1}), {query(At<HKEY>(0x72), 4)});
}

TEST_F(WhatWindowsReceives, FromTheMembersThatPlaceAForm) {
    const ComPtr<IDispatch> utility = Create(L"KWOUtility");
    MemberObject form;
    for (const wchar_t* const name : {L"WindowState", L"Left", L"Top", L"Width", L"Height"})
        form.Property(name, Var(0));
    Watch({"GetSystemMetrics", "GetDeviceCaps"});
    mCalls->Replace("GetSystemMetrics", [](int metric) -> int { return metric == SM_CXSCREEN ? 1000 : 500; });
    mCalls->Replace("GetDeviceCaps", [](HDC, int axis) -> int { return axis == LOGPIXELSX ? 96 : 144; });
    EXPECT_EQ(Hex(Call(utility.Get(), L"KWO_CenterForm", {static_cast<IDispatch*>(&form)}).status), Hex(S_OK));
    EXPECT_EQ(NumberIn(form.values[L"Left"]), 1000 * 15 / 2);
    EXPECT_EQ(NumberIn(form.values[L"Top"]), 500 * 10 / 2);
    for (const auto& call : mCalls->Taken()) {
        if (call[0] == "GetSystemMetrics") {
            EXPECT_TRUE(call[1] == std::to_string(SM_CXSCREEN) || call[1] == std::to_string(SM_CYSCREEN)) << call[1];
        }
    }
}

TEST_F(WhatWindowsReceives, FromLoadApp) {
    const ComPtr<IDispatch> utility = Create(L"KWOUtility");
    Watch({"EnumWindows", "CreateProcessW", "CloseHandle", "MessageBoxA"});
    mCalls->Replace("EnumWindows", [](WNDENUMPROC, LPARAM) -> BOOL { return TRUE; });
    mCalls->Replace("CreateProcessW",
                    [](LPCWSTR, LPWSTR, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, LPVOID, LPCWSTR,
                       STARTUPINFOW*, PROCESS_INFORMATION* process) -> BOOL {
                        *process = {At<HANDLE>(0x110), At<HANDLE>(0x220), 33, 44};
                        return TRUE;
                    });
    mCalls->Replace("CloseHandle", &Yes<BOOL, HANDLE>);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWMAXIMIZED;
    const Outcome started =
        Call(utility.Get(), L"KWO_LoadApp", {L"C:\\folder\\", L"program.exe", L"argument", 3, L"its title"});
    EXPECT_EQ(started.result.lVal, 33);
    const auto enumerate = MakeCall("EnumWindows", Any(), Any());
    const auto create = MakeCall("CreateProcessW", nullptr, Any(), nullptr, nullptr, FALSE, 0, HANDLE(nullptr), nullptr,
                                 &start, Out(), L"C:\\folder\\program.exe argument");
    ExpectCallsOf(started, {enumerate, create, MakeCall("CloseHandle", At<HANDLE>(0x220)),
                            MakeCall("CloseHandle", At<HANDLE>(0x110))});

    mCalls->Replace("CreateProcessW",
                    [](LPCWSTR, LPWSTR, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, LPVOID, LPCWSTR,
                       STARTUPINFOW*, PROCESS_INFORMATION*) -> BOOL { return FALSE; });
    mCalls->Replace("MessageBoxA", [](HWND, LPCSTR, LPCSTR, UINT) -> int { return IDOK; });
    const Outcome failed =
        Call(utility.Get(), L"KWO_LoadApp", {L"C:\\folder\\", L"program.exe", L"argument", 3, L"its title"});
    EXPECT_EQ(failed.result.lVal, 0);
    ExpectCallsOf(failed, {enumerate, create,
                           MakeCall("MessageBoxA", Any(), Any(), Any(), MB_ICONEXCLAMATION | MB_SETFOREGROUND)});
}

TEST_F(WhatWindowsReceives, FromATimer) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    Watch({"SetTimer", "KillTimer"});
    mCalls->Replace("SetTimer", [](HWND, UINT_PTR, UINT, TIMERPROC) -> UINT_PTR { return 4711; });
    mCalls->Replace("KillTimer", &Yes<BOOL, HWND, UINT_PTR>);
    EXPECT_EQ(Hex(Let(timer.Get(), L"Interval", 20'000).status), Hex(S_OK));
    ExpectCallsOf(Let(timer.Get(), L"Enabled", true), {MakeCall("SetTimer", HWND(nullptr), 0, 20'000, Any())});
    ExpectCallsOf(Let(timer.Get(), L"Enabled", false), {MakeCall("KillTimer", HWND(nullptr), 4711)});
    // What is far ahead is waited for in slices.
    const auto slice = MakeCall("SetTimer", HWND(nullptr), 0, 30'000, Any());
    ExpectCallsOf(Call(timer.Get(), L"AddRelativeAlarm", {86'400'000, 1}), {slice});
    ExpectCallsOf(Call(timer.Get(), L"CancelTimers"), {MakeCall("KillTimer", HWND(nullptr), 4711)});
}

TEST_F(WhatWindowsReceives, FromTheMetrics) {
    const ComPtr<IDispatch> metrics = Create(L"KWOSysMetrics");
    Watch({"GetSystemMetrics"}).Replace("GetSystemMetrics", [](int index) -> int { return 1000 + index; });
    EXPECT_EQ(Hex(Let(metrics.Get(), L"ScaleMode", 3).status), Hex(S_OK));
    const struct {
        const wchar_t* member;
        int index;
    } rows[] = {
        {L"ScreenX", SM_CXSCREEN},
        {L"ScreenY", SM_CYSCREEN},
        {L"VScrollX", SM_CXVSCROLL},
        {L"HScrollY", SM_CYHSCROLL},
        {L"BorderX", SM_CXBORDER},
        {L"BorderY", SM_CYBORDER},
        {L"DialogFrameX", SM_CXDLGFRAME},
        {L"DialogFrameY", SM_CYDLGFRAME},
        {L"VScrollThumbY", SM_CYVTHUMB},
        {L"HScrollThumbX", SM_CXHTHUMB},
        {L"IconX", SM_CXICON},
        {L"IconY", SM_CYICON},
        {L"CursorX", SM_CXCURSOR},
        {L"CursorY", SM_CYCURSOR},
        {L"FullScreenWindowX", SM_CXFULLSCREEN},
        {L"FullScreenWindowY", SM_CYFULLSCREEN},
        {L"WindowMinX", SM_CXMIN},
        {L"WindowMinY", SM_CYMIN},
        {L"WindowBtnX", SM_CXSIZE},
        {L"WindowBtnY", SM_CYSIZE},
        {L"FrameX", SM_CXFRAME},
        {L"FrameY", SM_CYFRAME},
        {L"MinTrackX", SM_CXMINTRACK},
        {L"MinTrackY", SM_CYMINTRACK},
        {L"DoubleClickX", SM_CXDOUBLECLK},
        {L"DoubleClickY", SM_CYDOUBLECLK},
        {L"IconSpacingX", SM_CXICONSPACING},
        {L"IconSpacingY", SM_CYICONSPACING},
        {L"DragX", SM_CXDRAG},
        {L"DragY", SM_CYDRAG},
        {L"Edge3DX", SM_CXEDGE},
        {L"Edge3DY", SM_CYEDGE},
        {L"FixedFrameX", SM_CXFIXEDFRAME},
        {L"FixedFrameY", SM_CYFIXEDFRAME},
        {L"MaximizedX", SM_CXMAXIMIZED},
        {L"MaximizedY", SM_CYMAXIMIZED},
        {L"MaxTrackX", SM_CXMAXTRACK},
        {L"MaxTrackY", SM_CYMAXTRACK},
        {L"MenuCheckX", SM_CXMENUCHECK},
        {L"MenuCheckY", SM_CYMENUCHECK},
        {L"MenuSizeX", SM_CXMENUSIZE},
        {L"MenuSizeY", SM_CYMENUSIZE},
        {L"MinimizedX", SM_CXMINIMIZED},
        {L"MinimizedY", SM_CYMINIMIZED},
        {L"MinSpacingX", SM_CXMINSPACING},
        {L"MinSpacingY", SM_CYMINSPACING},
        {L"SizeFrameX", SM_CXSIZEFRAME},
        {L"SizeFrameY", SM_CYSIZEFRAME},
        {L"SmallIconX", SM_CXSMICON},
        {L"SmallIconY", SM_CYSMICON},
        {L"SmallBtnX", SM_CXSMSIZE},
        {L"SmallBtnY", SM_CYSMSIZE},
        {L"DebugVersion", SM_DEBUG},
        {L"SwapButtons", SM_SWAPBUTTON},
        {L"SingleMenuBarY", SM_CYMENU},
        {L"VScrollArrowY", SM_CYVSCROLL},
        {L"HScrollArrowX", SM_CXHSCROLL},
        {L"KanjiWindowY", SM_CYKANJIWINDOW},
        {L"MousePresent", SM_MOUSEPRESENT},
        {L"CaptionAreaY", SM_CYCAPTION},
        {L"SmallCaptionAreaY", SM_CYSMCAPTION},
        {L"MenuDropRightAligned", SM_MENUDROPALIGNMENT},
        {L"PenWindows", SM_PENWINDOWS},
        {L"DBCSEnabled", SM_DBCSENABLED},
        {L"MouseButtons", SM_CMOUSEBUTTONS},
        {L"Arrange", SM_ARRANGE},
        {L"CleanBoot", SM_CLEANBOOT},
        {L"MidEastEnabled", SM_MIDEASTENABLED},
        {L"Network", SM_NETWORK},
        {L"Secure", SM_SECURE},
        {L"SlowMachine", SM_SLOWMACHINE},
    };
    EXPECT_EQ(std::size(rows), 71u);
    for (const auto& row : rows) {
        const Outcome outcome = Call(metrics.Get(), row.member);
        ExpectCallsOf(outcome, {MakeCall("GetSystemMetrics", row.index)});
        if (outcome.result.vt != VT_I4) continue;
        EXPECT_EQ(outcome.result.lVal, 1000 + row.index) << Narrow(row.member);
    }
}

class WhatWindowsReceivesOfDrawing : public WhatWindowsReceives {
protected:
    void SetUp() override {
        mForm.Method(L"OnButtonClick", [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        mForm.Property(L"ActiveControl", Var(static_cast<IDispatch*>(&mBox)));
    }
    void TearDown() override { mForm.values.clear(); }

    MemberObject mForm;
    HostBox mBox{80, 30, &mForm};
};

TEST_F(WhatWindowsReceivesOfDrawing, FromAButton) {
    const ComPtr<IDispatch> button = Create(L"KWOPicBtn");
    Watch({"GetStockObject", "GetClientRect", "DrawEdge", "DrawTextA", "FrameRect"});
    const auto brush = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    const HDC context = mBox.Context();
    const RECT area = {0, 0, 80, 30};
    const RECT raised = {2, 2, 78, 28};
    const RECT pressed = {3, 3, 79, 29};
    const UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_WORDBREAK | DT_END_ELLIPSIS;
    Call(button.Get(), L"Create", {static_cast<IDispatch*>(&mBox), L"&Save"});
    auto calls = mCalls->Taken();
    std::erase_if(calls, [](const auto& call) { return call[0] == "GetStockObject"; });
    EXPECT_TRUE(Same(calls, {MakeCall("GetClientRect", mBox.Window(), Any()),
                             MakeCall("DrawEdge", context, &area, EDGE_RAISED, BF_RECT),
                             MakeCall("DrawTextA", context, "&Save", 5, &raised, format)}));
    ExpectCallsOf(
        Call(button.Get(), L"MouseDown", {1, 0, 300.0, 150.0}),
        {MakeCall("DrawEdge", context, &area, EDGE_SUNKEN, BF_RECT), MakeCall("FrameRect", context, &area, brush),
         MakeCall("DrawTextA", context, "&Save", 5, &pressed, format)});
    ExpectCallsOf(Let(button.Get(), L"TextAlignment", 3), {});
    ExpectCallsOf(Let(button.Get(), L"MultiLine", false), {});
    Call(button.Get(), L"MouseUp", {1, 0, 300.0, 150.0});
    calls = mCalls->Taken();
    ASSERT_FALSE(calls.empty());
    const UINT left = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS;
    EXPECT_TRUE(Same({calls.back()}, {MakeCall("DrawTextA", context, "&Save", 5, &raised, left)}));
}

TEST_F(WhatWindowsReceivesOfDrawing, FromACalendar) {
    const ComPtr<IDispatch> view = Create(L"KWOMonthView");
    HostBox box(240, 200, &mForm);
    Watch({"GetClientRect", "DrawEdge", "DrawFrameControl", "DrawTextA", "DrawFocusRect"});
    Call(view.Get(), L"Create", {static_cast<IDispatch*>(&box), Var::Date(46347)});
    const HDC context = box.Context();
    const std::string handle = windows_calls::Written(context);
    std::map<std::string, int> counts;
    std::vector<std::string> texts;
    for (const auto& call : mCalls->Taken()) {
        ++counts[call[0]];
        if (call[0] == "GetClientRect") continue;
        EXPECT_EQ(call[1], handle) << windows_calls::TextOfCall(call);
        if (call[0] == "DrawTextA") texts.push_back(call[2]);
        if (call[0] == "DrawFrameControl") {
            EXPECT_EQ(call[3], std::to_string(DFC_SCROLL));
        }
    }
    // Two arrows, and the texts: month and year, the names of the days, the days.
    EXPECT_EQ(counts["DrawFrameControl"], 2);
    EXPECT_EQ(texts.size(), 1u + 7u + 30u);
    EXPECT_EQ(std::ranges::count(texts, "'30'"), 1);
    EXPECT_EQ(std::ranges::count(texts, "'31'"), 0);
}

}  // namespace
}  // namespace kwo::com_test
