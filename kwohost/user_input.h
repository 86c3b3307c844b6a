#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

#include "script_host.h"

namespace kwohost {

/// Input as from the user's own pointer and keyboard. Each function returns when its messages have been processed.
class UserInput {
public:
    /// `host` must outlive it.
    explicit UserInput(ScriptHost& host) : mHost(host) {}

    void MovePointer(POINT onScreen);
    /// 1 left, 2 right, 4 middle.
    void PressButton(LONG button);
    /// Releases the button that PressButton holds.
    void ReleaseButton(LONG button);
    /// Presses and releases at once, before any event runs: an event that waits for the release gets it.
    void ClickButton(LONG button);
    /// Presses now and releases after that time, even while an event waits for the release.
    void HoldButton(LONG button, DWORD milliseconds);
    /// Plain characters and {TAB} {ENTER} {LEFT} {RIGHT} {UP} {DOWN} {PGUP} {PGDN} {ESC} {SPACE}; + before a key is
    /// Shift, % is Alt. Raises error 5 for any other name.
    void TypeKeys(std::wstring_view keys);

private:
    void Settle();
    void Send(std::vector<INPUT> inputs);

    ScriptHost& mHost;
};

/// The keys to hold for a character: bit 1 Shift, 2 Ctrl, 4 Alt, as VkKeyScan returns them. AltGr is Ctrl with Alt.
std::vector<WORD> ModifiersOf(int shiftState);

}  // namespace kwohost
