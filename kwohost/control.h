#pragma once

#include <optional>

#include "host_window.h"

namespace kwohost {

/// A window inside a form: a picture box, a label, a text box.
/// It holds its form and its container until its window is gone.
class Control : public HostWindow {
public:
    /// A control without a window; call Open next. `takesFocus` says whether it can ever be a tab stop.
    Control(ScriptHost& host, Form& form, std::wstring name, bool takesFocus);
    /// Makes the window, visible, at the top left of `container`, 100 by 30 pixels. See ContainerOn.
    /// Raises error 429 if the system has none.
    void Open(HostWindow& container);

    /// Whether the user can use the control now: it and the panels that it is on are visible and enabled.
    bool IsUsable() const;
    /// Whether it can get the focus now: controls of this type do, and it is usable.
    bool CanTakeFocus() const { return mTakesFocus && IsUsable(); }
    /// Whether the Tab key stops here now: the script allows it, and the control can get the focus.
    bool IsTabStop() const { return CanTakeFocus() && TabStop(); }
    /// The place in the order of the Tab key; controls with the same one keep the order of their creation. 0 at first.
    LONG TabIndex() const { return mTabIndex; }
    /// Whether it was made for that form and has not lost it.
    bool IsOn(const Form& form) const { return mForm.Get() == &form; }
    /// Whether the control or a part of it has the focus.
    virtual bool HasFocus() const { return IsThere() && GetFocus() == Window(); }
    /// Gives the focus to the control.
    void TakeFocus() { ::SetFocus(Window()); }
    /// Whether the control itself uses Tab, Enter or Escape while it has the focus.
    virtual bool KeepsKey(WORD, SHORT) const { return false; }
    /// The letter that calls the control together with Alt, in upper case; 0 for none.
    virtual wchar_t AccessKey() const { return 0; }
    /// The access key moves the focus, mostly to the control itself. Then, if no other control has the same key, it
    /// uses the control.
    virtual void FocusByAccessKey() { TakeFocus(); }
    virtual void UseByAccessKey() {}

protected:
    /// In pixels of the container.
    static constexpr RECT kFirstPlace = {0, 0, 100, 30};

    ~Control() override;

    /// The form that the control was made for.
    ComPtr<Form> OwnerForm() override;
    /// The ScaleMode of the container; twips without one.
    Scale PlaceScale() const override { return mContainer ? mContainer->OwnScale() : Scale::Twips; }
    HWND PlaceWindow() const override { return mContainer ? mContainer->Window() : nullptr; }
    /// Makes the window, visible, at kFirstPlace. Raises error 429 if the system has none.
    virtual void MakeWindow(HWND parent) = 0;
    /// If this disables the control that has the focus, or the panel it is on, the next control gets the focus.
    void SetEnabled(bool isEnabled) override;
    /// Lets go of form and container, which hold this control.
    void OnGone() override;
    /// Whether the Tab key stops here as long as the script has set nothing.
    virtual bool IsTabStopByDefault() const { return mTakesFocus; }

private:
    bool TabStop() const { return mTabStop.value_or(IsTabStopByDefault()); }
    /// Moves the window into another container of the same form. Raises error 425 for the control itself and for what
    /// is in it.
    void SetContainer(HostWindow& container);

    ComPtr<Form> mForm;
    ComPtr<HostWindow> mContainer;
    /// Whether controls of this type ever do.
    bool mTakesFocus;
    /// What the script wants, if it has said so.
    std::optional<bool> mTabStop;
    LONG mTabIndex = 0;
};

/// Whether a window in a form takes input: it and all between it and the form are visible and enabled.
bool TakesInput(HWND window, HWND form);
/// A control without a window.
/// `type` is one of those that docs/kwohost.md lists, in upper or lower case; raises error 429 for another.
ComPtr<Control> MakeControl(ScriptHost& host, Form& form, const std::wstring& type, const std::wstring& name);
/// The object as a container of the form's controls: the form itself or a panel on it. Raises error 425 for any other.
/// A control in another form's container would outlive its own form.
HostWindow& ContainerOn(Form& form, IDispatch* object);

}  // namespace kwohost
