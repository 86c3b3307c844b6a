#include <optional>

#include "com_test.h"
#include "host_box.h"
#include "typed_form.h"
#include "wine.h"

namespace kwo::com_test {
namespace {

constexpr double kNovember21 = 46347;  // 2026

class AskedForm : public ::testing::Test {
protected:
    /// A calendar on a box of a form, which must live longer.
    class Shown {
    public:
        Shown(AskedForm& test, IDispatch& form) : mTest(test) { mTest.Show(form); }
        ~Shown() {
            mTest.mView.Reset();
            mTest.mBox.reset();
        }
        Shown(const Shown&) = delete;
        Shown& operator=(const Shown&) = delete;

    private:
        AskedForm& mTest;
    };

    void Show(IDispatch& form) {
        mBox.emplace(120, 100, &form);
        mView = Create(L"KWOMonthView");
        const Outcome outcome =
            Call(mView.Get(), L"Create",
                 {static_cast<IDispatch*>(&*mBox), Var::Date(kNovember21), Var::Missing(), true, Var::Missing(), true});
        ASSERT_EQ(outcome.result.boolVal, VARIANT_TRUE);
    }
    /// The month that is shown after the key that leads to the one before or behind.
    int MonthAfter(int month) {
        const Outcome outcome = Call(mView.Get(), L"KeyDown", {month == 12 ? 34 : 33, 0});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
        return Get(mView.Get(), L"VisibleMonth").result.iVal;
    }
    /// Whether Space selected the day.
    bool SelectsTheDay() {
        Let(mView.Get(), L"CanSelect", true);
        EXPECT_EQ(Hex(Call(mView.Get(), L"KeyDown", {32, 0}).status), Hex(S_OK));
        return Get(mView.Get(), L"IsSelected", {Var::Date(kNovember21)}).result.boolVal == VARIANT_TRUE;
    }

