#pragma once

#include "platform/screen.h"

namespace kwo::platform::windows {

/// The display and the thread's windows: the form is the active window of the thread, and 15 twips to a pixel stand in
/// where the display tells no resolution.
/// Windows tells a program that does not know about scaling 96 dots per inch. No call changes the last-error value.
class WindowsScreen final : public Screen {
public:
    /// GetCursor; the arrow (IDC_ARROW) is 0.
    std::intptr_t MousePointer() override;
    void SetMousePointer(std::intptr_t pointer) override;
    Handle ActiveForm() override;
    std::int32_t HelpContext(Handle form) override;
    void SetHelpContext(Handle form, std::int32_t context) override;
    /// 1440 by LOGPIXELSX of the screen, asked at each call.
    double TwipsPerPixelX() override;
    double TwipsPerPixelY() override;
    /// SM_CXSCREEN times the rounded factor.
    float Width() override;
    float Height() override;
};

}  // namespace kwo::platform::windows
