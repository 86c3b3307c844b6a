#include "button.h"

#include "form.h"

namespace kwohost {

void Button::AddCaption() {
    AddVariable(
        L"Caption", [this](Call& call) { call.ReturnText(WindowText()); },
        [this](Call& call) { SendText(WM_SETTEXT, 0, call.Text(0)); });
}

std::function<void()> Button::KeepContent() const {
    return [this, caption = WindowText()] { SendText(WM_SETTEXT, 0, caption); };
}

void Button::OnUse(UINT notification) {
    if (notification == BN_CLICKED) Use();
}

LRESULT Button::OnMessage(UINT message, WPARAM first, LPARAM second) {
    return SystemControl::OnMessage(message == WM_LBUTTONDBLCLK ? UINT{WM_LBUTTONDOWN} : message, first, second);
}

LRESULT Button::Default(UINT message, WPARAM first, LPARAM second) {
    const bool isBackwards = first == VK_LEFT || first == VK_UP;
    if (message == WM_KEYDOWN && (isBackwards || first == VK_RIGHT || first == VK_DOWN)) {
        if (const ComPtr<Form> form = OwnerForm()) form->Navigation().FocusNext(isBackwards);
        return 0;
    }
    return SystemControl::Default(message, first, second);
}

}  // namespace kwohost
