#pragma once

#include "host_window.h"

namespace kwohost {

/// A window inside a form: a picture box, a label, a panel.
/// It holds its form and its container until its window is gone.
class Control : public HostWindow {
public:
    /// A control without a window; call Open next. `takesFocus` says whether it can ever be a tab stop.
    Control(ScriptHost& host, Form& form, std::wstring name, bool takesFocus);
    /// Makes the window, visible, at the top left of `container`, 100 by 30 pixels.
    /// Raises error 429 if the system has none.
    void Open(HostWindow& container);

    /// Whether the Tab key stops here now: the script allows it, and the window is visible and enabled.
    bool IsTabStop() const;
    /// The place in the order of the Tab key; controls with the same one keep the order of their creation. 0 at first.
    LONG TabIndex() const { return mTabIndex; }

protected:
    ~Control() override;

    /// The form that the control was made for.
    ComPtr<Form> OwnerForm() override;
    /// The ScaleMode of the container; twips without one.
    Scale PlaceScale() const override { return mContainer ? mContainer->OwnScale() : Scale::Twips; }
    HWND PlaceWindow() const override { return mContainer ? mContainer->Window() : nullptr; }
    /// Paints, and leaves everything else to HostWindow.
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    /// Lets go of form and container, which hold this control.
    void OnGone() override;
    /// Draws the window's content, all of it: the system erases nothing before.
    virtual void Paint(HDC context) = 0;

private:
    /// Moves the window into another container. Raises error 425 for the control itself and for what is in it.
    void SetContainer(HostWindow& container);

    ComPtr<Form> mForm;
    ComPtr<HostWindow> mContainer;
    /// Whether controls of this type ever do.
    bool mTakesFocus;
    /// What the script wants.
    bool mTabStop;
    LONG mTabIndex = 0;
};

/// A control without a window.
/// `type` is PictureBox, Label or Panel, in upper or lower case; raises error 429 for another.
ComPtr<Control> MakeControl(ScriptHost& host, Form& form, const std::wstring& type, const std::wstring& name);
/// The object as a container of controls: a form or a panel. Raises error 425 for any other.
HostWindow& ContainerOf(IDispatch* object);

}  // namespace kwohost
