#include "painted_control.h"

namespace kwohost {

namespace {

/// The system's permission to paint a window, for its own lifetime.
class Painting {
public:
    explicit Painting(HWND window) : mWindow(window), mContext(BeginPaint(window, &mFacts)) {}
    Painting(const Painting&) = delete;
    Painting& operator=(const Painting&) = delete;
    ~Painting() { EndPaint(mWindow, &mFacts); }

    HDC Context() const { return mContext; }

private:
    PAINTSTRUCT mFacts = {};
    HWND mWindow;
    HDC mContext;
};

}  // namespace

void PaintedControl::MakeWindow(HWND parent) {
    CreateWindowOf(kControlClass, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, parent, kFirstPlace);
}

LRESULT PaintedControl::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_PAINT) {
        const Painting painting(Window());
        Paint(painting.Context());
        return 0;
    }
    // Painting covers everything.
    if (message == WM_ERASEBKGND) return 1;
    return HostWindow::OnMessage(message, first, second);
}

}  // namespace kwohost
