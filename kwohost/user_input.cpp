#include "user_input.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "com_values.h"

namespace kwohost {

namespace {

INPUT Mouse(DWORD flags, LONG x = 0, LONG y = 0) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dx = x;
    input.mi.dy = y;
    input.mi.dwFlags = flags;
    return input;
}

DWORD DownOf(LONG button) {
    return button == 2 ? MOUSEEVENTF_RIGHTDOWN : button == 4 ? MOUSEEVENTF_MIDDLEDOWN : MOUSEEVENTF_LEFTDOWN;
}

DWORD UpOf(LONG button) {
    return button == 2 ? MOUSEEVENTF_RIGHTUP : button == 4 ? MOUSEEVENTF_MIDDLEUP : MOUSEEVENTF_LEFTUP;
}

/// The buttons that are held, by the timers that release them. Global, because a timer has no other way to them.
std::map<UINT_PTR, LONG> theHeldButtons;

void CALLBACK ReleaseHeld(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    const auto held = theHeldButtons.find(timer);
    if (held == theHeldButtons.end()) return;
    INPUT up = Mouse(UpOf(held->second));
    SendInput(1, &up, sizeof up);
    theHeldButtons.erase(held);
}

/// The number pad has keys with the same codes; those of the keyboard's middle are told apart by this.
bool IsExtended(WORD code) {
    constexpr WORD kExtended[] = {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT};
    return std::find(std::begin(kExtended), std::end(kExtended), code) != std::end(kExtended);
}

INPUT Key(WORD code, bool isUp) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (isUp ? KEYEVENTF_KEYUP : 0) | (IsExtended(code) ? KEYEVENTF_EXTENDEDKEY : 0);
    return input;
}

struct NamedKey {
    std::wstring_view name;
    WORD code;
};

constexpr NamedKey kNamedKeys[] = {
    {L"TAB", VK_TAB},   {L"ENTER", VK_RETURN}, {L"LEFT", VK_LEFT}, {L"RIGHT", VK_RIGHT}, {L"UP", VK_UP},
    {L"DOWN", VK_DOWN}, {L"PGUP", VK_PRIOR},   {L"PGDN", VK_NEXT}, {L"ESC", VK_ESCAPE},  {L"SPACE", VK_SPACE}};

WORD CodeOf(std::wstring_view name) {
    for (const NamedKey& key : kNamedKeys)
        if (key.name == name) return key.code;
    Fail(RuntimeError::InvalidProcedureCall, L"There is no key {" + std::wstring(name) + L"}");
}

}  // namespace

std::vector<WORD> ModifiersOf(int shiftState) {
    constexpr std::pair<int, WORD> kModifiers[] = {{1, VK_SHIFT}, {2, VK_CONTROL}, {4, VK_MENU}};
    std::vector<WORD> keys;
    for (const auto& [bit, key] : kModifiers)
        if (shiftState & bit) keys.push_back(key);
    return keys;
}

void UserInput::Settle() {
    // Input comes back to the program by way of the system.
    mHost.Wait(std::chrono::milliseconds(60));
    WaitWhile([] { return HIWORD(GetQueueStatus(QS_INPUT)) != 0; });
}

void UserInput::WaitWhile(const std::function<bool()>& isSo) {
    constexpr std::chrono::milliseconds kTurn(10);
    constexpr std::chrono::seconds kLongest(5);
    const auto end = std::chrono::steady_clock::now() + kLongest;
    while (isSo() && std::chrono::steady_clock::now() < end)
        mHost.Wait(kTurn);
}

void UserInput::Send(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    Settle();
}

void UserInput::MovePointer(POINT onScreen) {
    // The middle of the pixel, so that rounding does not miss it.
    const auto normalised = [](LONG pixel, int pixels) {
        constexpr std::int64_t kWhole = 65536;
        return static_cast<LONG>(std::clamp<std::int64_t>((pixel * kWhole + kWhole / 2) / pixels, -kWhole, 2 * kWhole));
    };
    Send({Mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, normalised(onScreen.x, GetSystemMetrics(SM_CXSCREEN)),
                normalised(onScreen.y, GetSystemMetrics(SM_CYSCREEN)))});
}

void UserInput::PressButton(LONG button) {
    Send({Mouse(DownOf(button))});
}

void UserInput::ReleaseButton(LONG button) {
    Send({Mouse(UpOf(button))});
}

void UserInput::ClickButton(LONG button) {
    Send({Mouse(DownOf(button)), Mouse(UpOf(button))});
}

void UserInput::HoldButton(LONG button, DWORD milliseconds) {
    const UINT_PTR timer = SetTimer(nullptr, 0, milliseconds, ReleaseHeld);
    if (timer == 0) Fail(RuntimeError::OutOfMemory, L"The system has no timer to release the button");
    theHeldButtons[timer] = button;
    Send({Mouse(DownOf(button))});
    mHost.Wait(std::chrono::milliseconds(milliseconds));
    // The system's timers are late while there is much to do.
    WaitWhile([timer] { return theHeldButtons.contains(timer); });
    Settle();
}

void UserInput::TypeKeys(std::wstring_view keys) {
    std::vector<WORD> held;
    for (std::size_t at = 0; at < keys.size(); ++at) {
        if (keys[at] == L'+' || keys[at] == L'%') {
            held.push_back(keys[at] == L'+' ? VK_SHIFT : VK_MENU);
            continue;
        }
        WORD code = 0;
        if (keys[at] == L'{') {
            const std::size_t end = keys.find(L'}', at);
            if (end == std::wstring_view::npos) Fail(RuntimeError::InvalidProcedureCall, L"A { has no }");
            code = CodeOf(keys.substr(at + 1, end - at - 1));
            at = end;
        } else {
            const SHORT found = VkKeyScanW(keys[at]);
            if (found == -1) Fail(RuntimeError::InvalidProcedureCall, L"The keyboard has no such character");
            code = LOBYTE(found);
            for (const WORD modifier : ModifiersOf(HIBYTE(found)))
                if (std::find(held.begin(), held.end(), modifier) == held.end()) held.push_back(modifier);
        }
        std::vector<INPUT> inputs;
        for (const WORD modifier : held)
            inputs.push_back(Key(modifier, false));
        inputs.push_back(Key(code, false));
        inputs.push_back(Key(code, true));
        for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier)
            inputs.push_back(Key(*modifier, true));
        held.clear();
        Send(std::move(inputs));
    }
}

}  // namespace kwohost
