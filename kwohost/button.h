#pragma once

#include "access_key.h"
#include "system_control.h"

namespace kwohost {

/// What push buttons and check boxes have in common: a caption with an access key, and arrow keys that move the focus.
/// A double click is two clicks.
class Button : public SystemControl {
public:
    wchar_t AccessKey() const override { return AccessKeyOf(WindowText()); }
    void UseByAccessKey() override { Use(); }

protected:
    Button(ScriptHost& host, Form& form, std::wstring name) : SystemControl(host, form, std::move(name)) {}

    /// Adds Caption.
    void AddCaption();
    /// What a click does, whoever clicks.
    virtual void Use() = 0;

    std::function<void()> KeepContent() const override;
    void OnUse(UINT notification) override;
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    LRESULT Default(UINT message, WPARAM first, LPARAM second) override;
};

}  // namespace kwohost
