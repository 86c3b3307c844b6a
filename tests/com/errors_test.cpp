#include "com_test.h"
#include "type_library_dump.h"

namespace kwo::com_test {
namespace {

/// The name that an error of a member carries as its source.
std::string SourceOf(const std::wstring& className, const FUNCDESC& function, const std::string& member) {
    const std::string source = Narrow(className) + '.' + member;
    switch (function.invkind) {
        case INVOKE_PROPERTYGET:
            return source + " (Get)";
        case INVOKE_PROPERTYPUT:
            return source + " (Let)";
        case INVOKE_PROPERTYPUTREF:
            return source + " (Set)";
        default:
            return source;
    }
}

TEST(Errors, AMemberThatIsNotThereYetSaysSoLateBoundWithItsSource) {
    const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
    ASSERT_TRUE(library);
    for (const std::wstring& className : ClassNames()) {
        if (IsBuilt(className)) continue;
        const ComPtr<IDispatch> object = Create(className);
        const ComPtr<ITypeInfo> info = TypeInfoOf(library.Get(), L"_" + className);
        ASSERT_TRUE(object && info);
        const ComPtr<ITypeInfo> slots = SlotView(info.Get());
        ASSERT_TRUE(slots);
        for (UINT f = 0; f < TypeAttributes(slots.Get())->cFuncs; ++f) {
            const Function function(slots.Get(), f);
            // Members without arguments suffice here: the table of all VARIANT types covers the others.
            if (function.ArgumentCount() > 0 || function.IsPut()) continue;
            const Outcome outcome = InvokeId(object.Get(), function->memid, static_cast<WORD>(function->invkind), {});
            const std::string source = SourceOf(className, *function.operator->(), function.Names()[0]);

            EXPECT_EQ(Hex(DISP_E_EXCEPTION), Hex(outcome.status)) << source;
            EXPECT_EQ(Hex(E_NOTIMPL), Hex(outcome.scode)) << source;
            EXPECT_EQ(0, outcome.code) << source;
            EXPECT_NE(L"", outcome.description) << source;
            EXPECT_EQ(source, Narrow(outcome.source));
            EXPECT_EQ(VT_EMPTY, outcome.result.vt) << source;
        }
    }
}

TEST(Errors, APutThatIsNotThereYetNamesItsAccessor) {
    const ComPtr<IDispatch> button = Create(L"KWOPicBtn");
    ASSERT_TRUE(button);
    if (IsBuilt(L"KWOPicBtn")) GTEST_SKIP() << "built";

    EXPECT_EQ("KWOPicBtn.Caption (Let)", Narrow(Let(button.Get(), L"Caption", L"text").source));
}

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
