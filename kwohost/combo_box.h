#pragma once

#include "item_control.h"

namespace kwohost {

/// A field with a list of items for it. Its default member is Text.
/// Its height is that of a line, except with the list always open. It has no events of the pointer.
class ComboBox final : public ItemControl {
public:
    ComboBox(ScriptHost& host, Form& form, std::wstring name);

    bool HasFocus() const override;
    /// Enter and Escape close the open list.
    bool KeepsKey(WORD key, SHORT shift) const override;

protected:
    Shape WantedShape() const override;
    void OnMade() override;
    void OnUse(UINT notification) override;
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    /// Raises error 380 for a list without a field.
    HWND EditField() const override;
    /// The height of a list that opens is what the control is asked for beyond its own height.
    RECT Requested(const RECT& place) const override;

private:
    /// Sets the text of the field, which selects no item. A box without a field selects the item with that text, or
    /// raises error 380.
    void SetText(const std::wstring& text);
    /// Selects no item and leaves the field as it is.
    void SelectNone() const;
    /// Its edit field and its list; 0 for what it does not have.
    COMBOBOXINFO Parts() const;

    /// 0 a field with a list that opens, 1 a field with an open list, 2 a list that opens.
    LONG mStyle = 0;
};

}  // namespace kwohost
