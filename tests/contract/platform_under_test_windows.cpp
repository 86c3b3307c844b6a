#include <windows.h>
#include <objbase.h>
#include <olectl.h>
#include <sddl.h>

#include <cwchar>
#include <map>
#include <memory>
#include <optional>
#include <vector>

// The system's headers have macros of these names.
#undef DrawText
#undef SetEnvironmentVariable

#include "com_support/annotation_service.h"
#include "com_support/module_path.h"
#include "contract_test.h"
#include "platform/windows/windows_platform.h"
#include "support/american_formats.h"
#include "support/debug_output.h"
#include "support/foreground.h"
#include "support/temporary_folder.h"
#include "windows/scripted_dispatch.h"
#include "windows/thread_windows.h"
#include "windows_calls/windows_calls.h"

namespace kwo::contract {
namespace {

constexpr UINT kRunAction = WM_APP + 1;
constexpr wchar_t kClassName[] = L"KWOUtilContractWindow";

const wchar_t* Wide(const Text& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

/// The keys that the windows here have heard.
std::vector<std::string> heardKeys;

void HearKey(WPARAM key, LPARAM lParam) {
    constexpr LPARAM kWasDown = 1 << 30;
    constexpr WPARAM kNoKey = 0xE8;
    if (key == VK_SHIFT || key == VK_CONTROL || key == kNoKey) return;
    const std::string held = (lParam & kWasDown) != 0 ? "held " : "";
    const std::string shift = GetKeyState(VK_SHIFT) < 0 ? "Shift+" : "";
    const std::string control = GetKeyState(VK_CONTROL) < 0 ? "Ctrl+" : "";
    heardKeys.push_back(held + control + shift + (key == VK_TAB ? "Tab" : "key " + std::to_string(key)));
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN) HearKey(wParam, lParam);
    if (message == kRunAction) {
        const std::unique_ptr<std::function<void()>> action(reinterpret_cast<std::function<void()>*>(lParam));
        (*action)();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

/// Presses a button of the next dialog that is activated on this thread.
class BoxAnswer {
public:
    void Arm(std::int32_t button) {
        sButton = button;
        sHook = SetWindowsHookExW(WH_CBT, Procedure, nullptr, GetCurrentThreadId());
    }
    ~BoxAnswer() { Disarm(); }

private:
    static void Disarm() {
        if (sHook != nullptr) UnhookWindowsHookEx(sHook);
        sHook = nullptr;
    }
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam) {
        const auto window = reinterpret_cast<HWND>(wParam);
        wchar_t name[8] = {};
        if (code == HCBT_ACTIVATE && GetClassNameW(window, name, 8) > 0 && std::wstring(name) == L"#32770") {
            PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(sButton), 0);
            Disarm();
            return 0;
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline HHOOK sHook = nullptr;
    static inline std::int32_t sButton = 0;
};

class WindowsUnderTest final : public PlatformUnderTest {
public:
    WindowsUnderTest() {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = WindowProcedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = kClassName;
        RegisterClassW(&windowClass);
        mMessages = CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    }
    ~WindowsUnderTest() override {
        // A button that stays down would disturb every test behind.
        if (mMouseIsDown) MoveMouseButton(false);
        for (const HWND window : mWindows)
            DestroyWindow(window);
        DestroyWindow(mMessages);
        mAnnotations.reset();
        CoUninitialize();
    }

    platform::Platform& Services() override { return mServices; }
    bool IsWine() const override {
        return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    }
    bool HasAmericanFormats() const override { return test_support::HasAmericanFormats(); }
    void Post(std::function<void()> action) override {
        auto* copy = new std::function<void()>(std::move(action));
        ASSERT_TRUE(PostMessageW(mMessages, kRunAction, 0, reinterpret_cast<LPARAM>(copy)));
    }
    void RequestQuit() override { PostQuitMessage(3); }
    bool TakeQuitRequest() override {
        MSG message;
        return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && message.wParam == 3;
    }
    Handle MakeWindow(TextView title) override {
        mWindows.push_back(CreateWindowExW(0, kClassName, Wide(Text(title)), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10,
                                           200, 100, nullptr, nullptr, nullptr, nullptr));
        return static_cast<Handle>(reinterpret_cast<INT_PTR>(mWindows.back()));
    }
    void SetEnvironmentVariable(TextView name, TextView value) override {
        ::SetEnvironmentVariableW(Wide(Text(name)), Wide(Text(value)));
    }
    void Minimise(Handle window) override {
        ShowWindow(reinterpret_cast<HWND>(static_cast<INT_PTR>(window)), SW_MINIMIZE);
    }
    void PressMouse(Handle window) override {
        POINT middle = {50, 30};
        ClientToScreen(reinterpret_cast<HWND>(static_cast<INT_PTR>(window)), &middle);
        SetCursorPos(middle.x, middle.y);
        MoveMouseButton(true);
    }
    void ReleaseMouse() override { MoveMouseButton(false); }
    void RecreateTaskbar() override {
        // What is in the real taskbar stays there: the test takes it out itself.
        for (const HWND window : ThreadWindows())
            PostMessageW(window, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
        mServices.messages.ProcessPending();
    }
    std::size_t TopLevelWindows() override { return ThreadWindows().size(); }
    void InstallAnnotations() override {
        mAnnotations = std::make_unique<com_support::AnnotationService>([this](const com_support::Annotated& told) {
            if (!IsWindow(told.window)) return E_INVALIDARG;
            auto& read = mRead[told.window];
            if (told.isCleared) {
                read.erase(told.property);
            } else {
                const bool isNumber = told.property == L"Role" || told.property == L"State";
                const std::wstring quote = isNumber ? L"" : L"\"";
                read[told.property] = quote + told.value + quote;
            }
            return S_OK;
        });
    }
    std::vector<std::string> WhatReadersRead(Handle window) override {
        std::vector<std::string> lines;
        const auto& read = mRead[reinterpret_cast<HWND>(static_cast<INT_PTR>(window))];
        for (const wchar_t* const name :
             {L"Role", L"State", L"Name", L"Value", L"Description", L"KeyboardShortcut", L"DefaultAction"}) {
            const auto found = read.find(name);
            if (found == read.end()) continue;
            const std::wstring line = std::wstring(name) + L' ' + found->second;
            lines.emplace_back(line.begin(), line.end());
        }
        return lines;
    }
    void Hide(Handle window) override { ShowWindow(reinterpret_cast<HWND>(static_cast<INT_PTR>(window)), SW_HIDE); }
    void ListenToKeys() override {
        MakeWindow(u"keys");
        test_support::TakeForeground(mWindows.back());
        SetFocus(mWindows.back());
        mServices.messages.ProcessPending();
        heardKeys.clear();
    }
    void HoldControl(bool hold) override {
        // A display tells of its keys once a window has got the focus; late, the first press is then taken back.
        for (int tries = 0; tries < 20 && IsControlDown() != hold; ++tries) {
            INPUT input = {};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = VK_CONTROL;
            input.ki.dwFlags = hold ? 0 : KEYEVENTF_KEYUP;
            EXPECT_EQ(SendInput(1, &input, sizeof input), 1u);
            RunMessagesFor(100);
        }
        EXPECT_EQ(IsControlDown(), hold);
    }
    std::vector<std::string> KeysHeard(std::size_t count) override {
        mServices.messages.ProcessPending();
        for (int waits = 0; waits < 50 && heardKeys.size() < count; ++waits) {
            MsgWaitForMultipleObjectsEx(0, nullptr, 100, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
            mServices.messages.ProcessPending();
        }
        return heardKeys;
    }
    void AnswerNextBox(std::int32_t button) override { mAnswer.Arm(button); }
    Text InstalledClass() override { return u"Scripting.Dictionary"; }
    std::unique_ptr<ScriptedObject> MakeObject(TextView typeName) override {
        return std::make_unique<WindowsScriptedObject>(typeName);
    }
    LoadedPicture MakeIcon() override {
        PICTDESC description = {};
        description.cbSizeofstruct = sizeof description;
        description.picType = PICTYPE_ICON;
        description.icon.hicon = LoadIconW(nullptr, IDI_APPLICATION);
        return {MakePicture(description), static_cast<Handle>(reinterpret_cast<INT_PTR>(description.icon.hicon))};
    }
    platform::HostObjectRef MakeEmptyPicture() override {
        PICTDESC description = {};
        description.cbSizeofstruct = sizeof description;
        description.picType = PICTYPE_NONE;
        return MakePicture(description);
    }
    Text ExistingFile() override {
        const std::wstring path = com_support::ModulePath(nullptr);
        return Text(path.begin(), path.end());
    }
    Text EmptyFolder() override {
        const std::wstring& path = FolderPath();
        return Text(path.begin(), path.end());
    }
    void MakeFolder(TextView path) override { ASSERT_TRUE(CreateDirectoryW(Wide(Text(path)), nullptr)); }
    Text FolderThatTakesNoFile() override {
        // Wine lets the administrator of the machine beneath write everywhere but here.
        if (IsWine()) return u"Z:\\proc";
        SECURITY_ATTRIBUTES readAndDelete = {sizeof readAndDelete, nullptr, FALSE};
        ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;OICI;GRGXSD;;;WD)", SDDL_REVISION_1,
                                                             &readAndDelete.lpSecurityDescriptor, nullptr);
        const std::wstring path = FolderPath() + L"\\read only";
        CreateDirectoryW(path.c_str(), &readAndDelete);
        LocalFree(readAndDelete.lpSecurityDescriptor);
        return Text(path.begin(), path.end());
    }
    std::optional<std::string> ContentOf(TextView path) override {
        const HANDLE file = CreateFileW(Wide(Text(path)), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return std::nullopt;
        std::string content(GetFileSize(file, nullptr), '\0');
        DWORD read = 0;
        EXPECT_TRUE(ReadFile(file, content.data(), static_cast<DWORD>(content.size()), &read, nullptr));
        CloseHandle(file);
        content.resize(read);
        return content;
    }
    void ListenToDebugOutput() override { mDebugOutput.emplace(); }
    std::vector<std::string> DebugOutputHeard() override { return mDebugOutput->Lines(); }
    /// As contract_tests.rc says.
    HostProgram Host() override { return {u"KWOUtil contract", {3, 14, 9}}; }
    void ListenToHostLog() override {
        sLogged.clear();
        mCalls.emplace(std::vector<HMODULE>{GetModuleHandleW(nullptr)}, std::vector<std::string>{"ReportEventW"});
        mCalls->Replace("ReportEventW",
                        [](HANDLE, WORD, WORD, DWORD, PSID, WORD, DWORD, LPCWSTR* lines, LPVOID) -> BOOL {
                            sLogged.emplace_back(lines[0], lines[0] + std::wcslen(lines[0]));
                            return TRUE;
                        });
    }
    std::vector<std::string> HostLogHeard() override { return sLogged; }
    platform::Point NextLineBegins(Handle context) override {
        POINT place = {-1, -1};
        EXPECT_TRUE(GetCurrentPositionEx(reinterpret_cast<HDC>(static_cast<INT_PTR>(context)), &place));
        return {place.x, place.y};
    }
    void PutValue(TextView path, TextView name, std::uint32_t type, const std::string& bytes) override {
        // A string that ends where a zero byte happens to follow is stored with that zero.
        const std::string guarded = bytes + '#';
        HKEY key = nullptr;
        ASSERT_EQ(
            RegCreateKeyExW(HKEY_CURRENT_USER, Wide(Text(path)), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
            0);
        const std::string narrowName(name.begin(), name.end());
        EXPECT_EQ(RegSetValueExA(key, narrowName.c_str(), 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                                 static_cast<DWORD>(bytes.size())),
                  0);
        RegCloseKey(key);
    }
    void RemoveKeyTree(TextView path) override { RegDeleteTreeW(HKEY_CURRENT_USER, Wide(Text(path))); }

private:
    static platform::HostObjectRef MakePicture(PICTDESC description) {
        com_support::ComPtr<IDispatch> picture;
        EXPECT_EQ(OleCreatePictureIndirect(&description, IID_IPictureDisp, FALSE, picture.OutVoid()), S_OK);
        return platform::windows::MakeHostObject(picture.Get());
    }
    const std::wstring& FolderPath() {
        if (!mFolder) mFolder.emplace();
        return mFolder->Path();
    }
    static bool IsControlDown() { return GetAsyncKeyState(VK_CONTROL) < 0; }
    void RunMessagesFor(ULONGLONG milliseconds) {
        const ULONGLONG end = GetTickCount64() + milliseconds;
        for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
            MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
            mServices.messages.ProcessPending();
        }
    }
    void MoveMouseButton(bool down) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
        SendInput(1, &input, sizeof input);
        mMouseIsDown = down;
    }

    /// What it was told, by window and property.
    std::map<HWND, std::map<std::wstring, std::wstring>> mRead;
    std::unique_ptr<com_support::AnnotationService> mAnnotations;
    platform::windows::WindowsPlatform mPlatform{GetModuleHandleW(nullptr)};
    platform::Platform mServices = mPlatform.Services();
    HWND mMessages = nullptr;
    std::vector<HWND> mWindows;
    bool mMouseIsDown = false;
    BoxAnswer mAnswer;
    std::optional<test_support::TemporaryFolder> mFolder;
    std::optional<test_support::DebugOutput> mDebugOutput;
    std::optional<windows_calls::WindowsCalls> mCalls;
    static inline std::vector<std::string> sLogged;
};

}  // namespace

std::unique_ptr<PlatformUnderTest> MakePlatform() {
    return std::make_unique<WindowsUnderTest>();
}

}  // namespace kwo::contract
