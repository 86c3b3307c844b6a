#pragma once

#include "item_control.h"

namespace kwohost {

/// A list of items, of which the user selects one. Its default member is Text.
/// Its height is that of whole items: the system makes it smaller than the script asks for.
class ListBox final : public ItemControl {
public:
    ListBox(ScriptHost& host, Form& form, std::wstring name);

protected:
    Shape WantedShape() const override;
    void OnUse(UINT notification) override;
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
};

}  // namespace kwohost
