#include <cmath>

#include "contract_test.h"
#include "platform/window_service.h"

namespace kwo::contract {
namespace {

class ScreenContract : public ContractTest {
protected:
    platform::Screen& screen = platform().screen;
};

TEST_F(ScreenContract, PointerIsPutBackAsItWas) {
    const std::intptr_t before = screen.MousePointer();
    screen.SetMousePointer(0);
    screen.SetMousePointer(before);

    EXPECT_EQ(screen.MousePointer(), before);
}

TEST_F(ScreenContract, HelpContextIsKeptPerForm) {
    const Handle one = outside().MakeWindow(u"One");
    const Handle two = outside().MakeWindow(u"Two");

    EXPECT_EQ(screen.HelpContext(one), 0);
    screen.SetHelpContext(one, 1001);
    EXPECT_EQ(screen.HelpContext(one), 1001);
    EXPECT_EQ(screen.HelpContext(two), 0);
    screen.SetHelpContext(one, 0);
    EXPECT_EQ(screen.HelpContext(one), 0);
}

TEST_F(ScreenContract, ActiveFormIsAWindowOrNone) {
    const Handle form = screen.ActiveForm();

    EXPECT_TRUE(form == 0 || platform().windows.WindowExists(form));
}

TEST_F(ScreenContract, TheScreenHasASizeInTwips) {
    const double twipsX = std::nearbyint(screen.TwipsPerPixelX());
    const double twipsY = std::nearbyint(screen.TwipsPerPixelY());
    EXPECT_GE(screen.Width(), 640 * twipsX);
    EXPECT_GE(screen.Height(), 480 * twipsY);
    EXPECT_EQ(std::fmod(screen.Width(), twipsX), 0);
    EXPECT_EQ(std::fmod(screen.Height(), twipsY), 0);
}

}  // namespace
}  // namespace kwo::contract
