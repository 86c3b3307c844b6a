#pragma once

#include "platform/screen.h"

namespace kwo::platform::windows {

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
