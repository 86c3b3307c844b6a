#pragma once

#include <windows.h>

#include <functional>
#include <string_view>
#include <vector>

#include "script_host.h"

namespace kwohost {

/// Input as from the user's own pointer and keyboard.
/// Each function returns when its messages have been processed, so code of the script runs inside.
///
///     input.MovePointer(place);
///     input.ClickButton(1);
///     input.TypeKeys(L"%s{ENTER}");  // Alt+S, then Enter
class UserInput {
public:
    /// `host` must outlive it.
    explicit UserInput(ScriptHost& host) : mHost(host) {}

    /// In pixels of the screen.
    void MovePointer(POINT onScreen);
    /// Presses a button where the pointer is: 1 left, 2 right, 4 middle. Any other number means left.
    void PressButton(LONG button);
    /// Releases the button that PressButton holds. Nothing happens in the program if it is not held.
    void ReleaseButton(LONG button);
    /// Presses and releases at once, before any event runs: an event that waits for the release gets it.
    void ClickButton(LONG button);
    /// Presses now and releases after that time, even while an event waits for the release.
    void HoldButton(LONG button, DWORD milliseconds);
    /// Plain characters and {TAB} {ENTER} {LEFT} {RIGHT} {UP} {DOWN} {PGUP} {PGDN} {ESC} {SPACE}; + before a key is
    /// Shift, % is Alt.
    /// Raises error 5 for any other name, for a { without a } and for a character that the keyboard does not have; the
    /// keys before it have been typed.
    void TypeKeys(std::wstring_view keys);

private:
    /// Waits until input has come back by way of the system and no more is left.
    void Settle();
    /// Gives up after some seconds.
    void WaitWhile(const std::function<bool()>& isSo);
    /// Sends all at once, so that nothing comes between a key and those that are held with it, and waits.
    void Send(std::vector<INPUT> inputs);

    ScriptHost& mHost;
};

/// The keys to hold for a character: bit 1 Shift, 2 Ctrl, 4 Alt, as VkKeyScan returns them. AltGr is Ctrl with Alt.
std::vector<WORD> ModifiersOf(int shiftState);

}  // namespace kwohost
