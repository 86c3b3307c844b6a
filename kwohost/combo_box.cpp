#include "combo_box.h"

#include "combo_part.h"
#include "form.h"

namespace kwohost {

namespace {

constexpr ItemControl::Messages kComboMessages = {
    .insert = CB_INSERTSTRING,
    .remove = CB_DELETESTRING,
    .clear = CB_RESETCONTENT,
    .count = CB_GETCOUNT,
    .textLength = CB_GETLBTEXTLEN,
    .text = CB_GETLBTEXT,
    .data = CB_GETITEMDATA,
    .setData = CB_SETITEMDATA,
    .selected = CB_GETCURSEL,
    .select = CB_SETCURSEL,
    .findWhole = CB_FINDSTRINGEXACT,
    .top = CB_GETTOPINDEX,
    .setTop = CB_SETTOPINDEX,
};

constexpr LONG kListThatOpens = 2;
constexpr LONG kOpenList = 1;

}  // namespace

ComboBox::ComboBox(ScriptHost& host, Form& form, std::wstring name)
    : ItemControl(host, form, std::move(name), kComboMessages) {
    AddVariable(
        L"Text", [this](Call& call) { call.ReturnText(WindowText()); }, [this](Call& call) { SetText(call.Text(0)); });
    AddSelectionMembers();
    AddItemMembers();
    AddShapeSetting(L"Style", mStyle, kListThatOpens);
    AddFont();
    AddColours(COLOR_WINDOWTEXT, COLOR_WINDOW);
    SetDefault(L"Text");
    Describe(L"ComboBox");
}

SystemControl::Shape ComboBox::WantedShape() const {
    constexpr DWORD kStyles[] = {CBS_DROPDOWN, CBS_SIMPLE | CBS_NOINTEGRALHEIGHT, CBS_DROPDOWNLIST};
    return {L"COMBOBOX", kStyles[mStyle] | CBS_AUTOHSCROLL | WS_VSCROLL, 0};
}

void ComboBox::OnMade() {
    const auto attach = [this](HWND part) {
        if (part && part != Window()) MakeObject<ComboPart>(Host(), *OwnerForm(), *this)->Attach(part);
    };
    const COMBOBOXINFO parts = Parts();
    attach(parts.hwndItem);
    attach(parts.hwndList);
    Reposition(Place(), 0);
}

COMBOBOXINFO ComboBox::Parts() const {
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof parts;
    GetComboBoxInfo(Window(), &parts);
    if (mStyle == kListThatOpens) parts.hwndItem = nullptr;
    return parts;
}

HWND ComboBox::EditField() const {
    const HWND field = Parts().hwndItem;
    if (!field) Fail(RuntimeError::InvalidPropertyValue, L"A combo box of this style has no field to select text in");
    return field;
}

void ComboBox::SetText(const std::wstring& text) {
    if (mStyle == kListThatOpens) return SelectItem(text);
    const std::wstring before = WindowText();
    SelectNone();
    Quietly([&] { SendText(WM_SETTEXT, 0, text); });
    if (WindowText() != before) FireLater(L"Change");
}

void ComboBox::SelectNone() const {
    SendMessageW(Parts().hwndList, LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
}

bool ComboBox::HasFocus() const {
    return ItemControl::HasFocus() || (IsThere() && GetFocus() && GetParent(GetFocus()) == Window());
}

bool ComboBox::KeepsKey(WORD key, SHORT) const {
    return (key == VK_RETURN || key == VK_ESCAPE) && Send(CB_GETDROPPEDSTATE) != 0;
}

void ComboBox::OnUse(UINT notification) {
    switch (notification) {
        case CBN_EDITCHANGE:
            SelectNone();
            FireLater(L"Change");
            break;
        case CBN_SELCHANGE:
            FireLater(L"Click");
            break;
        case CBN_DBLCLK:
            FireLater(L"DblClick");
            break;
        case CBN_DROPDOWN:
            FireLater(L"DropDown");
            break;
        case CBN_SETFOCUS:
        case CBN_KILLFOCUS:
            if (const ComPtr<Form> form = OwnerForm()) form->OnFocus(*this, notification == CBN_SETFOCUS);
            break;
        default:
            break;
    }
}

LRESULT ComboBox::OnMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            // The focus goes on to the field, and the control tells of it as a whole.
            return Default(message, first, second);
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<LRESULT>(OnColours(reinterpret_cast<HDC>(first)));
        default:
            // The pointer belongs to the system: each part would tell another place.
            if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) return Default(message, first, second);
            return ItemControl::OnMessage(message, first, second);
    }
}

RECT ComboBox::Requested(const RECT& place) const {
    constexpr int kItems = 8;
    if (mStyle == kOpenList) return place;
    const auto heightOf = [this](int item) {
        return static_cast<LONG>(Send(CB_GETITEMHEIGHT, static_cast<WPARAM>(item)));
    };
    const LONG height = heightOf(-1) + kItems * heightOf(0) + 4 * GetSystemMetrics(SM_CYEDGE);
    return {place.left, place.top, place.right, place.top + height};
}

}  // namespace kwohost
