#pragma once

#include <utility>

#include "form.h"

namespace kwohost {

/// The edit field or the list inside a combo box. Keys in it are events of the combo box.
class ComboPart final : public HostWindow {
public:
    /// A part without a window; call Attach next.
    ComboPart(ScriptHost& host, Form& form, HostWindow& combo)
        : HostWindow(host, combo.Name()), mForm(&form), mCombo(&combo) {}
    /// The window lets go of the part when it ends.
    void Attach(HWND part) { Adopt(part); }

    void Fire(const wchar_t* event, EventValues values = {}) override { mCombo->Fire(event, std::move(values)); }

protected:
    ComPtr<Form> OwnerForm() override { return mForm; }
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        const bool isKey = message >= WM_KEYFIRST && message <= WM_KEYLAST;
        return isKey ? HostWindow::OnMessage(message, first, second) : Default(message, first, second);
    }
    void OnGone() override {
        mForm.Reset();
        mCombo.Reset();
    }

private:
    ComPtr<Form> mForm;
    ComPtr<HostWindow> mCombo;
};

}  // namespace kwohost
