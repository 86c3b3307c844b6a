#include "painted_control.h"

namespace kwohost {

void PaintedControl::MakeWindow(HWND parent) {
    CreateWindowOf(kControlClass, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, parent, kFirstPlace);
}

LRESULT PaintedControl::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_PAINT) {
        PAINTSTRUCT painting;
        const HDC context = BeginPaint(Window(), &painting);
        Paint(context);
        EndPaint(Window(), &painting);
        return 0;
    }
    // Painting covers everything.
    if (message == WM_ERASEBKGND) return 1;
    return HostWindow::OnMessage(message, first, second);
}

}  // namespace kwohost
