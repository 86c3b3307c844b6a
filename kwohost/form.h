#pragma once

#include <vector>

#include "host_window.h"

namespace kwohost {

class Control;

/// What the forms of a script share.
struct Forms {
    std::vector<Form*> all;     ///< that are not closed, in the order of their creation
    HCURSOR pointer = nullptr;  ///< over all of them; null for the usual one
};

/// A window of its own, a child of an MDI form, or an MDI form. Members that it does not have are procedures of the
/// script: `form.Name` calls `form_Name`.
class Form : public HostWindow {
public:
    enum class Kind { Plain, MdiParent, MdiChild };

    /// `parent` is the MDI form of a child. Call Open next.
    Form(ScriptHost& host, Forms& forms, std::wstring name, Kind kind, Form* parent);
    /// Makes the window, hidden. Raises error 429 if the system has none.
    void Open();
    /// Destroys the window without raising Unload.
    void End();

    /// The window that the children of an MDI form are in; null for other forms.
    HWND MdiClient() const { return mMdiClient; }
    /// Whether the form gets the key events of its controls first.
    bool PreviewsKeys() const { return mKeyPreview; }
    /// The pointer's shape over all forms; null for the usual one.
    HCURSOR Pointer() const { return mForms.pointer; }
    /// A window of the form has got or lost the focus. The form gives it to its first tab stop.
    void OnFocus(HostWindow& window, bool hasIt);
    /// The user has pressed a button on a window of the form: it gets the focus if it is a tab stop.
    void FocusByPointer(HostWindow& window);
    /// Moves the focus to the next tab stop, or with `backwards` to the previous one, round and round.
    void FocusNext(bool backwards);

protected:
    ~Form() override;

    ComPtr<Form> OwnerForm() override { return ComPtr<Form>(this); }
    HWND PlaceWindow() const override { return mParent ? mParent->mMdiClient : nullptr; }
    RECT ClientArea() const override;
    void CheckMovable() const override;
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    LRESULT Default(UINT message, WPARAM first, LPARAM second) override;
    void OnGone() override;
    DISPID IdOfOther(std::wstring_view name) override;
    HRESULT InvokeOther(DISPID id, DISPPARAMS& params, VARIANT* result, EXCEPINFO* exception) override;

private:
    void AddMembers();
    void AddControl(Call& call);
    LONG WindowState() const;
    void SetWindowState(LONG state);
    void Show();
    void Close();
    bool CloseChildren();
    bool MayClose();
    void NoteActivity();
    void BringToFront();
    std::vector<Control*> TabStops() const;

    Forms& mForms;
    Kind mKind;
    ComPtr<Form> mParent;
    HWND mMdiClient = nullptr;
    bool mKeyPreview = false;
    LONG mStateWhenShown = 0;
    bool mIsOpen = false;
    bool mIsInFront = false;                ///< of the other MDI children
    bool mIsActiveChild = false;            ///< in front and visible
    std::vector<std::wstring> mOtherNames;  ///< of the script's procedures that were asked for
    std::vector<ComPtr<Control>> mControls;
    HWND mLastFocus = nullptr;
};

}  // namespace kwohost
