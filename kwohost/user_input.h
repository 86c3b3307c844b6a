#pragma once

#include <windows.h>

#include <string_view>

namespace kwohost {

/// Input as the user's own pointer and keyboard make it. Each returns when its messages have been processed.
void MovePointer(POINT onScreen);
/// 1 left, 2 right, 4 middle.
void PressButton(LONG button);
void ReleaseButton(LONG button);
/// Down and up at once, before anybody sees either: an event that waits for the release gets it.
void ClickButton(LONG button);
/// The release comes by itself after that time, also while an event waits for it.
void HoldButton(LONG button, DWORD milliseconds);
/// Plain characters and {TAB} {ENTER} {LEFT} {RIGHT} {UP} {DOWN} {PGUP} {PGDN} {ESC} {SPACE}; + before a key is shift,
/// % is Alt. Raises error 5 for a name that is none of these.
void TypeKeys(std::wstring_view keys);

}  // namespace kwohost
