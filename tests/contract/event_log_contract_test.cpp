#include "contract_test.h"

namespace kwo::contract {
namespace {

class EventLogContract : public ContractTest {};

TEST_F(EventLogContract, TakesEntriesOfAnOpenSource) {
    platform::EventLog& eventLog = platform().eventLog;

    const auto source = eventLog.Open(u"KWOUtilContract");
    ASSERT_NE(source, 0u);
    for (const std::uint16_t type : {std::uint16_t{1}, std::uint16_t{2}, std::uint16_t{4}}) {
        EXPECT_TRUE(eventLog.Report(source, type, 1, u"Contract test: nothing to worry about.")) << type;
    }
    EXPECT_TRUE(eventLog.Report(source, 4, 1, u""));
    eventLog.Close(source);
}

TEST_F(EventLogContract, RefusesEntriesOfNoSource) {
    EXPECT_EQ_BUT_WINE(platform().eventLog.Report(0, 4, 1, u"Never written."), false, true);
}

}  // namespace
}  // namespace kwo::contract
