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

}  // namespace
}  // namespace kwo::contract
