#pragma once

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "forwarding.h"
#include "script_host.h"
#include "script_object.h"
#include "units.h"

namespace kwohost {

class Form;

/// The arguments of an event, in the order of the procedure.
/// Those by reference stay the caller's.
///
///     Fire(L"Unload", EventValues().Reference(cancel));
class EventValues {
public:
    /// Adds a 16-bit number by value.
    EventValues& Whole(SHORT value);
    /// Adds a number of single precision by value.
    EventValues& Single(double value);
    /// Adds a reference. `value` must outlive the call, which may change it.
    EventValues& Reference(SHORT& value);

    /// The arguments for a call, valid as long as this object.
    DISPPARAMS Params();

private:
    VARIANT& Add(VARTYPE type);

    std::vector<VARIANT> mValues;
    std::vector<VARIANT> mBackwards;
};

/// A window that scripts know as an object.
/// The window holds a reference: the object lives at least as long. After the window's end every use of it raises
/// error 91.
/// Every event may run any code of the script, which may close the window: look at IsThere after Fire.
class HostWindow : public ScriptObject {
public:
    /// The window. Raises error 91 if it is gone or was never made.
    HWND Window() const;
    /// Whether the window is there now.
    bool IsThere() const { return mWindow != nullptr; }
    /// The name that procedures for its events begin with.
    const std::wstring& Name() const { return mName; }
    /// What the window's own coordinates are counted in.
    Scale OwnScale() const { return mScale; }
    /// Calls the script's procedure `name_event`; it need not exist.
    /// A window that is gone has no events.
    /// An error in the procedure is reported and ends the script.
    virtual void Fire(const wchar_t* event, EventValues values = {});
    /// Passes events on to members of an object that have the same names, each before the script's procedure gets it.
    /// `events` names them, separated by blanks; without any, all that the object has members for.
    void Forward(ComPtr<IDispatch> object, const std::wstring& events) { mForwarding.Add(std::move(object), events); }
    /// Ends what Forward began.
    void ForwardNothing() { mForwarding.Clear(); }
    /// Passes one event on to these objects alone. A window that is gone has no events.
    void PassOn(const std::wstring& event, const DISPPARAMS& params);

    /// Whether anybody gets that event: a procedure of the script, or an object that the events are forwarded to.
    bool Handles(const std::wstring& event) const;

    /// The object behind a window; null for 0 and for a window of somebody else. The caller gets no reference.
    static HostWindow* From(HWND window);
    /// The window procedure of all our windows.
    static WNDPROC ProcedureOfClass() { return Procedure; }

protected:
    HostWindow(ScriptHost& host, std::wstring name) : mHost(host), mName(std::move(name)) {}
    ~HostWindow() override = default;

    /// Adds the members that every window has: name, handle, place, visibility, focus.
    void AddWindowMembers();
    /// Adds ScaleMode, ScaleX, ScaleY, ScaleWidth, ScaleHeight.
    void AddScaleMembers();
    /// Makes the window. `place` is in pixels of the parent. Raises error 429 if the system has none.
    void CreateWindowOf(const wchar_t* className, DWORD style, DWORD extendedStyle, HWND parent, RECT place);
    /// Makes a window of the system's own the window of this object. It must have none.
    /// The object gets the window's messages first; Default is what the system does with them.
    void Adopt(HWND window);
    /// Gives the window back to the system; the object has none afterwards, and gets no OnGone.
    /// The caller holds the object and destroys the window.
    HWND Disown();

