#pragma once

#include "button.h"
#include "navigator.h"

namespace kwohost {

/// A push button. Its default member is Value: True clicks it.
class CommandButton final : public Button {
public:
    CommandButton(ScriptHost& host, Form& form, std::wstring name);

    /// Fires Click, as the user's click does.
    void Click() { Use(); }
    /// Draws the frame of the button that Enter clicks, or removes it.
    void ShowAsDefault(bool isDefault) const;

protected:
    Shape WantedShape() const override;
    void Use() override { FireLater(L"Click"); }

private:
    /// Adds Default or Cancel: one button of a form has it.
    void AddRole(const wchar_t* name, CommandButton* (Navigator::*holder)() const,
                 void (Navigator::*give)(CommandButton* button));
};

}  // namespace kwohost
