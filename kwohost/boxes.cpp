#include "boxes.h"

#include "input_box.h"
#include "modal_scope.h"
#include "script_object.h"
#include "units.h"
#include "value_text.h"

namespace kwohost {

namespace {

/// Buttons, icons, default buttons, and what else the languages have constants for.
constexpr LONG kKnownStyles = MB_TYPEMASK | MB_ICONEXCLAMATION | MB_ICONINFORMATION | MB_DEFMASK | MB_SYSTEMMODAL |
                              MB_HELP | MB_SETFOREGROUND | MB_RIGHT | MB_RTLREADING;

/// A function of the script.
class Function final : public ScriptObject {
public:
    Function(const wchar_t* name, int fewest, int most, Body body) {
        AddMethod(name, fewest, most, std::move(body));
        SetDefault(name);
    }
};

std::wstring TextOr(const ScriptHost& host, const Call& call, int index, const std::wstring& missing) {
    return call.Has(index) ? ValueText(call.Value(index), host.ScriptLanguage()) : missing;
}

/// The arguments: prompt, buttons, title, and two for a help file, which are not used.
void ShowMessage(ScriptHost& host, Forms& forms, Call& call) {
    const std::wstring prompt = TextOr(host, call, 0, L"");
    const LONG style = call.Has(1) ? call.Whole(1) : MB_OK;
    const std::wstring title = TextOr(host, call, 2, host.ScriptName());
    if ((style & ~kKnownStyles) || (style & MB_TYPEMASK) > MB_CANCELTRYCONTINUE)
        Fail(RuntimeError::InvalidProcedureCall, L"A message box has no such buttons");
    const ModalScope modal(forms);
    // A program that shows nothing else is not in front.
    const LONG front = modal.Owner() ? 0 : MB_SETFOREGROUND;
    int button = 0;
    host.RunLoop(
        [&] { button = MessageBoxW(modal.Owner(), prompt.c_str(), title.c_str(), static_cast<UINT>(style | front)); });
    if (button == 0 && !modal.HasLostOwner())
        Fail(RuntimeError::InvalidProcedureCall, L"The system cannot show such a message box");
    call.ReturnWhole(button == 0 ? IDCANCEL : button);
}

/// The arguments: prompt, title, first answer, left, top, and two for a help file, which are not used.
void AskForText(ScriptHost& host, Forms& forms, Call& call) {
    InputBox box = {TextOr(host, call, 0, L""), TextOr(host, call, 1, host.ScriptName()), TextOr(host, call, 2, L"")};
    if (call.Has(3)) box.left = ToPixels(call.Number(3), Scale::Twips, Axis::X);
    if (call.Has(4)) box.top = ToPixels(call.Number(4), Scale::Twips, Axis::Y);
    const ModalScope modal(forms);
    bool isAnswered = false;
    host.RunLoop([&] { isAnswered = box.Ask(modal.Owner()); });
    if (isAnswered) call.ReturnText(box.answer);
}

}  // namespace

void AddBoxes(ScriptHost& host, const std::shared_ptr<Forms>& forms) {
    host.AddFunction(L"MsgBox", MakeObject<Function>(L"MsgBox", 1, 5,
                                                     [&host, forms](Call& call) { ShowMessage(host, *forms, call); }));
    host.AddFunction(L"InputBox", MakeObject<Function>(L"InputBox", 1, 7,
                                                       [&host, forms](Call& call) { AskForText(host, *forms, call); }));
}

}  // namespace kwohost
