#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace kwohost {

/// A box with a question, a line to write an answer in, and the buttons OK and Cancel.
struct InputBox {
    std::wstring prompt;
    std::wstring title;
    /// What the line has at first, selected.
    std::wstring answer = {};
    /// The upper left corner in pixels of the screen; the middle of the screen without one.
    std::optional<int> left = {};
    std::optional<int> top = {};

    /// Shows the box until the user closes it.
    /// Returns false if the user cancels or the box ends with its owner; `answer` is what the user has written else.
    /// Raises error 429 if the system has no window left, and E_OUTOFMEMORY.
    bool Ask(HWND owner);
};

}  // namespace kwohost
