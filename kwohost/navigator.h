#pragma once

#include <vector>

#include "com_values.h"

namespace kwohost {

class CommandButton;
class Control;
class HostWindow;

/// How the keyboard and the pointer move among the controls of one form.
/// Every function may run code of the script, which may close the form: the caller holds the form.
class Navigator {
public:
    /// The form's controls in the order of their creation. The list must outlive the object.
    explicit Navigator(const std::vector<ComPtr<Control>>& controls) : mControls(controls) {}

    /// The control that has the focus, or a part of which has it; null if it is elsewhere.
    Control* Focused() const;
    /// Gives the focus to the first tab stop. Does nothing without one.
    void FocusFirst() const;
    /// Moves the focus to the next tab stop, or with `backwards` to the previous one, round and round.
    void FocusNext(bool backwards) const;
    /// Moves the focus to the next tab stop that is neither that window nor in it. Does nothing without one.
    void FocusNextOutside(HWND window) const;
    /// Gives the focus to the first control behind this one in the order of the Tab key that takes it.
    void FocusAfter(const Control& control) const;
    /// The user has pressed a button on a window of the form: it gets the focus if it is a tab stop.
    void FocusByPointer(const HostWindow& window) const;

    /// Tab moves the focus, Enter clicks the button with the focus or else the default button, Escape the cancel
    /// button. False for other keys, and when there is nothing to do. `shift` is that of the KeyDown event.
    bool TakesKey(WORD key, SHORT shift, bool isDown);
    /// Uses the control whose access key this is. If there are several, moves the focus to the next of them.
    /// False if there is none.
    bool PressAccessKey(wchar_t letter) const;

    /// The button that Enter clicks, and the one that Escape clicks; null for none. It must be a control of the form.
    CommandButton* DefaultButton() const { return mDefault; }
    CommandButton* CancelButton() const { return mCancel; }
    void SetDefaultButton(CommandButton* button);
    void SetCancelButton(CommandButton* button) { mCancel = button; }
    /// Draws the frame of the default button around the one that Enter would click now.
    void MarkDefaultButton() const;

private:
    /// In the order of the Tab key.
    std::vector<Control*> InOrder() const;
    std::vector<Control*> TabStops() const;
    /// The one with the focus, else the default button; null for none.
    CommandButton* ButtonOfEnter() const;

    const std::vector<ComPtr<Control>>& mControls;
    CommandButton* mDefault = nullptr;
    CommandButton* mCancel = nullptr;
};

}  // namespace kwohost
