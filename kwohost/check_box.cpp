#include "check_box.h"

#include <utility>

namespace kwohost {

CheckBox::CheckBox(ScriptHost& host, Form& form, std::wstring name) : Button(host, form, std::move(name)) {
    AddVariable(
        L"Value", [this](Call& call) { call.ReturnWhole(mValue); }, [this](Call& call) { SetValue(call.Whole(0)); });
    AddCaption();
    AddShapeSetting(L"Alignment", mAlignment, 1);
    AddFont();
    AddColours(COLOR_BTNTEXT, COLOR_BTNFACE);
    SetDefault(L"Value");
    Describe(L"CheckBox");
}

SystemControl::Shape CheckBox::WantedShape() const {
    return {L"BUTTON", BS_3STATE | BS_MULTILINE | (mAlignment == 1 ? DWORD{BS_LEFTTEXT} : 0), 0};
}

void CheckBox::SetValue(LONG value) {
    if (value < BST_UNCHECKED || value > BST_INDETERMINATE)
        Fail(RuntimeError::InvalidPropertyValue, L"Value is 0 (clear), 1 (ticked) or 2 (grey)");
    if (std::exchange(mValue, value) == value) return;
    Send(BM_SETCHECK, static_cast<WPARAM>(value));
    FireLater(L"Click");
}

}  // namespace kwohost
