#pragma once

#include "control.h"

namespace kwohost {

/// A control with a window of our own class, which it draws itself.
class PaintedControl : public Control {
public:
    using Control::Control;

protected:
    void MakeWindow(HWND parent) override;
    /// Paints, and leaves everything else to HostWindow.
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    /// Draws the window's content, all of it: the system erases nothing before.
    virtual void Paint(HDC context) = 0;
};

}  // namespace kwohost
