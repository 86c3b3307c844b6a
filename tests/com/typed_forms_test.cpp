#include <optional>

#include "com_test.h"
#include "host_box.h"
#include "typed_form.h"

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
        ASSERT_EQ(VARIANT_TRUE, outcome.result.boolVal);
    }
    /// The month that is shown after the key that leads to the one before or behind.
    int MonthAfter(int month) {
        const Outcome outcome = Call(mView.Get(), L"KeyDown", {month == 12 ? 34 : 33, 0});
        EXPECT_EQ(Hex(S_OK), Hex(outcome.status));
        return Get(mView.Get(), L"VisibleMonth").result.iVal;
    }
    /// Whether Space selected the day.
    bool SelectsTheDay() {
        Let(mView.Get(), L"CanSelect", true);
        EXPECT_EQ(Hex(S_OK), Hex(Call(mView.Get(), L"KeyDown", {32, 0}).status));
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
            EXPECT_EQ(&*this->mBox, *box);
            EXPECT_EQ(VARIANT_FALSE, cancel->value);
            month = AsNumber(*newMonth);
            year = AsNumber(*newYear);
            if (refuses) cancel->value = VARIANT_TRUE;
            return S_OK;
        });
    const typename TestFixture::Shown shown(*this, form);

    EXPECT_EQ(12, this->MonthAfter(12));
    EXPECT_EQ(12, month);
    EXPECT_EQ(2026, year);
    EXPECT_EQ(1, form.runs);
    EXPECT_EQ(1, form.calls) << "it takes the arguments as they are first passed";
    refuses = true;
    EXPECT_EQ(12, this->MonthAfter(11));
    EXPECT_EQ(2, form.runs);
}

TYPED_TEST(FormOfTyped, NumbersByValueIsAskedOnce) {
    using Number = TypeParam;
    double month = 0;
    double year = 0;
    TypedForm<IDispatch*, Number, Number, Boolean*> form(
        L"OnChangeMonth", [&](IDispatch* box, Number newMonth, Number newYear, Boolean* cancel) {
            EXPECT_EQ(&*this->mBox, box);
            month = AsNumber(newMonth);
            year = AsNumber(newYear);
            cancel->value = VARIANT_TRUE;
            return S_OK;
        });
    const typename TestFixture::Shown shown(*this, form);

    EXPECT_EQ(11, this->MonthAfter(12));
    EXPECT_EQ(12, month);
    EXPECT_EQ(2026, year);
    EXPECT_EQ(1, form.runs);
}

TYPED_TEST(FormOfTyped, NumbersMayTakeTheRefusalInOneToo) {
    using Number = TypeParam;
    TypedForm<IDispatch**, Number*, Number, Number*> form(L"OnChangeMonth",
                                                          [](IDispatch**, Number*, Number, Number* cancel) {
                                                              SetTrue(*cancel);
                                                              return S_OK;
                                                          });
    const typename TestFixture::Shown shown(*this, form);

    EXPECT_EQ(11, this->MonthAfter(12));
    EXPECT_EQ(1, form.runs);
}

TEST_F(AskedForm, OfNarrowNumbersIsAskedWhenTheyHoldTheValues) {
    TypedForm<IDispatch**, BYTE*, SHORT*, Boolean*> bytes(L"OnChangeMonth",
                                                          [](IDispatch**, BYTE* month, SHORT*, Boolean* cancel) {
                                                              EXPECT_EQ(12, *month);
                                                              cancel->value = VARIANT_TRUE;
                                                              return S_OK;
                                                          });
    {
        const Shown shown(*this, bytes);
        EXPECT_EQ(11, MonthAfter(12));
        EXPECT_EQ(1, bytes.runs);
    }
    TypedForm<IDispatch**, CHAR, BYTE, Boolean*> tooNarrow(L"OnChangeMonth",
                                                           [](IDispatch**, CHAR, BYTE, Boolean*) { return S_OK; });
    const Shown shown(*this, tooNarrow);
    EXPECT_EQ(12, MonthAfter(12)) << "a form that cannot be asked refuses nothing";
    EXPECT_EQ(0, tooNarrow.runs);
}

TEST_F(AskedForm, WithoutTypeInformationIsAskedOnce) {
    TypedForm<IDispatch**, LONG*, LONG*, Boolean*> form(L"OnChangeMonth",
                                                        [](IDispatch**, LONG*, LONG*, Boolean* cancel) {
                                                            cancel->value = VARIANT_TRUE;
                                                            return S_OK;
                                                        });
    form.tellsTypes = false;
    const Shown shown(*this, form);
    EXPECT_EQ(11, MonthAfter(12));
    EXPECT_EQ(1, form.runs);
}

TEST_F(AskedForm, ThatFailsItselfIsNotAskedAgain) {
    for (const HRESULT failure : {DISP_E_TYPEMISMATCH, DISP_E_BADVARTYPE, static_cast<HRESULT>(0x800A000D), E_FAIL}) {
        TypedForm<IDispatch**, LONG*, LONG*, Boolean*> form(
            L"OnChangeMonth", [failure](IDispatch**, LONG*, LONG*, Boolean*) { return failure; });
        const Shown shown(*this, form);
        EXPECT_EQ(12, MonthAfter(12)) << Hex(failure);
        EXPECT_EQ(1, form.runs) << Hex(failure);
    }
}

TEST_F(AskedForm, TakesTheDateInItsOwnWay) {
    TypedForm<IDispatch**, double*, Boolean*> number(L"OnChangeDate", [](IDispatch**, double* date, Boolean* cancel) {
        EXPECT_EQ(kNovember21, *date);
        cancel->value = VARIANT_TRUE;
        return S_OK;
    });
    {
        const Shown shown(*this, number);
        EXPECT_FALSE(SelectsTheDay());
        EXPECT_EQ(1, number.runs);
    }
    TypedForm<VARIANT, VARIANT, VARIANT*> variants(L"OnChangeDate", [](VARIANT, VARIANT date, VARIANT* cancel) {
        EXPECT_EQ(kNovember21, NumberIn(date));
        SetTrue(*cancel);
        return S_OK;
    });
    const Shown shown(*this, variants);
    EXPECT_FALSE(SelectsTheDay());
    EXPECT_EQ(1, variants.runs);
}

}  // namespace
}  // namespace kwo::com_test
