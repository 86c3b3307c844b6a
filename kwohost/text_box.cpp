#include "text_box.h"

#include <algorithm>

namespace kwohost {

namespace {

constexpr SHORT kControl = 2;
constexpr wchar_t kEscape = 27;

}  // namespace

TextBox::TextBox(ScriptHost& host, Form& form, std::wstring name) : SystemControl(host, form, std::move(name)) {
    AddTextMembers();
    AddSelectionMembers();
    AddShapeMembers();
    AddFont();
    AddColours(COLOR_WINDOWTEXT, COLOR_WINDOW);
    SetDefault(L"Text");
    Describe(L"TextBox");
}

void TextBox::AddTextMembers() {
    AddVariable(
        L"Text", [this](Call& call) { call.ReturnText(WindowText()); }, [this](Call& call) { SetText(call.Text(0)); });
    AddVariable(
        L"MaxLength", [this](Call& call) { call.ReturnWhole(mMaxLength); },
        [this](Call& call) {
            mMaxLength = CharactersOf(call, L"MaxLength");
            Send(EM_SETLIMITTEXT, static_cast<WPARAM>(mMaxLength));
        });
    AddVariable(
        L"Locked", [this](Call& call) { call.ReturnTruth(mIsLocked); },
        [this](Call& call) {
            mIsLocked = call.Truth(0);
            Send(EM_SETREADONLY, mIsLocked);
        });
    AddVariable(
        L"PasswordChar", [this](Call& call) { call.ReturnText(std::wstring(mPasswordChar ? 1 : 0, mPasswordChar)); },
        [this](Call& call) {
            const std::wstring text = call.Text(0);
            if (text.size() > 1) Fail(RuntimeError::InvalidPropertyValue, L"PasswordChar is one character or none");
            mPasswordChar = text.empty() ? wchar_t{0} : text.front();
            ApplyPasswordChar();
        });
}

void TextBox::AddShapeMembers() {
    AddVariable(
        L"MultiLine", [this](Call& call) { call.ReturnTruth(mIsMultiLine); },
        [this](Call& call) { ChangeShape(mIsMultiLine, call.Truth(0)); });
    AddShapeSetting(L"ScrollBars", mScrollBars, 3);
    AddShapeSetting(L"Alignment", mAlignment, 2);
    AddShapeSetting(L"BorderStyle", mBorderStyle, 1);
}

SystemControl::Shape TextBox::WantedShape() const {
    constexpr DWORD kAlignments[] = {ES_LEFT, ES_RIGHT, ES_CENTER};
    const bool scrollsAcross = (mScrollBars & 1) != 0;
    const bool scrollsDown = (mScrollBars & 2) != 0;
    DWORD style = kAlignments[mAlignment];
    if (!mIsMultiLine) {
        style |= ES_AUTOHSCROLL;
    } else {
        style |= ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
        if (scrollsAcross) style |= ES_AUTOHSCROLL | WS_HSCROLL;
        if (scrollsDown) style |= WS_VSCROLL;
    }
    return {L"EDIT", style, mBorderStyle ? DWORD{WS_EX_CLIENTEDGE} : 0};
}

void TextBox::OnMade() {
    Send(EM_SETLIMITTEXT, static_cast<WPARAM>(mMaxLength));
    Send(EM_SETREADONLY, mIsLocked);
    ApplyPasswordChar();
}

/// A text of more lines shows itself in any case.
void TextBox::ApplyPasswordChar() const {
    if (mIsMultiLine) return;
    Send(EM_SETPASSWORDCHAR, mPasswordChar);
    InvalidateRect(Window(), nullptr, TRUE);
}

std::function<void()> TextBox::KeepContent() const {
    return [this, text = WindowText(), selected = SelectedText()] {
        SendText(WM_SETTEXT, 0, text);
        Send(EM_SETSEL, selected.begin, static_cast<LPARAM>(selected.end));
    };
}

void TextBox::SetText(std::wstring text) {
    if (mMaxLength > 0) text.resize(std::min(text.size(), static_cast<std::size_t>(mMaxLength)));
    const std::wstring before = WindowText();
    // The system does not tell of each change: never for more lines.
    Quietly([&] { SendText(WM_SETTEXT, 0, text); });
    if (IsThere() && WindowText() != before) FireLater(L"Change");
}

bool TextBox::KeepsKey(WORD key, SHORT shift) const {
    return mIsMultiLine && key == VK_RETURN && (shift & kControl);
}

LRESULT TextBox::Default(UINT message, WPARAM first, LPARAM second) {
    // The system beeps for characters that a single line cannot take.
    const bool isUnused = first == L'\r' || first == L'\n' || first == L'\t' || first == kEscape;
    if (message == WM_CHAR && isUnused && !mIsMultiLine) return 0;
    return SystemControl::Default(message, first, second);
}

void TextBox::OnUse(UINT notification) {
    if (notification == EN_CHANGE) FireLater(L"Change");
}

}  // namespace kwohost
