#include "item_control.h"

#include <algorithm>

namespace kwohost {

namespace {

/// In the order of the user's language, upper and lower case alike.
bool IsBefore(const std::wstring& a, const std::wstring& b) {
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.data(), static_cast<int>(a.size()), b.data(),
                          static_cast<int>(b.size())) == CSTR_LESS_THAN;
}

WPARAM Index(LONG index) {
    return static_cast<WPARAM>(index);
}

/// Keeps a visible list from drawing itself while the scope lasts. It is drawn when messages are processed.
/// Wine draws the scroll bar for every item, which takes some milliseconds each time.
class DrawnLater {
public:
    explicit DrawnLater(HWND list) : mList(IsWindowVisible(list) ? list : nullptr) {
        // Lists have an answer of their own to this message, and draw the scroll bar all the same.
        if (mList) DefWindowProcW(mList, WM_SETREDRAW, FALSE, 0);
    }
    DrawnLater(const DrawnLater&) = delete;
    DrawnLater& operator=(const DrawnLater&) = delete;
    ~DrawnLater() {
        if (!mList) return;
        DefWindowProcW(mList, WM_SETREDRAW, TRUE, 0);
        RedrawWindow(mList, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    }

private:
    HWND mList;
};

}  // namespace

void ItemControl::AddItemMembers() {
    AddChanges();
    AddContents();
}

void ItemControl::AddChanges() {
    AddMethod(L"AddItem", 1, 2, [this](Call& call) {
        const Item item = {call.Text(0)};
        const LONG place = call.Has(1) ? call.Whole(1) : PlaceFor(item.text);
        if (place < 0 || place > Count())
            Fail(RuntimeError::InvalidProcedureCall, L"An item cannot be added at the index " + std::to_wstring(place));
        Insert(place, item);
        mNewIndex = place;
    });
    AddMethod(L"RemoveItem", 1, 1, [this](Call& call) { Remove(IndexOf(call, RuntimeError::InvalidProcedureCall)); });
    AddMethod(L"Clear", 0, 0, [this](Call&) {
        Send(mMessages.clear);
        mNewIndex = -1;
    });
}

void ItemControl::AddContents() {
    AddProperty(L"ListCount", [this](Call& call) { call.ReturnWhole(Count()); });
    AddVariable(
        L"ListIndex", [this](Call& call) { call.ReturnWhole(Selected()); },
        [this](Call& call) { Select(call.Whole(0)); });
    AddVariable(
        L"TopIndex", [this](Call& call) { call.ReturnWhole(static_cast<LONG>(Send(mMessages.top))); },
        [this](Call& call) { Send(mMessages.setTop, Index(IndexOf(call, RuntimeError::InvalidPropertyValue))); });
    AddProperty(L"NewIndex", [this](Call& call) { call.ReturnWhole(mNewIndex); });
    AddVariable(
        L"Sorted", [this](Call& call) { call.ReturnTruth(mIsSorted); },
        [this](Call& call) {
            const bool isSorted = call.Truth(0);
            if (isSorted) Sort();
            mIsSorted = isSorted;
        });
    AddIndexed(
        L"List", [this](Call& call) { call.ReturnText(TextOf(IndexOf(call, RuntimeError::InvalidPropertyIndex))); },
        [this](Call& call) { Replace(IndexOf(call, RuntimeError::InvalidPropertyIndex), call.Text(1)); });
    AddIndexed(
        L"ItemData",
        [this](Call& call) { call.ReturnWhole(ItemAt(IndexOf(call, RuntimeError::InvalidPropertyIndex)).data); },
        [this](Call& call) {
            Send(mMessages.setData, Index(IndexOf(call, RuntimeError::InvalidPropertyIndex)), call.Whole(1));
        });
}

LONG ItemControl::IndexOf(Call& call, RuntimeError error) const {
    const LONG index = call.Whole(0);
    if (index < 0 || index >= Count()) Fail(error, L"There is no item with the index " + std::to_wstring(index));
    return index;
}

void ItemControl::Insert(LONG index, const Item& item) const {
    const DrawnLater later(Window());
    const LRESULT inserted = SendText(mMessages.insert, Index(index), item.text);
    if (inserted < 0) Fail(RuntimeError::OutOfMemory, L"There is no room for another item");
    Send(mMessages.setData, Index(index), item.data);
}

ItemControl::Item ItemControl::ItemAt(LONG index) const {
    return {TextOf(index), static_cast<LONG>(Send(mMessages.data, Index(index)))};
}

std::wstring ItemControl::TextOf(LONG index) const {
    std::wstring text(static_cast<std::size_t>(Send(mMessages.textLength, Index(index))) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(mMessages.text, Index(index), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

void ItemControl::SelectItem(const std::wstring& text) {
    const auto found = static_cast<LONG>(SendText(mMessages.findWhole, static_cast<WPARAM>(-1), text));
    if (found < 0) Fail(RuntimeError::InvalidPropertyValue, L"There is no item with this text");
    Select(found);
}

void ItemControl::Select(LONG index) {
    if (index < -1 || index >= Count())
        Fail(RuntimeError::InvalidPropertyValue, L"There is no item with the index " + std::to_wstring(index));
    if (index == Selected()) return;
    Send(mMessages.select, Index(index));
    FireLater(L"Click");
}

/// The system knows no other way than to remove the item and to insert another.
void ItemControl::Replace(LONG index, const std::wstring& text) const {
    const LONG selected = Selected();
    Item item = ItemAt(index);
    item.text = text;
    Insert(index + 1, item);
    Send(mMessages.remove, Index(index));
    if (selected >= 0) Send(mMessages.select, Index(selected));
}

LONG ItemControl::PlaceFor(const std::wstring& text) const {
    LONG end = Count();
    if (!mIsSorted) return end;
    LONG begin = 0;
    while (begin < end) {
        const LONG middle = begin + (end - begin) / 2;
        if (IsBefore(text, TextOf(middle))) {
            end = middle;
        } else {
            begin = middle + 1;
        }
    }
    return begin;
}

void ItemControl::Remove(LONG index) {
    const DrawnLater later(Window());
    const LONG selected = Selected();
    Send(mMessages.remove, Index(index));
    mNewIndex = -1;
    const LONG wanted = selected == index ? -1 : selected > index ? selected - 1 : selected;
    if (Selected() != wanted) Send(mMessages.select, Index(wanted));
}

void ItemControl::Sort() {
    Contents contents = AllContents();
    std::stable_sort(contents.items.begin(), contents.items.end(),
                     [](const Item& a, const Item& b) { return IsBefore(a.text, b.text); });
    const DrawnLater later(Window());
    Quietly([&] {
        const LONG count = Count();
        try {
            Append(contents.items);
        } catch (...) {
            while (Count() > count)
                Send(mMessages.remove, Index(count));
            throw;
        }
        for (LONG removed = 0; removed < count; ++removed)
            Send(mMessages.remove, 0);
        SendText(WM_SETTEXT, 0, contents.text);
        SelectAgain(contents.items);
    });
    mNewIndex = -1;
}

ItemControl::Contents ItemControl::AllContents() const {
    Contents contents = {{}, WindowText()};
    const LONG selected = Selected();
    for (LONG index = 0; index < Count(); ++index) {
        contents.items.push_back(ItemAt(index));
        contents.items.back().isSelected = index == selected;
    }
    return contents;
}

void ItemControl::Fill(const Contents& contents) const {
    SendText(WM_SETTEXT, 0, contents.text);
    Append(contents.items);
    SelectAgain(contents.items);
}

void ItemControl::Append(const std::vector<Item>& items) const {
    for (const Item& item : items)
        Insert(Count(), item);
}

void ItemControl::SelectAgain(const std::vector<Item>& items) const {
    const auto selected = std::ranges::find_if(items, &Item::isSelected);
    if (selected != items.end()) Send(mMessages.select, Index(static_cast<LONG>(selected - items.begin())));
}

std::function<void()> ItemControl::KeepContent() const {
    return [this, contents = AllContents()] { Fill(contents); };
}

}  // namespace kwohost
