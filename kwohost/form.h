#pragma once

#include <vector>

#include "host_window.h"

namespace kwohost {

class Control;

/// All forms of the script, in the order of their creation.
using Forms = std::vector<Form*>;

/// A window of its own, a child of an MDI form, or an MDI form. Members that it does not have are procedures of the
/// script: `form.Name` calls `form_Name`.
class Form : public HostWindow {
public:
    enum class Kind { Plain, MdiParent, MdiChild };

    /// `parent` is the MDI form of a child. Call Open next.
    Form(ScriptHost& host, Forms& forms, std::wstring name, Kind kind, Form* parent);
    void Open();
    /// Destroys the window without raising Unload.
    void End();

    HWND MdiClient() const { return mMdiClient; }
    bool PreviewsKeys() const { return mKeyPreview; }
    void OnFocus(HostWindow& window, bool hasIt);
    void FocusByPointer(HostWindow& window);
    void FocusNext(bool backwards);

protected:
    ~Form() override;

    Form* OwnerForm() override { return this; }
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
    bool MayClose();
    std::vector<Control*> TabStops() const;

    Forms& mForms;
    Kind mKind;
    ComPtr<Form> mParent;
    HWND mMdiClient = nullptr;
    bool mKeyPreview = false;
    LONG mStateWhenShown = 0;
    std::vector<std::wstring> mOtherNames;  ///< of the script's procedures that were asked for
    std::vector<ComPtr<Control>> mControls;
    HWND mLastFocus = nullptr;
};

}  // namespace kwohost
