#pragma once

#include "platform/screen.h"

namespace kwo::platform::windows {

/// The display and the thread's windows: the form is the active window of the thread, and 15 twips to a pixel stand in
/// where the display tells no resolution.
class WindowsScreen final : public Screen {
public:
    std::intptr_t MousePointer() override;
    void SetMousePointer(std::intptr_t pointer) override;
    Handle ActiveForm() override;
    std::int32_t HelpContext(Handle form) override;
    void SetHelpContext(Handle form, std::int32_t context) override;
    double TwipsPerPixelX() override;
    double TwipsPerPixelY() override;
    float Width() override;
    float Height() override;
};

}  // namespace kwo::platform::windows
