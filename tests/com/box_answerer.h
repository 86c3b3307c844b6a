#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kwo::com_test {

/// Presses OK in every message box of this thread and remembers what the boxes said.
class BoxAnswerer {
public:
    BoxAnswerer() {
        Current() = this;
        mHook = SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId());
    }
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;
    ~BoxAnswerer() {
        UnhookWindowsHookEx(mHook);
        Current() = nullptr;
    }

    struct Box {
        std::wstring title;
        std::wstring text;
        bool hasIcon = false;
        int buttons = 0;
    };
    std::vector<Box> boxes;

private:
    static BoxAnswerer*& Current() {
        static thread_local BoxAnswerer* current = nullptr;
        return current;
    }
    static std::wstring TextOf(HWND window) {
        wchar_t text[2000] = L"";
        GetWindowTextW(window, text, 2000);
        return text;
    }
    static BOOL CALLBACK Look(HWND child, LPARAM parameter) {
        Box& box = *reinterpret_cast<Box*>(parameter);
        wchar_t name[64] = L"";
        GetClassNameW(child, name, 64);
        const bool isVisible = (GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) != 0;
        if (lstrcmpiW(name, L"Button") == 0 && isVisible) ++box.buttons;
        if (lstrcmpiW(name, L"Static") != 0) return TRUE;
        if ((GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
            box.hasIcon = box.hasIcon || isVisible;
        } else if (!TextOf(child).empty()) {
            box.text = TextOf(child);
        }
        return TRUE;
    }
    static LRESULT CALLBACK OnHook(int code, WPARAM first, LPARAM second) {
        const auto window = reinterpret_cast<HWND>(first);
        wchar_t name[64] = L"";
        if (code == HCBT_ACTIVATE && GetClassNameW(window, name, 64) > 0 && lstrcmpW(name, L"#32770") == 0) {
            Box box;
            box.title = TextOf(window);
            EnumChildWindows(window, Look, reinterpret_cast<LPARAM>(&box));
            Current()->boxes.push_back(box);
            PostMessageW(window, WM_COMMAND, IDOK, 0);
        }
        return CallNextHookEx(nullptr, code, first, second);
    }

    HHOOK mHook;
};

}  // namespace kwo::com_test
