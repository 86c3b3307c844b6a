#pragma once

#include <vector>

#include "deferred_events.h"
#include "host_window.h"
#include "navigator.h"

namespace kwohost {

class Control;

/// What the forms of a script share.
struct Forms {
    /// Those that are not closed, in the order of their creation. A form leaves the list when its window goes.
    std::vector<Form*> all;
    /// Over all of them; null for the usual one. The system owns it.
    HCURSOR pointer = nullptr;
    /// Of all controls.
    DeferredEvents events;
    /// How many boxes are open. While there is one, the user can use no form.
    int boxes = 0;
    /// The form that the script has shown last while a box was open; null for none. It comes to the front after the
    /// box.
    Form* behindTheBox = nullptr;
};

/// A window of its own, a child of an MDI form, or an MDI form.
/// Members that it does not have are procedures of the script: `form.Name` calls `form_Name`.
///
///     const auto form = MakeObject<Form>(host, forms, L"frmMain", Form::Kind::Plain, nullptr);
///     form->Open();
///
/// A form holds its controls, and each control holds its form, until the window goes.
class Form : public HostWindow {
public:
    /// Kinds do not change: a form is made as one.
    enum class Kind { Plain, MdiParent, MdiChild };

    /// `parent` is the MDI form of a child, else null. `host` and `forms` must outlive the form. Call Open next.
    Form(ScriptHost& host, Forms& forms, std::wstring name, Kind kind, Form* parent);
    /// Makes the window, hidden, and raises Load. Raises error 429 if the system has none.
    void Open();
    /// Destroys the window without raising Unload. Its controls go with it.
    void End();

    /// The window that the children of an MDI form are in; null for other forms.
    HWND MdiClient() const { return mMdiClient; }
    /// A key has been pressed or released in a window of the form.
    /// The objects that get events of its controls have `Form_KeyDown` and `Form_KeyUp` for keys anywhere in the form.
    /// With KeyPreview, the form has the event of its controls first. The key is used up when `code` becomes 0.
    void Preview(HostWindow& window, const wchar_t* event, SHORT& code, SHORT& shift);
    /// The pointer's shape over all forms; null for the usual one.
    HCURSOR Pointer() const { return mForms.pointer; }
    /// A window of the form has got or lost the focus.
    /// Fires GotFocus or LostFocus of it. The form itself gives the focus to its first tab stop.
    void OnFocus(HostWindow& window, bool hasIt);
    /// Lets the user use the form if the script allows it and no box is open.
    /// An MDI child is left to its MDI form, which is disabled while a box is open.
    void ApplyEnabled();
    /// Puts the form in front if it is visible.
    void ComeForward();
    /// How the focus and the keys move among the form's controls.
    Navigator& Navigation() { return mNavigator; }
    /// The events that arise inside the controls of the system.
    DeferredEvents& Events() { return mForms.events; }

protected:
    ~Form() override;

    ComPtr<Form> OwnerForm() override { return ComPtr<Form>(this); }
    HWND PlaceWindow() const override { return mParent ? mParent->mMdiClient : nullptr; }
    /// Of an MDI form, what its children have.
    RECT ClientArea() const override;
    /// Raises error 384 while the form is visible and minimised or maximised.
    void CheckMovable() const override;
    /// A hidden form has the place of its normal state, in whatever state its window is.
    RECT Place() const override;
    void Reposition(const RECT& place, UINT flags) override;
    /// Shows the form as Show does, or hides it.
    void SetVisible(bool isVisible) override;
    /// Puts a plain form in front of other windows, as far as the system lets it; an MDI child becomes the active one.
    /// The box that is open stays in front of all.
    void BringToFront() override;
    /// Counts when no box is open any more.
    void SetEnabled(bool isEnabled) override;
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    /// MDI forms and their children have rules of their own.
    LRESULT Default(UINT message, WPARAM first, LPARAM second) override;
    void OnGone() override;
    /// The script's procedures of this form, by their names.
    DISPID IdOfOther(std::wstring_view name) override;
    /// Calls such a procedure. Its error goes to the caller.
    HRESULT InvokeOther(DISPID id, DISPPARAMS& params, VARIANT* result, EXCEPINFO* exception) override;

private:
    /// The members of forms alone.
    void AddMembers();
    /// The script's AddControl: type, name and, if it is given, the container.
    void AddControl(Call& call);
    /// Adds a property for a button of the title bar, which the style gives the window. The form has it at first.
    void AddTitleButton(const wchar_t* name, LONG style);
    /// 0 normal, 1 minimised, 2 maximised; of a hidden form the state that it will have.
    LONG WindowState() const;
    /// Changes a visible form at once. Raises error 380 for a number beyond 0 to 2.
    void SetWindowState(LONG state);
    /// Shows the form in its state and brings it to the front.
    void Show();
    /// Closes the children of an MDI form, asks with Unload, and ends the form unless somebody refuses.
    void Close();
    /// False if a child is still there.
    bool CloseChildren();
    /// False if the script's Unload sets Cancel, and inside this Unload.
    bool MayClose();
    /// Gives the focus back to the control that had it last. False if there is none that can have it.
    bool RestoreFocus();
    /// Raises Activate if this MDI child has become the active one.
    void NoteActivity();
    /// Whether the window is hidden while it is minimised or maximised, and so is elsewhere than in its normal state.
    bool IsHiddenElsewhere() const;

    Forms& mForms;
    Kind mKind;
    ComPtr<Form> mParent;
    HWND mMdiClient = nullptr;
    bool mKeyPreview = false;
    /// What the script wants.
    bool mIsEnabled = true;
    /// The state that Show gives the window.
    LONG mStateWhenShown = 0;
    bool mIsOpen = false;
    /// While Unload runs.
    bool mIsUnloading = false;
    /// Of the other MDI children.
    bool mIsInFront = false;
    /// In front and visible.
    bool mIsActiveChild = false;
    /// Of the script's procedures that were asked for. Their places are their ids.
    std::vector<std::wstring> mOtherNames;
    /// In the order of their creation; empty when the window is gone.
    std::vector<ComPtr<Control>> mControls;
    Navigator mNavigator{mControls};
    /// The control that gets the focus when the form becomes active; null before any had it.
    HostWindow* mLastFocus = nullptr;
};

}  // namespace kwohost
