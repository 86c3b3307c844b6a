#pragma once

#include "host_window.h"

namespace kwohost {

/// A window inside a form: a picture box, a label, a panel.
class Control : public HostWindow {
public:
    /// A control without a window. `takesFocus` says whether it can ever be a tab stop.
    Control(ScriptHost& host, Form& form, std::wstring name, bool takesFocus);
    /// Makes the window, inside `container`.
    void Open(HostWindow& container);

    /// Whether the Tab key stops here now: the script allows it, and the window is visible and enabled.
    bool IsTabStop() const;
    /// The place in the order of the Tab key; controls with the same one keep the order of their creation.
    LONG TabIndex() const { return mTabIndex; }

protected:
    ~Control() override;

    ComPtr<Form> OwnerForm() override;
    Scale PlaceScale() const override { return mContainer ? mContainer->OwnScale() : Scale::Twips; }
    HWND PlaceWindow() const override { return mContainer ? mContainer->Window() : nullptr; }
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    void OnGone() override;
    /// Draws the window's content.
    virtual void Paint(HDC context) = 0;

private:
    void SetContainer(HostWindow& container);

    ComPtr<Form> mForm;
    ComPtr<HostWindow> mContainer;
    bool mTakesFocus;
    bool mTabStop;
    LONG mTabIndex = 0;
};

/// Type is PictureBox, Label or Panel; error 429 for another.
ComPtr<Control> MakeControl(ScriptHost& host, Form& form, const std::wstring& type, const std::wstring& name);
/// The object as a container of controls. Raises error 425 if it is not one.
HostWindow& ContainerOf(IDispatch* object);

}  // namespace kwohost
