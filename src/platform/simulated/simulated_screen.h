#pragma once

#include <map>

#include "platform/screen.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The host's screen object: 1024 by 768 pixels of 15 twips at first.
/// Calls that can be let fail raise, as an object of a host does: "Get MousePointer", "Let MousePointer", "Get
/// ActiveForm", "Get HelpContext" and "Let HelpContext".
class SimulatedScreen final : public Screen {
public:
    explicit SimulatedScreen(World& world);

    std::intptr_t MousePointer() override;
    void SetMousePointer(std::intptr_t pointer) override;
    Handle ActiveForm() override;
    std::int32_t HelpContext(Handle form) override;
    void SetHelpContext(Handle form, std::int32_t context) override;
    double TwipsPerPixelX() override { return twipsPerPixelX; }
    double TwipsPerPixelY() override { return twipsPerPixelY; }
    float Width() override { return width; }
    float Height() override { return height; }

    std::intptr_t pointer = 0;
    Handle activeForm = 0;
    double twipsPerPixelX = 15;
    double twipsPerPixelY = 15;
    float width = 15'360;
    float height = 11'520;
    /// The help topics of forms; 0 for a form that is not here.
    std::map<Handle, std::int32_t> helpContexts;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
