#include "contract_test.h"
#include "platform/keyboard.h"

namespace kwo::contract {
namespace {

using Keys = std::vector<std::string>;

class KeyboardContract : public ContractTest {
protected:
    platform::Keyboard& keyboard = platform().keyboard;
};

TEST_F(KeyboardContract, TheWindowWithTheFocusHearsTab) {
    outside().ListenToKeys();

    keyboard.SendTab(false);

    EXPECT_EQ(outside().KeysHeard(1), Keys{"Tab"});
}

TEST_F(KeyboardContract, BackwardsIsWithTheShiftKey) {
    outside().ListenToKeys();

    keyboard.SendTab(true);

    EXPECT_EQ(outside().KeysHeard(1), Keys{"Shift+Tab"});
}

TEST_F(KeyboardContract, KeysThatTheUserHoldsDoNotCount) {
    outside().ListenToKeys();
    outside().HoldControl(true);

    keyboard.SendTab(false);
    keyboard.SendTab(true);
    const std::vector<std::string> heard = outside().KeysHeard(2);
    outside().HoldControl(false);

    EXPECT_EQ(heard, (Keys{"Tab", "Shift+Tab"}));
}

TEST_F(KeyboardContract, KeysArriveInTheirOrderAndAreReleased) {
    outside().ListenToKeys();

    keyboard.SendTab(true);
    keyboard.SendTab(false);
    keyboard.SendTab(false);
    keyboard.SendTab(true);

    EXPECT_EQ(outside().KeysHeard(4), (Keys{"Shift+Tab", "Tab", "Tab", "Shift+Tab"}));
}

}  // namespace
}  // namespace kwo::contract
