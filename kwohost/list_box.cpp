#include "list_box.h"

namespace kwohost {

namespace {

constexpr ItemControl::Messages kListMessages = {
    .insert = LB_INSERTSTRING,
    .remove = LB_DELETESTRING,
    .clear = LB_RESETCONTENT,
    .count = LB_GETCOUNT,
    .textLength = LB_GETTEXTLEN,
    .text = LB_GETTEXT,
    .data = LB_GETITEMDATA,
    .setData = LB_SETITEMDATA,
    .selected = LB_GETCURSEL,
    .select = LB_SETCURSEL,
    .findWhole = LB_FINDSTRINGEXACT,
    .top = LB_GETTOPINDEX,
    .setTop = LB_SETTOPINDEX,
};

}  // namespace

ListBox::ListBox(ScriptHost& host, Form& form, std::wstring name)
    : ItemControl(host, form, std::move(name), kListMessages) {
    AddVariable(
        L"Text", [this](Call& call) { call.ReturnText(Selected() < 0 ? L"" : TextOf(Selected())); },
        [this](Call& call) { SelectItem(call.Text(0)); });
    AddItemMembers();
    AddFont();
    AddColours(COLOR_WINDOWTEXT, COLOR_WINDOW);
    SetDefault(L"Text");
    Describe(L"ListBox");
}

SystemControl::Shape ListBox::WantedShape() const {
    return {L"LISTBOX", LBS_NOTIFY | WS_VSCROLL, WS_EX_CLIENTEDGE};
}

LRESULT ListBox::OnMessage(UINT message, WPARAM first, LPARAM second) {
    // The system tells of a double click on an item; beside the items there is none.
    if (message == WM_LBUTTONDBLCLK) return Default(message, first, second);
    return ItemControl::OnMessage(message, first, second);
}

void ListBox::OnUse(UINT notification) {
    if (notification == LBN_SELCHANGE) FireLater(L"Click");
    if (notification == LBN_DBLCLK) FireLater(L"DblClick");
}

}  // namespace kwohost
