#include "contract_test.h"

namespace kwo::contract {
namespace {

using platform::TrayRecord;

class NotificationAreaContract : public ContractTest {
protected:
    platform::NotificationArea& area = platform().notificationArea;
    TrayRecord record = {outside().MakeWindow(u"tray"), TrayRecord::kMessage | TrayRecord::kTip, 512, 0, u"tip"};
};

TEST_F(NotificationAreaContract, AnIconIsAddedOnceChangedAndDeletedOnce) {
    EXPECT_FALSE(area.Modify(record));
    EXPECT_FALSE(area.Delete(record));
    EXPECT_TRUE(area.Add(record));
    EXPECT_FALSE(area.Add(record));
    record.flags = TrayRecord::kTip;
    record.tip = Text(64, u'x');
    EXPECT_TRUE(area.Modify(record));
    record.tip = Text(1000, u'\u20AC');
    EXPECT_TRUE(area.Modify(record));
    EXPECT_TRUE(area.Delete(record));
    EXPECT_FALSE(area.Delete(record));
}

TEST_F(NotificationAreaContract, EachWindowHasItsOwn) {
    TrayRecord other = record;
    other.window = outside().MakeWindow(u"other");
    EXPECT_TRUE(area.Add(record));
    EXPECT_TRUE(area.Add(other));
    EXPECT_TRUE(area.Delete(record));
    EXPECT_TRUE(area.Delete(other));
}

class Ear final : public platform::TaskbarListener {
public:
    void TaskbarCreated() override {
        ++heard;
        if (onHeard) onHeard();
    }
    int heard = 0;
    std::function<void()> onHeard;
};

TEST_F(NotificationAreaContract, WhoListensHearsOfANewTaskbar) {
    const std::size_t windows = outside().TopLevelWindows();
    Ear first;
    Ear second;
    outside().RecreateTaskbar();
    EXPECT_EQ(first.heard, 0);

    area.Listen(first);
    area.Listen(second);
    EXPECT_EQ(outside().TopLevelWindows(), windows + 1);
    outside().RecreateTaskbar();
    EXPECT_EQ(first.heard, 1);
    EXPECT_EQ(second.heard, 1);

    area.Unlisten(first);
    outside().RecreateTaskbar();
    EXPECT_EQ(first.heard, 1);
    EXPECT_EQ(second.heard, 2);
    area.Unlisten(second);
    EXPECT_EQ(outside().TopLevelWindows(), windows);
    outside().RecreateTaskbar();
    EXPECT_EQ(second.heard, 2);
}

TEST_F(NotificationAreaContract, WhoHearsMayStopAllFromListening) {
    Ear first;
    Ear second;
    area.Listen(first);
    area.Listen(second);
    first.onHeard = [&] {
        area.Unlisten(first);
        area.Unlisten(second);
    };
    const std::size_t windows = outside().TopLevelWindows();
    outside().RecreateTaskbar();
    EXPECT_EQ(first.heard, 1);
    EXPECT_EQ(second.heard, 0);
    EXPECT_EQ(outside().TopLevelWindows(), windows - 1);
}

TEST_F(NotificationAreaContract, AnIconIsAddedAgainFromWithin) {
    Ear ear;
    ear.onHeard = [&] { EXPECT_TRUE(area.Add(record)); };
    area.Add(record);
    area.Listen(ear);
    area.Delete(record);
    outside().RecreateTaskbar();
    EXPECT_EQ(ear.heard, 1);
    EXPECT_FALSE(area.Add(record));
    area.Unlisten(ear);
    EXPECT_TRUE(area.Delete(record));
}

}  // namespace
}  // namespace kwo::contract
