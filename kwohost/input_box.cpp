#include "input_box.h"

#include "guard.h"
#include "input_box_ids.h"
#include "window_text.h"

namespace kwohost {

namespace {

void Prepare(HWND window, const InputBox& box) {
    SetWindowTextW(window, box.title.c_str());
    SetDlgItemTextW(window, ID_PROMPT, box.prompt.c_str());
    SetDlgItemTextW(window, ID_ANSWER, box.answer.c_str());
    RECT place = {};
    GetWindowRect(window, &place);
    SetWindowPos(window, nullptr, box.left.value_or(place.left), box.top.value_or(place.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    // A program that shows nothing else is not in front.
    if (!GetWindow(window, GW_OWNER)) SetForegroundWindow(window);
}

INT_PTR Handle(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, second);
        Prepare(window, *reinterpret_cast<InputBox*>(second));
        return TRUE;
    }
    if (message != WM_COMMAND || (LOWORD(first) != IDOK && LOWORD(first) != IDCANCEL)) return FALSE;
    auto* const box = reinterpret_cast<InputBox*>(GetWindowLongPtrW(window, DWLP_USER));
    if (LOWORD(first) == IDOK) box->answer = TextOf(GetDlgItem(window, ID_ANSWER));
    EndDialog(window, LOWORD(first));
    return TRUE;
}

INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    return Guarded([&] { return Handle(window, message, first, second); },
                   [window](const ScriptFailure&) -> INT_PTR {
                       EndDialog(window, IDABORT);
                       return TRUE;
                   });
}

}  // namespace

bool InputBox::Ask(HWND owner) {
    const INT_PTR button = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_INPUT_BOX), owner, Procedure,
                                           reinterpret_cast<LPARAM>(this));
    if (button == IDABORT) Fail(E_OUTOFMEMORY);
    if (button == -1 && (!owner || IsWindow(owner)))
        Fail(RuntimeError::CannotCreateObject, L"The system has no window for the box");
    return button == IDOK;
}

}  // namespace kwohost