    std::optional<HostBox> mBox;
    ComPtr<IDispatch> mView;
};

/// A parameter that is a variant may itself refer to the caller's variable.
void SetTrue(VARIANT& place) {
    if (place.vt == (VT_BYREF | VT_BOOL)) {
        *place.pboolVal = VARIANT_TRUE;
    } else {
        place.vt = VT_BOOL;
        place.boolVal = VARIANT_TRUE;
    }
}
void SetTrue(CY& place) {
    place.int64 = 10'000;
}
template <class Number>
void SetTrue(Number& place) {
    place = 1;
}

double AsNumber(const VARIANT& value) {
    return NumberIn(value);
}
double AsNumber(const CY& value) {
    return static_cast<double>(value.int64) / 10'000;
}
template <class Number>
double AsNumber(Number value) {
    return static_cast<double>(value);
}

template <class T>
class FormOfTyped : public AskedForm {};

using Numbers = ::testing::Types<SHORT, LONG, LONGLONG, USHORT, ULONG, ULONGLONG, float, double, CY, VARIANT>;
TYPED_TEST_SUITE(FormOfTyped, Numbers);

TYPED_TEST(FormOfTyped, NumbersByReferenceIsAskedOnceAndRefuses) {
    using Number = TypeParam;
    double month = 0;
    double year = 0;
    bool refuses = false;
    TypedForm<IDispatch**, Number*, Number*, Boolean*> form(
        L"OnChangeMonth", [&](IDispatch** box, Number* newMonth, Number* newYear, Boolean* cancel) {
            EXPECT_EQ(*box, &*this->mBox);
            EXPECT_EQ(cancel->value, VARIANT_FALSE);
            month = AsNumber(*newMonth);
            year = AsNumber(*newYear);
            if (refuses) cancel->value = VARIANT_TRUE;
            return S_OK;
        });
    const typename TestFixture::Shown shown(*this, form);

    EXPECT_EQ(this->MonthAfter(12), 12);
    EXPECT_EQ(month, 12);
    EXPECT_EQ(year, 2026);
    EXPECT_EQ(form.runs, 1);
    EXPECT_EQ(form.calls, 1) << "it takes the arguments as they are first passed";
    refuses = true;
    EXPECT_EQ(this->MonthAfter(11), 12);
    EXPECT_EQ(form.runs, 2);
}

TYPED_TEST(FormOfTyped, NumbersByValueIsAskedOnce) {
    using Number = TypeParam;
    double month = 0;
    double year = 0;
    TypedForm<IDispatch*, Number, Number, Boolean*> form(
        L"OnChangeMonth", [&](IDispatch* box, Number newMonth, Number newYear, Boolean* cancel) {
            EXPECT_EQ(box, &*this->mBox);
            month = AsNumber(newMonth);
            year = AsNumber(newYear);
            cancel->value = VARIANT_TRUE;
            return S_OK;
        });
    const typename TestFixture::Shown shown(*this, form);

    EXPECT_EQ(this->MonthAfter(12), 11);
    EXPECT_EQ(month, 12);
    EXPECT_EQ(year, 2026);
    EXPECT_EQ(form.runs, 1);
}

TYPED_TEST(FormOfTyped, NumbersMayTakeTheRefusalInOneToo) {
    using Number = TypeParam;
    TypedForm<IDispatch**, Number*, Number, Number*> form(L"OnChangeMonth",
                                                          [](IDispatch**, Number*, Number, Number* cancel) {
                                                              SetTrue(*cancel);
                                                              return S_OK;
                                                          });
    const typename TestFixture::Shown shown(*this, form);

    EXPECT_EQ(this->MonthAfter(12), 11);
    EXPECT_EQ(form.runs, 1);
}

// What it writes lies over the type of a variant that holds it.
TEST_F(AskedForm, MayTakeDecimalsByReference) {
    TypedForm<IDispatch**, DECIMAL*, LONG*, DECIMAL*> form(L"OnChangeMonth",
                                                           [](IDispatch**, DECIMAL* month, LONG*, DECIMAL* cancel) {
                                                               EXPECT_EQ(month->Lo64, 12u);
                                                               *cancel = {};
                                                               cancel->Lo64 = 1;
                                                               return S_OK;
                                                           });
    const Shown shown(*this, form);

    EXPECT_EQ(MonthAfter(12), 11);
    EXPECT_EQ(form.runs, 1);
}

TEST_F(AskedForm, OfNarrowNumbersIsAskedWhenTheyHoldTheValues) {
    TypedForm<IDispatch**, BYTE*, SHORT*, Boolean*> bytes(L"OnChangeMonth",
                                                          [](IDispatch**, BYTE* month, SHORT*, Boolean* cancel) {
                                                              EXPECT_EQ(*month, 12);
                                                              cancel->value = VARIANT_TRUE;
                                                              return S_OK;
                                                          });
    {
        const Shown shown(*this, bytes);
        EXPECT_EQ(MonthAfter(12), 11);
        EXPECT_EQ(bytes.runs, 1);
    }
    TypedForm<IDispatch**, CHAR, BYTE, Boolean*> tooNarrow(L"OnChangeMonth",
                                                           [](IDispatch**, CHAR, BYTE, Boolean*) { return S_OK; });
    const Shown shown(*this, tooNarrow);
    EXPECT_EQ(MonthAfter(12), 12) << "a form that cannot be asked refuses nothing";
    EXPECT_EQ(tooNarrow.runs, 0);
}

// Compilers name the class of a control, an enumeration, and what another library calls a number.
TEST_F(AskedForm, OfNamedTypesIsAskedOnceAndRefuses) {
    const auto refuse = [&](INamedDispatch* box, OLE_TRISTATE month, OLE_TRISTATE year, CancelBool* cancel) {
        EXPECT_EQ(static_cast<IDispatch*>(box), &*mBox);
        EXPECT_EQ(month, 12);
        EXPECT_EQ(year, 2026);
        cancel->value = VARIANT_TRUE;
        return S_OK;
    };
    TypedForm<INamedDispatch*, OLE_TRISTATE, OLE_TRISTATE, CancelBool*> byValue(L"OnChangeMonth", refuse);
    {
        const Shown shown(*this, byValue);
        EXPECT_EQ(MonthAfter(12), 11);
        EXPECT_EQ(byValue.runs, 1);
    }
    TypedForm<INamedDispatch**, OLE_TRISTATE*, OLE_TRISTATE*, CancelBool*> byReference(
        L"OnChangeMonth", [&](INamedDispatch** box, OLE_TRISTATE* month, OLE_TRISTATE* year, CancelBool* cancel) {
            return refuse(*box, *month, *year, cancel);
        });
    const Shown shown(*this, byReference);
    EXPECT_EQ(MonthAfter(12), 11);
    EXPECT_EQ(byReference.runs, 1);
}

TEST_F(AskedForm, ThatCannotBeAskedRefusesNothing) {
    TypedForm<IDispatch**, LONG*> tooFew(L"OnChangeMonth", [](IDispatch**, LONG*) { return S_OK; });
    {
        const Shown shown(*this, tooFew);
        EXPECT_EQ(MonthAfter(12), 12);
        EXPECT_EQ(tooFew.runs, IsWine() ? 1 : 0) << "Wine ignores what is too many";
    }
    TypedForm<IDispatch**, Status, LONG*, Boolean*> status(L"OnChangeMonth",
                                                           [](IDispatch**, Status, LONG*, Boolean*) { return S_OK; });
    const Shown shown(*this, status);
    EXPECT_EQ(MonthAfter(12), 12);
    EXPECT_EQ(status.runs, 0);
}

TEST_F(AskedForm, WithoutTypeInformationIsAskedOnce) {
    TypedForm<IDispatch**, LONG*, LONG*, Boolean*> form(L"OnChangeMonth",
                                                        [](IDispatch**, LONG*, LONG*, Boolean* cancel) {
                                                            cancel->value = VARIANT_TRUE;
                                                            return S_OK;
                                                        });
    form.tellsTypes = false;
    const Shown shown(*this, form);
    EXPECT_EQ(MonthAfter(12), 11);
    EXPECT_EQ(form.runs, 1);
}

TEST_F(AskedForm, ThatFailsItselfIsNotAskedAgain) {
    for (const HRESULT failure : {DISP_E_TYPEMISMATCH, DISP_E_BADVARTYPE, static_cast<HRESULT>(0x800A000D), E_FAIL}) {
        TypedForm<IDispatch**, LONG*, LONG*, Boolean*> form(
            L"OnChangeMonth", [failure](IDispatch**, LONG*, LONG*, Boolean*) { return failure; });
        const Shown shown(*this, form);
        EXPECT_EQ(MonthAfter(12), 12) << Hex(failure);
        EXPECT_EQ(form.runs, 1) << Hex(failure);
    }
}

TEST_F(AskedForm, TakesTheDateInItsOwnWay) {
    TypedForm<IDispatch**, double*, Boolean*> number(L"OnChangeDate", [](IDispatch**, double* date, Boolean* cancel) {
        EXPECT_EQ(*date, kNovember21);
        cancel->value = VARIANT_TRUE;
        return S_OK;
    });
    {
        const Shown shown(*this, number);
        EXPECT_FALSE(SelectsTheDay());
        EXPECT_EQ(number.runs, 1);
    }
    TypedForm<VARIANT, VARIANT, VARIANT*> variants(L"OnChangeDate", [](VARIANT, VARIANT date, VARIANT* cancel) {
        EXPECT_EQ(NumberIn(date), kNovember21);
        SetTrue(*cancel);
        return S_OK;
    });
    const Shown shown(*this, variants);
    EXPECT_FALSE(SelectsTheDay());
    EXPECT_EQ(variants.runs, 1);
}

}  // namespace
}  // namespace kwo::com_test
