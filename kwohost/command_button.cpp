#include "command_button.h"

#include "form.h"

namespace kwohost {

CommandButton::CommandButton(ScriptHost& host, Form& form, std::wstring name) : Button(host, form, std::move(name)) {
    AddCaption();
    AddVariable(
        L"Value", [](Call& call) { call.ReturnTruth(false); },
        [this](Call& call) {
            if (call.Truth(0)) Click();
        });
    AddRole(L"Default", &Navigator::DefaultButton, &Navigator::SetDefaultButton);
    AddRole(L"Cancel", &Navigator::CancelButton, &Navigator::SetCancelButton);
    AddFont();
    SetDefault(L"Value");
    Describe(L"CommandButton");
}

void CommandButton::AddRole(const wchar_t* name, CommandButton* (Navigator::*holder)() const,
                            void (Navigator::*give)(CommandButton* button)) {
    AddVariable(
        name, [this, holder](Call& call) { call.ReturnTruth((OwnerForm()->Navigation().*holder)() == this); },
        [this, holder, give](Call& call) {
            Navigator& navigation = OwnerForm()->Navigation();
            if (call.Truth(0)) {
                (navigation.*give)(this);
            } else if ((navigation.*holder)() == this) {
                (navigation.*give)(nullptr);
            }
        });
}

SystemControl::Shape CommandButton::WantedShape() const {
    return {L"BUTTON", BS_PUSHBUTTON | BS_MULTILINE, 0};
}

void CommandButton::ShowAsDefault(bool isDefault) const {
    if (!IsThere()) return;
    const auto style = static_cast<DWORD>(GetWindowLongW(Window(), GWL_STYLE));
    const DWORD wanted = (style & 0xFFFF & ~DWORD{BS_TYPEMASK}) | (isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
    if (wanted != (style & 0xFFFF)) Send(BM_SETSTYLE, wanted, TRUE);
}

}  // namespace kwohost
