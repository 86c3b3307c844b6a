#include "com_test.h"

namespace kwo::com_test {
namespace {

TEST(Errors, AMemberThatFailsSaysSoWithItsNameAsTheSource) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    ASSERT_TRUE(timer && registry);

    const Outcome outcome = Set(timer.Get(), L"TimerEvents", registry.Get());

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_EXCEPTION));
    EXPECT_EQ(Hex(outcome.scode), "0x800A000D");
    EXPECT_EQ(Narrow(outcome.source), "KWOTimer.TimerEvents (Set)");
    EXPECT_EQ(Narrow(outcome.description), "Type mismatch");
}

TEST(Errors, ALateBoundErrorLeavesNoErrorObjectForTheNextCaller) {
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    ASSERT_TRUE(registry);
    Call(registry.Get(), L"KWO_RegDeleteKey", {L"no number", L"x"});
    TakeErrorObject();

    EXPECT_EQ(Hex(Call(registry.Get(), L"KWO_RegDeleteKey", {0, L"x"}).status), Hex(S_OK));
    EXPECT_FALSE(TakeErrorObject().present);
}

}  // namespace
}  // namespace kwo::com_test
