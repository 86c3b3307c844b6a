#include "com_test.h"

namespace kwo::com_test {
namespace {

TEST(Errors, AMemberThatFailsSaysSoWithItsNameAsTheSource) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    ASSERT_TRUE(timer && registry);

    const Outcome outcome = Set(timer.Get(), L"TimerEvents", registry.Get());

    EXPECT_EQ(Hex(DISP_E_EXCEPTION), Hex(outcome.status));
    EXPECT_EQ("0x800A000D", Hex(outcome.scode));
    EXPECT_EQ("KWOTimer.TimerEvents (Set)", Narrow(outcome.source));
    EXPECT_EQ("Type mismatch", Narrow(outcome.description));
}

TEST(Errors, ALateBoundErrorLeavesNoErrorObjectForTheNextCaller) {
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    ASSERT_TRUE(registry);
    Call(registry.Get(), L"KWO_RegDeleteKey", {L"no number", L"x"});
    TakeErrorObject();

    EXPECT_EQ(Hex(S_OK), Hex(Call(registry.Get(), L"KWO_RegDeleteKey", {0, L"x"}).status));
    EXPECT_FALSE(TakeErrorObject().present);
}

}  // namespace
}  // namespace kwo::com_test
