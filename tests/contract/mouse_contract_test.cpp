#include "contract_test.h"
#include "platform/mouse.h"

namespace kwo::contract {
namespace {

class MouseContract : public ContractTest {
protected:
    /// What the mouse has sent may take its time.
    void TakeMessagesUntil(bool pressed) {
        platform().messages.ProcessPending();
        for (int waits = 0; waits < 50 && mouse.WasPressed() != pressed; ++waits) {
            platform().messages.WaitForInput(100, kAnyInput);
            platform().messages.ProcessPending();
        }
    }

    platform::Mouse& mouse = platform().mouse;
};

TEST_F(MouseContract, TheButtonIsHeldFromThePressToTheRelease) {
    const Handle window = outside().MakeWindow(u"Pressed");
    EXPECT_FALSE(mouse.IsHeld());
    EXPECT_FALSE(mouse.WasPressed());

    outside().PressMouse(window);

    EXPECT_TRUE(mouse.IsHeld());
    TakeMessagesUntil(true);
    EXPECT_TRUE(mouse.WasPressed());
    EXPECT_TRUE(mouse.IsHeld());

    outside().ReleaseMouse();

    EXPECT_FALSE(mouse.IsHeld());
    TakeMessagesUntil(false);
    EXPECT_FALSE(mouse.WasPressed());
}

TEST_F(MouseContract, APressThatIsOverIsKnownFromItsMessages) {
    const Handle window = outside().MakeWindow(u"Pressed");
    outside().PressMouse(window);
    TakeMessagesUntil(true);
    outside().ReleaseMouse();

    EXPECT_FALSE(mouse.IsHeld());
    EXPECT_TRUE(mouse.WasPressed()) << "its release has not been taken yet";

    TakeMessagesUntil(false);
    EXPECT_FALSE(mouse.WasPressed());
}

}  // namespace
}  // namespace kwo::contract