    /// The form that the window is on, or is.
    /// Held, because an event of the script may close and release it. Null when the window is gone.
    virtual ComPtr<Form> OwnerForm() = 0;
    /// What the window's place is counted in, and the window whose client area it is in; null for the screen.
    virtual Scale PlaceScale() const { return Scale::Twips; }
    virtual HWND PlaceWindow() const { return nullptr; }
    /// In pixels, with left and top 0.
    virtual RECT ClientArea() const;
    /// Raises the error of a window whose place cannot be changed now.
    virtual void CheckMovable() const {}
    /// A message for the window. The object lives until it returns.
    virtual LRESULT OnMessage(UINT message, WPARAM first, LPARAM second);
    /// A child of the system's own tells its container what happened to it: BN_CLICKED, EN_CHANGE, ...
    virtual void OnNotification(UINT) {}
    /// A child of the system's own asks its container for the colours to draw with.
    /// Returns the brush of the background, which this object owns; null for the system's choice.
    virtual HBRUSH OnColours(HDC) { return nullptr; }
    /// What the system, or the class of an adopted window, does with a message; 0 if the window is gone.
    virtual LRESULT Default(UINT message, WPARAM first, LPARAM second);
    /// The window has got another size.
    virtual void OnResized() { Fire(L"Resize"); }
    /// The window has gone. Lets go of what would keep this object alive.
    virtual void OnGone() {}
    void CheckUsable() const override { Window(); }
    /// Shows the window where it is, without giving it the focus, or hides it.
    virtual void SetVisible(bool isVisible) { ShowWindow(Window(), isVisible ? SW_SHOWNA : SW_HIDE); }
    /// Puts the window in front of its siblings.
    virtual void BringToFront() { BringWindowToTop(Window()); }
    /// Lets the user use the window, or not.
    virtual void SetEnabled(bool isEnabled) { EnableWindow(Window(), isEnabled); }
    ScriptHost& Host() const { return mHost; }

    /// In pixels of PlaceWindow.
    virtual RECT Place() const;
    /// What the system is asked for, so that the window gets this place.
    virtual RECT Requested(const RECT& place) const { return place; }
    /// Moves and sizes the window.
    /// Raises error 380 for a negative size. If handling the new size fails, puts the old place back and raises the
    /// failure.
    void SetPlace(const RECT& place);
    /// SetWindowPos, which sends messages to this window. Raises the failure of their handling.
    virtual void Reposition(const RECT& place, UINT flags);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);

    /// Adds one coordinate as a property.
    void AddPlace(const wchar_t* name, LONG RECT::*from, LONG RECT::*to, Axis axis);
    /// Fires an event with button, shift keys and the place in the window's own units.
    void FireMouse(const wchar_t* event, SHORT button, LPARAM place);
    /// A press captures the mouse until the last button is released. Adopted windows do so themselves.
    LRESULT OnMouse(UINT message, WPARAM first, LPARAM second);
    /// What an adopted window does with input after the event. Other windows do nothing of their own.
    LRESULT LeaveToSystem(UINT message, WPARAM first, LPARAM second);
    /// Passes a message about an adopted child on to the child's object.
    LRESULT OnChild(UINT message, WPARAM first, LPARAM second);
    /// A key and the character that the system makes of it.
    LRESULT OnKeyboard(UINT message, WPARAM first, LPARAM second);
    /// True if the key has been used up.
    bool OnKey(UINT message, WPARAM key);
    /// Shows the pointer that the script wants over the window.
    LRESULT OnSetCursor(WPARAM first, LPARAM second);
    /// Takes the characters of a used-up key out of the queue.
    void DropCharacters();
    /// Keeps a failure for Reposition, else ends the script with it.
    LRESULT OnFailure(const ScriptFailure& failure) noexcept;

    ScriptHost& mHost;
    std::wstring mName;
    /// Null before the window is made and after it is gone.
    HWND mWindow = nullptr;
    /// What an adopted window came with; null for a window of our own class.
    WNDPROC mSystemProcedure = nullptr;
    Scale mScale = Scale::Twips;
    /// The number of MousePointer.
    LONG mPointer = 0;
    /// Keeps the objects until the window is gone.
    Forwarding mForwarding;
    /// True while Reposition runs.
    bool mRaisesFailures = false;
    /// What an event raised while Reposition ran.
    std::exception_ptr mFailure;
};

/// Registers the windows' classes. Call it before the first window; a second call does nothing.
void RegisterWindowClasses();
inline constexpr wchar_t kFormClass[] = L"KwohostForm";
inline constexpr wchar_t kControlClass[] = L"KwohostControl";

}  // namespace kwohost
