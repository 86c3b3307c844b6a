#include "system_control.h"

#include <algorithm>
#include <memory>
#include <type_traits>

#include "form.h"
#include "window_text.h"

namespace kwohost {

namespace {

struct WindowEnd {
    void operator()(HWND window) const { DestroyWindow(window); }
};

using OwnedWindow = std::unique_ptr<std::remove_pointer_t<HWND>, WindowEnd>;

}  // namespace

SystemControl::~SystemControl() {
    if (mBrush) DeleteObject(mBrush);
}

void SystemControl::MakeWindow(HWND parent) {
    Prepare(NewWindow(parent));
}

HWND SystemControl::NewWindow(HWND parent) const {
    const Shape shape = WantedShape();
    const HWND made = CreateWindowExW(
        shape.extendedStyle, shape.className, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | shape.style,
        kFirstPlace.left, kFirstPlace.top, kFirstPlace.right - kFirstPlace.left, kFirstPlace.bottom - kFirstPlace.top,
        parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!made) Fail(RuntimeError::CannotCreateObject, L"The system has no window for '" + Name() + L"'");
    return made;
}

void SystemControl::Prepare(HWND made) {
    Adopt(made);
    ApplyFont();
    OnMade();
}

void SystemControl::Remake() {
    const std::function<void()> restoreContent = KeepContent();
    const RECT place = Place();
    const bool isVisible = (GetWindowLongW(Window(), GWL_STYLE) & WS_VISIBLE) != 0;
    const bool isEnabled = IsWindowEnabled(Window()) != FALSE;
    const bool hadFocus = HasFocus();
    const HWND inFront = GetWindow(Window(), GW_HWNDPREV);
    const HWND made = NewWindow(GetParent(Window()));
    const Quiet quiet(mIsQuiet);
    OwnedWindow old(Disown());
    try {
        Prepare(made);
        Reposition(place, 0);
        restoreContent();
    } catch (...) {
        const OwnedWindow failed(Disown());
        Adopt(old.release());
        throw;
    }
    SetWindowPos(made, inFront ? inFront : HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EnableWindow(made, isEnabled);
    if (!isVisible) ShowWindow(made, SW_HIDE);
    if (hadFocus) ::SetFocus(made);
}

void SystemControl::AddSelectionMembers() {
    AddVariable(
        L"SelStart", [this](Call& call) { call.ReturnWhole(static_cast<LONG>(SelectedText().begin)); },
        [this](Call& call) { SelectText(CharactersOf(call, L"SelStart"), 0); });
    AddVariable(
        L"SelLength",
        [this](Call& call) {
            const Selection selected = SelectedText();
            call.ReturnWhole(static_cast<LONG>(selected.end - selected.begin));
        },
        [this](Call& call) { SelectText(SelectedText().begin, CharactersOf(call, L"SelLength")); });
    AddVariable(
        L"SelText",
        [this](Call& call) {
            const Selection selected = SelectedText();
            call.ReturnText(WindowText().substr(selected.begin, selected.end - selected.begin));
        },
        [this](Call& call) {
            SendMessageW(EditField(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(call.Text(0).c_str()));
        });
}

LONG SystemControl::CharactersOf(Call& call, const wchar_t* member) {
    const LONG count = call.Whole(0);
    if (count < 0) Fail(RuntimeError::InvalidPropertyValue, std::wstring(member) + L" is not negative");
    return count;
}

SystemControl::Selection SystemControl::SelectedText() const {
    Selection selected;
    SendMessageW(EditField(), EM_GETSEL, reinterpret_cast<WPARAM>(&selected.begin),
                 reinterpret_cast<LPARAM>(&selected.end));
    return selected;
}

void SystemControl::SelectText(LONGLONG begin, LONGLONG length) const {
    const HWND field = EditField();
    const LONGLONG end = GetWindowTextLengthW(field);
    const LONGLONG first = std::min(begin, end);
    SendMessageW(field, EM_SETSEL, static_cast<WPARAM>(first), static_cast<LPARAM>(std::min(first + length, end)));
    SendMessageW(field, EM_SCROLLCARET, 0, 0);
}

void SystemControl::AddFont() {
    AddVariable(
        L"Font", [this](Call& call) { call.ReturnObject(mFont.Object()); },
        [this](Call& call) { mFont.Share(call.Object(0).Get()); });
    mFont.WhenChanged([this] {
        if (IsThere()) ApplyFont();
    });
}

void SystemControl::AddColours(LONG text, LONG background) {
    constexpr LONG kSystemColour = static_cast<LONG>(0x80000000);
    mForeColour = kSystemColour | text;
    mBackColour = kSystemColour | background;
    mHasColours = true;
    AddColour(L"ForeColor", mForeColour);
    AddColour(L"BackColor", mBackColour);
}

void SystemControl::AddColour(const wchar_t* name, LONG& colour) {
    AddVariable(
        name, [&colour](Call& call) { call.ReturnWhole(colour); },
        [this, &colour](Call& call) {
            colour = call.Whole(0);
            InvalidateRect(Window(), nullptr, TRUE);
        });
}

void SystemControl::AddShapeSetting(const wchar_t* name, LONG& value, LONG last) {
    AddVariable(
        name, [&value](Call& call) { call.ReturnWhole(value); },
        [this, name, &value, last](Call& call) {
            const LONG wanted = call.Whole(0);
            if (wanted < 0 || wanted > last)
                Fail(RuntimeError::InvalidPropertyValue,
                     std::wstring(name) + L" is a number from 0 to " + std::to_wstring(last));
            ChangeShape(value, wanted);
        });
}

std::wstring SystemControl::WindowText() const {
    return TextOf(Window());
}

void SystemControl::FireLater(const wchar_t* event) {
    if (const ComPtr<Form> form = OwnerForm()) form->Events().Fire(*this, event);
}

LRESULT SystemControl::OnMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        // What a part of the control tells it is the system's.
        case WM_COMMAND:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
            return Default(message, first, second);
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            if (mIsQuiet) return Default(message, first, second);
            break;
        default:
            break;
    }
    return HostWindow::OnMessage(message, first, second);
}

HBRUSH SystemControl::OnColours(HDC context) {
    if (!mHasColours) return nullptr;
    const COLORREF colour = ToColour(mBackColour);
    if (!mBrush || mBrushColour != colour) {
        if (mBrush) DeleteObject(mBrush);
        mBrush = CreateSolidBrush(colour);
        mBrushColour = colour;
    }
    SetTextColor(context, IsWindowEnabled(Window()) ? ToColour(mForeColour) : GetSysColor(COLOR_GRAYTEXT));
    SetBkColor(context, colour);
    return mBrush;
}

}  // namespace kwohost
