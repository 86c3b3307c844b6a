#pragma once

#include <memory>
#include <vector>

#include "platform/simulated/simulated_object.h"
#include "platform/simulated/world.h"
#include "platform/system_fonts.h"

namespace kwo::platform::simulated {

/// The desktop's fonts, as a test has set them, and the font objects made so far.
/// The log calls those font1, font2 ... SystemParametersInfo and OleCreateFontIndirect can fail; the latter raises.
class SimulatedSystemFonts final : public SystemFonts {
public:
    explicit SimulatedSystemFonts(World& world) : mWorld(world) {
        world.faults.Declare({{"SystemParametersInfo", {87, Faults::kNoMemory}},
                              {"OleCreateFontIndirect", {-2147467259, Faults::kNoMemory}}});
    }

    bool QueryNonClient(NonClientFonts& fonts) override;
    HostObjectRef MakeFont() override;

    /// What QueryNonClient answers.
    NonClientFonts nonClient;
    /// The font objects of MakeFont, the first one first.
    std::vector<std::shared_ptr<SimulatedObject>> made;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
