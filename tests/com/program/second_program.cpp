// A program to be started by others. It says in the file that the environment variable KWO_REPORT names how it was
// started, shows a window that has its last argument as the title, and ends when the window is closed.
#include <windows.h>
#include <shellapi.h>

#include <cstdio>
#include <string>

namespace {

constexpr DWORD kLongestLifeMs = 60'000;

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_DESTROY || message == WM_TIMER) PostQuitMessage(0);
    return DefWindowProcW(window, message, first, second);
}

std::string Utf8(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    std::string bytes(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes;
}

void Report() {
    wchar_t path[1024];
    const DWORD length = GetEnvironmentVariableW(L"KWO_REPORT", path, 1024);
    if (length == 0 || length >= 1024) return;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    GetStartupInfoW(&start);
    const std::string text = Utf8(std::wstring(GetCommandLineW()) + L"\n" + std::to_wstring(start.wShowWindow) + L"\n");
    // Under its own name only when it is complete.
    const std::wstring unfinished = std::wstring(path) + L".new";
    FILE* const file = _wfopen(unfinished.c_str(), L"wb");
    if (file == nullptr) return;
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    MoveFileExW(unfinished.c_str(), path, MOVEFILE_REPLACE_EXISTING);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int mode) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = OnMessage;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"KWOSecondProgram";
    RegisterClassW(&windowClass);
    int count = 0;
    PWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const wchar_t* const title = count > 1 ? arguments[count - 1] : L"";
    const HWND window = CreateWindowExW(0, windowClass.lpszClassName, title, WS_OVERLAPPEDWINDOW, 300, 300, 200, 100,
                                        nullptr, nullptr, instance, nullptr);
    ShowWindow(window, mode);
    SetTimer(window, 1, kLongestLifeMs, nullptr);
    Report();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
