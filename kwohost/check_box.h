#pragma once

#include "button.h"

namespace kwohost {

/// A box with a tick and a caption. Its default member is Value.
/// A change by the script raises Click as well as one by the user.
class CheckBox final : public Button {
public:
    CheckBox(ScriptHost& host, Form& form, std::wstring name);

protected:
    Shape WantedShape() const override;
    void OnMade() override { Send(BM_SETCHECK, static_cast<WPARAM>(mValue)); }
    /// Ticks the box or clears it. A grey tick is cleared.
    void Use() override { SetValue(mValue == 0 ? 1 : 0); }

private:
    /// Fires Click if the value is another one.
    void SetValue(LONG value);

    /// 0 clear, 1 ticked, 2 grey.
    LONG mValue = 0;
    /// Where the box is: 0 left of its caption, 1 right of it.
    LONG mAlignment = 0;
};

}  // namespace kwohost
