#pragma once

#include <functional>
#include <string>
#include <utility>

#include "control.h"
#include "font.h"

namespace kwohost {

/// A control that the system draws and runs, such as a text box.
/// The script's events come first; what they leave of a key or a press is the system's.
class SystemControl : public Control {
public:
    SystemControl(ScriptHost& host, Form& form, std::wstring name) : Control(host, form, std::move(name), true) {}

protected:
    ~SystemControl() override;

    /// A window of the system.
    struct Shape {
        const wchar_t* className;
        /// Besides those of every control.
        DWORD style;
        DWORD extendedStyle;
    };
    /// The window that the settings ask for.
    virtual Shape WantedShape() const = 0;
    /// A new window is there, with nothing but its font: gives it the settings that are not in its shape.
    virtual void OnMade() {}
    /// What puts the window's content into another window that has just been made.
    virtual std::function<void()> KeepContent() const = 0;
    /// Gives a new value to a setting that the window has for life: a window of the wanted shape takes the place of the
    /// present one. No event tells of it. Raises error 429 if the system has no window; nothing has changed then.
    template <class Value>
    void ChangeShape(Value& setting, Value wanted) {
        if (wanted == setting) return;
        const Value before = std::exchange(setting, wanted);
        try {
            Remake();
        } catch (...) {
            setting = before;
            throw;
        }
    }

    /// Adds SelStart, SelLength and SelText of the edit field.
    void AddSelectionMembers();
    /// The window with the text that the user edits.
    virtual HWND EditField() const { return Window(); }
    /// In characters, from the first one on.
    struct Selection {
        DWORD begin = 0;
        DWORD end = 0;
    };
    Selection SelectedText() const;
    /// The argument as a number of characters. Raises error 380 for a negative one.
    static LONG CharactersOf(Call& call, const wchar_t* member);

    /// Adds Font.
    void AddFont();
    /// Adds ForeColor and BackColor with the system's colours of those numbers.
    void AddColours(LONG text, LONG background);
    /// Adds a setting with numbers from 0 to `last` that the window has for life. Others raise error 380.
    void AddShapeSetting(const wchar_t* name, LONG& value, LONG last);

    /// The window's own text.
    std::wstring WindowText() const;
    LRESULT Send(UINT message, WPARAM first = 0, LPARAM second = 0) const {
        return SendMessageW(Window(), message, first, second);
    }
    LRESULT SendText(UINT message, WPARAM first, const std::wstring& text) const {
        return Send(message, first, reinterpret_cast<LPARAM>(text.c_str()));
    }
    /// Changes the window for the script: what the window tells meanwhile is not the user's doing and raises no event.
    template <class Change>
    void Quietly(Change&& change) {
        const Quiet quiet(mIsQuiet);
        std::forward<Change>(change)();
    }
    /// Fires an event once the code of the system has returned. See DeferredEvents.
    void FireLater(const wchar_t* event);

    /// What the user does in the window: BN_CLICKED, EN_CHANGE, ... The system's code is still running.
    virtual void OnUse(UINT notification) = 0;

    void MakeWindow(HWND parent) override;
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    void OnNotification(UINT code) override {
        if (!mIsQuiet) OnUse(code);
    }
    HBRUSH OnColours(HDC context) override;
    void OnResized() override {
        if (!mIsQuiet) Control::OnResized();
    }

private:
    /// Sets a flag for its own lifetime.
    class Quiet {
    public:
        explicit Quiet(bool& flag) : mFlag(flag), mBefore(std::exchange(flag, true)) {}
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;
        ~Quiet() { mFlag = mBefore; }

    private:
        bool& mFlag;
        bool mBefore;
    };

    HWND NewWindow(HWND parent) const;
    /// The window is there: gives it font and settings.
    void Prepare(HWND made);
    void Remake();
    /// What is beyond the text counts as its end.
    void SelectText(LONGLONG begin, LONGLONG length) const;
    void AddColour(const wchar_t* name, LONG& colour);
    void ApplyFont() const { Send(WM_SETFONT, reinterpret_cast<WPARAM>(mFont.Handle()), TRUE); }

    Font mFont;
    LONG mForeColour = 0;
    LONG mBackColour = 0;
    bool mHasColours = false;
    /// Of the background; null before it is first drawn.
    HBRUSH mBrush = nullptr;
    COLORREF mBrushColour = 0;
    /// True while the script changes the window.
    bool mIsQuiet = false;
};

}  // namespace kwohost
