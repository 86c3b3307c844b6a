#include "narrator.h"

#include <oleacc.h>

#include <cwchar>
#include <optional>

namespace kwohost {

namespace {

using kwo::com_support::Annotated;

/// What the service has written as a number; nothing for any other text.
std::optional<long> NumberOf(const std::wstring& text) {
    const long number = std::wcstol(text.c_str(), nullptr, 10);
    return std::to_wstring(number) == text ? std::optional(number) : std::nullopt;
}

std::wstring RoleText(const std::wstring& role) {
    switch (NumberOf(role).value_or(0)) {
        case ROLE_SYSTEM_SEPARATOR:
            return L"separator";
        case ROLE_SYSTEM_TABLE:
            return L"table";
        case ROLE_SYSTEM_PUSHBUTTON:
            return L"push button";
        default:
            return role;
    }
}

std::wstring StateText(const std::wstring& state) {
    const std::optional<long> number = NumberOf(state);
    if (!number) return state;
    std::wstring text = (*number & STATE_SYSTEM_FOCUSED) != 0 ? L"focused" : L"";
    if ((*number & STATE_SYSTEM_PRESSED) != 0) text += text.empty() ? L"pressed" : L", pressed";
    return text.empty() ? L"normal" : text;
}

std::wstring Spoken(const Annotated& told) {
    if (told.property == L"Role") return L"role " + RoleText(told.value);
    if (told.property == L"State") return L"state " + StateText(told.value);
    if (told.property == L"Name") return L"name " + told.value;
    if (told.property == L"Value") return L"value " + told.value;
    if (told.property == L"Description") return L"description " + told.value;
    if (told.property == L"KeyboardShortcut") return L"shortcut " + told.value;
    return L"action " + told.value;
}

}  // namespace

Narrator::Narrator(Output& output) : mOutput(output), mService([this](const Annotated& told) { return Hear(told); }) {}

HRESULT Narrator::Hear(const Annotated& told) {
    if (!IsWindow(told.window)) return E_INVALIDARG;
    if (told.isCleared) {
        mNames.erase(told.window);
        return S_OK;
    }
    const std::wstring line = Spoken(told) + L"\r\n";
    const auto name = mNames.find(told.window);
    mOutput.Write(name == mNames.end() ? L"reader: " + line : L"reader: " + name->second + L": " + line);
    if (told.property == L"Name") mNames[told.window] = told.value;
    return S_OK;
}

}  // namespace kwohost
