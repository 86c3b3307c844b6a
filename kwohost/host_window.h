#pragma once

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "script_host.h"
#include "script_object.h"
#include "units.h"

namespace kwohost {

class Form;

/// The arguments of an event, in the order of the procedure. Those by reference stay the caller's.
class EventValues {
public:
    /// Adds a 16-bit number by value.
    EventValues& Whole(SHORT value);
    /// Adds a number of single precision by value.
    EventValues& Single(double value);
    /// Adds a reference. `value` must outlive the call.
    EventValues& Reference(SHORT& value);

    /// The arguments for a call, valid as long as this object.
    DISPPARAMS Params();

private:
    VARIANT& Add(VARTYPE type);

    std::vector<VARIANT> mValues;
    std::vector<VARIANT> mBackwards;
};

/// A window that scripts know as an object. The window holds a reference: the object lives at least as long. After
/// the window's end every use of it raises error 91.
class HostWindow : public ScriptObject {
public:
    /// The window. Raises error 91 if it is gone.
    HWND Window() const;
    /// Whether the window is there now.
    bool IsThere() const { return mWindow != nullptr; }
    /// The name that procedures for its events begin with.
    const std::wstring& Name() const { return mName; }
    /// What the window's own coordinates are counted in.
    Scale OwnScale() const { return mScale; }
    /// Calls the script's procedure `name_event`; it need not exist. A window that is gone has no events.
    void Fire(const wchar_t* event, EventValues values = {});

    /// The object behind a window; null for a window of somebody else.
    static HostWindow* From(HWND window);
    /// The window procedure of all our windows.
    static WNDPROC ProcedureOfClass() { return Procedure; }

protected:
    HostWindow(ScriptHost& host, std::wstring name) : mHost(host), mName(std::move(name)) {}
    ~HostWindow() override = default;

    /// Members that every window has.
    void AddWindowMembers();
    /// ScaleMode, ScaleX, ScaleY, ScaleWidth, ScaleHeight.
    void AddScaleMembers();
    void CreateWindowOf(const wchar_t* className, DWORD style, DWORD extendedStyle, HWND parent, RECT place);

    /// Held, because an event of the script may close and release it. Null when the window is gone.
    virtual ComPtr<Form> OwnerForm() = 0;
    /// What the window's place is counted in, and the window whose client area it is in; null for the screen.
    virtual Scale PlaceScale() const { return Scale::Twips; }
    virtual HWND PlaceWindow() const { return nullptr; }
    virtual RECT ClientArea() const;
    /// Raises the error of a window whose place cannot be changed now.
    virtual void CheckMovable() const {}
    virtual LRESULT OnMessage(UINT message, WPARAM first, LPARAM second);
    virtual LRESULT Default(UINT message, WPARAM first, LPARAM second);
    virtual void OnResized() { Fire(L"Resize"); }
    virtual void OnGone() {}
    void CheckUsable() const override { Window(); }
    ScriptHost& Host() const { return mHost; }

    RECT Place() const;
    void SetPlace(const RECT& place);
    /// SetWindowPos, which sends messages to this window. Raises the failure of their handling.
    void Reposition(const RECT& place, UINT flags);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);

    void AddPlace(const wchar_t* name, LONG RECT::*from, LONG RECT::*to, Axis axis);
    void FireMouse(const wchar_t* event, SHORT button, LPARAM place);
    LRESULT OnMouse(UINT message, WPARAM first, LPARAM second);
    bool OnKey(UINT message, WPARAM key);
    void DropCharacters();
    LRESULT OnFailure(const ScriptFailure& failure) noexcept;

    ScriptHost& mHost;
    std::wstring mName;
    HWND mWindow = nullptr;
    Scale mScale = Scale::Twips;
    bool mRaisesFailures = false;
    std::exception_ptr mFailure;
};

/// The windows' classes; to be called once before the first window.
void RegisterWindowClasses();
inline constexpr wchar_t kFormClass[] = L"KwohostForm";
inline constexpr wchar_t kControlClass[] = L"KwohostControl";

}  // namespace kwohost
