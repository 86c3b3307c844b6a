#pragma once

#include <vector>

#include "system_control.h"

namespace kwohost {

/// What list boxes and combo boxes have in common: items, of which one can be selected. Indexes count from 0.
/// A selection by the script raises Click as well as one by the user.
class ItemControl : public SystemControl {
public:
    /// The same thing has two names in the system.
    struct Messages {
        UINT insert;
        UINT remove;
        UINT clear;
        UINT count;
        UINT textLength;
        UINT text;
        UINT data;
        UINT setData;
        UINT selected;
        UINT select;
        UINT findWhole;
        UINT top;
        UINT setTop;
    };

protected:
    /// `messages` must be static.
    ItemControl(ScriptHost& host, Form& form, std::wstring name, const Messages& messages)
        : SystemControl(host, form, std::move(name)), mMessages(messages) {}

    /// Adds the members that concern items.
    void AddItemMembers();
    /// Selects the item with that text, in upper or lower case. Raises error 380 if there is none.
    void SelectItem(const std::wstring& text);

    LONG Count() const { return static_cast<LONG>(Send(mMessages.count)); }
    /// -1 for none.
    LONG Selected() const { return static_cast<LONG>(Send(mMessages.selected)); }
    /// Selects an item; -1 selects none. Fires Click if the selection changes. Raises error 380 if there is no such
    /// item.
    void Select(LONG index);
    /// `index` must be that of an item.
    std::wstring TextOf(LONG index) const;
    std::function<void()> KeepContent() const override;

private:
    /// An item that has left the window or is to enter it.
    struct Item {
        std::wstring text;
        LONG data = 0;
        bool isSelected = false;
    };
    /// Everything in the window.
    struct Contents {
        std::vector<Item> items;
        /// The window's own text: what stands in the field of a combo box.
        std::wstring text;
    };

    /// AddItem, RemoveItem, Clear.
    void AddChanges();
    /// List, ItemData, ListCount, ListIndex, NewIndex, TopIndex, Sorted.
    void AddContents();
    /// The first argument as the index of an item. Raises `error` if it is none.
    LONG IndexOf(Call& call, RuntimeError error) const;
    /// Raises error 7 if the system has no room for it; nothing has changed then.
    void Insert(LONG index, const Item& item) const;
    Item ItemAt(LONG index) const;
    void Replace(LONG index, const std::wstring& text) const;
    /// Where a new text belongs: in its place if the items are sorted, else at the end.
    LONG PlaceFor(const std::wstring& text) const;
    void Remove(LONG index);
    /// Raises error 7 if the system has no room for each item twice; nothing has changed then.
    void Sort();
    Contents AllContents() const;
    /// Fills an empty window.
    void Fill(const Contents& contents) const;
    /// Raises error 7 if the system has no room for all of them; the first ones have been added then.
    void Append(const std::vector<Item>& items) const;
    /// Selects the one that was selected, if any. The window must hold these items alone.
    void SelectAgain(const std::vector<Item>& items) const;

    const Messages& mMessages;
    bool mIsSorted = false;
    /// Of the item that was added last; -1 if it is gone.
    LONG mNewIndex = -1;
};

}  // namespace kwohost
