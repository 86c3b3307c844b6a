#include "com_support/variant_references.h"

#include <gtest/gtest.h>

#include <vector>

#include "com_support/bstr.h"
#include "com_support/owned_variant.h"
#include "com_support/variant_conversion.h"
#include "support/stand_in.h"

namespace kwo::com_support {
namespace {

using test_support::StandIn;

VARIANT Tagged(VARTYPE type) {
    VARIANT value = {};
    value.vt = type;
    return value;
}
VARIANT Number(LONG number) {
    VARIANT value = Tagged(VT_I4);
    value.lVal = number;
    return value;
}
VARIANT Reference(VARTYPE type, void* place) {
    VARIANT value = Tagged(static_cast<VARTYPE>(VT_BYREF | type));
    value.byref = place;
    return value;
}

/// References to variants, `count` of them, of which the last one refers to `inner`.
class Chain {
public:
    Chain(int count, VARIANT& inner) : mLinks(static_cast<std::size_t>(count)) {
        VARIANT* next = &inner;
        for (auto link = mLinks.rbegin(); link != mLinks.rend(); ++link) {
            *link = Reference(VT_VARIANT, next);
            next = &*link;
        }
    }
    VARIANT* First() { return &mLinks.front(); }

private:
    std::vector<VARIANT> mLinks;
};

TEST(InnermostTest, AValueAndAReferenceToAValueAreTheirOwn) {
    VARIANT number = Number(7);
    EXPECT_EQ(Innermost(&number), &number);
    VARIANT reference = Reference(VT_I4, &number.lVal);
    EXPECT_EQ(Innermost(&reference), &reference);
}

TEST(InnermostTest, FollowsAsManyReferencesAsAreAllowedAndNoMore) {
    VARIANT number = Number(7);
    EXPECT_EQ(Innermost(Chain(1, number).First()), &number);
    EXPECT_EQ(Innermost(Chain(kMostNestedReferences, number).First()), &number);
    EXPECT_EQ(Innermost(Chain(kMostNestedReferences + 1, number).First()), nullptr);
}

TEST(InnermostTest, WhatLeadsNowhereHasNone) {
    VARIANT nowhere = Reference(VT_VARIANT, nullptr);
    EXPECT_EQ(Innermost(&nowhere), nullptr);
    EXPECT_EQ(Innermost(Chain(2, nowhere).First()), nullptr);
    VARIANT circle = Tagged(kVariantReference);
    circle.pvarVal = &circle;
    EXPECT_EQ(Innermost(&circle), nullptr);
    EXPECT_EQ(Innermost(static_cast<VARIANT*>(nullptr)), nullptr);
}

TEST(FirstReferredTest, LooksAtEveryVariantOnTheWay) {
    VARIANT number = Number(7);
    Chain chain(3, number);
    int seen = 0;
    const auto count = [&](const VARIANT&) { return ++seen == 3; };
    EXPECT_EQ(FirstReferred(chain.First(), count), chain.First() + 2);
    EXPECT_EQ(FirstReferred(chain.First(), [](const VARIANT&) { return false; }), nullptr);
}

TEST(IsMissingTest, IsOneErrorAlsoBehindReferences) {
    VARIANT missing = Tagged(VT_ERROR);
    missing.scode = DISP_E_PARAMNOTFOUND;
    EXPECT_TRUE(IsMissing(missing));
    EXPECT_TRUE(IsMissing(*Chain(2, missing).First()));
    EXPECT_TRUE(IsMissing(Reference(VT_ERROR, &missing.scode)));
    VARIANT other = missing;
    other.scode = E_FAIL;
    EXPECT_FALSE(IsMissing(other));
    EXPECT_FALSE(IsMissing(Reference(VT_ERROR, &other.scode)));
    EXPECT_FALSE(IsMissing(Reference(VT_ERROR, nullptr)));
    EXPECT_FALSE(IsMissing(Number(DISP_E_PARAMNOTFOUND)));
}

TEST(IsNullObjectTest, HoweverItIsPassed) {
    StandIn object;
    IDispatch* none = nullptr;
    IDispatch* variable = &object;
    VARIANT present = Tagged(VT_DISPATCH);
    present.pdispVal = &object;
    for (const VARTYPE type : {VARTYPE{VT_DISPATCH}, VARTYPE{VT_UNKNOWN}}) {
        EXPECT_TRUE(IsNullObject(Tagged(type))) << type;
        EXPECT_TRUE(IsNullObject(Reference(type, &none))) << type;
        EXPECT_TRUE(IsNullObject(Reference(type, nullptr))) << type;
        EXPECT_FALSE(IsNullObject(Reference(type, &variable))) << type;
    }
    EXPECT_FALSE(IsNullObject(present));
    EXPECT_FALSE(IsNullObject(Number(0)));
    EXPECT_FALSE(IsNullObject(Tagged(VT_EMPTY)));
}

TEST(StorageSizeTest, IsTheSizeOfTheMemberOfTheVariant) {
    const VARIANT v = {};
    const struct {
        int type;
        std::size_t size;
    } rows[] = {
        {VT_I1, sizeof v.cVal},
        {VT_UI1, sizeof v.bVal},
        {VT_I2, sizeof v.iVal},
        {VT_UI2, sizeof v.uiVal},
        {VT_BOOL, sizeof v.boolVal},
        {VT_I4, sizeof v.lVal},
        {VT_UI4, sizeof v.ulVal},
        {VT_INT, sizeof v.intVal},
        {VT_UINT, sizeof v.uintVal},
        {VT_R4, sizeof v.fltVal},
        {VT_ERROR, sizeof v.scode},
        {VT_I8, sizeof v.llVal},
        {VT_UI8, sizeof v.ullVal},
        {VT_R8, sizeof v.dblVal},
        {VT_CY, sizeof v.cyVal},
        {VT_DATE, sizeof v.date},
        {VT_BSTR, sizeof v.bstrVal},
        {VT_DISPATCH, sizeof v.pdispVal},
        {VT_UNKNOWN, sizeof v.punkVal},
        {VT_ARRAY | VT_I1, sizeof v.parray},
        {VT_ARRAY | VT_VARIANT, sizeof v.parray},
        {VT_EMPTY, 0},
        {VT_NULL, 0},
        {VT_DECIMAL, 0},
        {VT_VARIANT, 0},
        {VT_RECORD, 0},
        {77, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(StorageSize(static_cast<VARTYPE>(row.type)), row.size) << row.type;
}

TEST(SeeReferredTest, ShowsTheValueWithoutCopyingIt) {
    SHORT number = -3;
    VARIANT value = {};
    ASSERT_TRUE(SeeReferred(Reference(VT_I2, &number), value));
    EXPECT_EQ(value.vt, VT_I2);
    EXPECT_EQ(value.iVal, -3);

    const Bstr text(L"text");
    BSTR variable = text.Get();
    ASSERT_TRUE(SeeReferred(Reference(VT_BSTR, &variable), value));
    EXPECT_EQ(value.vt, VT_BSTR);
    EXPECT_EQ(value.bstrVal, text.Get());
}

TEST(SeeReferredTest, ADecimalKeepsItsNumberAndGetsATag) {
    DECIMAL decimal = {};
    decimal.wReserved = 99;
    decimal.Lo64 = 12'345;
    decimal.scale = 2;
    VARIANT value = {};
    ASSERT_TRUE(SeeReferred(Reference(VT_DECIMAL, &decimal), value));
    EXPECT_EQ(value.vt, VT_DECIMAL);
    EXPECT_EQ(value.decVal.Lo64, 12'345u);
    EXPECT_EQ(value.decVal.scale, 2);
}

TEST(SeeReferredTest, RefusesWhatLeadsNowhere) {
    LONG number = 7;
    VARIANT value = Number(5);
    EXPECT_FALSE(SeeReferred(Reference(VT_I4, nullptr), value));
    EXPECT_FALSE(SeeReferred(Reference(VT_DECIMAL, nullptr), value));
    EXPECT_FALSE(SeeReferred(Reference(VT_EMPTY, &number), value));
    EXPECT_FALSE(SeeReferred(Reference(77, &number), value));
    EXPECT_EQ(value.lVal, 5);
}

TEST(SeeInnermostTest, ShowsTheValueBehindEveryKindOfReference) {
    LONG number = 7;
    VARIANT whole = Number(7);
    VARIANT referred = Reference(VT_I4, &number);
    Chain toWhole(2, whole);
    Chain toReferred(kMostNestedReferences, referred);
    for (const VARIANT* const variant : {&whole, &referred, toWhole.First(), toReferred.First()}) {
        VARIANT value = {};
        ASSERT_TRUE(SeeInnermost(*variant, value)) << variant->vt;
        EXPECT_EQ(value.vt, VT_I4);
        EXPECT_EQ(value.lVal, 7);
    }
}

TEST(SeeInnermostTest, RefusesWhatLeadsNowhere) {
    LONG number = 7;
    VARIANT whole = Number(7);
    VARIANT value = Number(5);
    EXPECT_FALSE(SeeInnermost(Reference(VT_VARIANT, nullptr), value));
    EXPECT_FALSE(SeeInnermost(Reference(VT_I4, nullptr), value));
    EXPECT_FALSE(SeeInnermost(Reference(77, &number), value));
    Chain tooLong(kMostNestedReferences + 1, whole);
    EXPECT_FALSE(SeeInnermost(*tooLong.First(), value));
    EXPECT_EQ(value.lVal, 5);
}

TEST(ExchangeReferredTest, SwapsNumbersOfEverySizeAndNothingBesideThem) {
    for (const int type : {VT_UI1, VT_I2, VT_I4, VT_R8}) {
        const std::size_t size = StorageSize(static_cast<VARTYPE>(type));
        unsigned char place[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
        VARIANT value = Tagged(static_cast<VARTYPE>(type));
        value.llVal = 0x4142434445464748;
        ASSERT_TRUE(ExchangeReferred(Reference(static_cast<VARTYPE>(type), place), value)) << type;
        EXPECT_EQ(place[0], 0x48) << type;
        EXPECT_EQ(place[size - 1], 0x48 - (size - 1)) << type;
        EXPECT_EQ(place[size], size + 1) << type;
        EXPECT_EQ(value.bVal, 1) << type;
    }
}

TEST(ExchangeReferredTest, WhatIsReplacedBelongsToTheValue) {
    StandIn before;
    StandIn after;
    before.AddRef();
    IDispatch* variable = &before;
    {
        OwnedVariant value;
        value.vt = VT_DISPATCH;
        value.pdispVal = &after;
        after.AddRef();
        ASSERT_TRUE(ExchangeReferred(Reference(VT_DISPATCH, &variable), value));
    }
    EXPECT_EQ(variable, &after);
    EXPECT_EQ(before.references, 0u);
    EXPECT_EQ(after.references, 1u);
}

TEST(ExchangeReferredTest, ADecimalArrivesWithoutTheTag) {
    DECIMAL variable = {};
    variable.Lo64 = 1;
    VARIANT value = {};
    value.decVal.Lo64 = 2;
    value.vt = VT_DECIMAL;
    ASSERT_TRUE(ExchangeReferred(Reference(VT_DECIMAL, &variable), value));
    EXPECT_EQ(variable.Lo64, 2u);
    EXPECT_EQ(variable.wReserved, 0);
    EXPECT_EQ(value.vt, VT_DECIMAL);
    EXPECT_EQ(value.decVal.Lo64, 1u);
}

TEST(ExchangeReferredTest, RefusesTypesThatNothingRefersTo) {
    LONG number = 7;
    VARIANT value = Number(5);
    EXPECT_FALSE(ExchangeReferred(Reference(VT_EMPTY, &number), value));
    EXPECT_FALSE(ExchangeReferred(Reference(VT_VARIANT, &number), value));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(value.lVal, 5);
}

TEST(ConvertTest, BooleansBecomeWords) {
    VARIANT truth = Tagged(VT_BOOL);
    truth.boolVal = VARIANT_TRUE;
    OwnedVariant text;
    ASSERT_EQ(Convert(text, truth, VT_BSTR, LOCALE_USER_DEFAULT), S_OK);
    EXPECT_EQ(View(text.bstrVal), L"True");
}

TEST(ConvertTest, SaysWhyAValueDoesNotFit) {
    VARIANT large = Number(70'000);
    OwnedVariant converted;
    EXPECT_EQ(Convert(converted, large, VT_I2, 0), DISP_E_OVERFLOW);
    const Bstr word(L"word");
    VARIANT text = Tagged(VT_BSTR);
    text.bstrVal = word.Get();
    EXPECT_EQ(Convert(converted, text, VT_I4, 0), DISP_E_TYPEMISMATCH);
}

VARIANT Wide(VARTYPE type, LONGLONG number) {
    VARIANT value = Tagged(type);
    value.llVal = number;
    return value;
}

TEST(To32BitsTest, TakesWhat32BitsHoldWithOrWithoutASign) {
    const struct {
        LONGLONG number;
        HRESULT result;
        LONG bits;
    } rows[] = {
        {0, S_OK, 0},
        {INT32_MAX, S_OK, INT32_MAX},
        {UINT32_MAX, S_OK, -1},
        {INT32_MIN, S_OK, INT32_MIN},
        {0x80001234, S_OK, static_cast<LONG>(0x80001234)},
        {LONGLONG{UINT32_MAX} + 1, DISP_E_OVERFLOW, 77},
        {LONGLONG{INT32_MIN} - 1, DISP_E_OVERFLOW, 77},
    };
    for (const auto& row : rows) {
        LONG bits = 77;
        EXPECT_EQ(To32Bits(bits, Wide(VT_I8, row.number), 0), row.result) << row.number;
        EXPECT_EQ(bits, row.bits) << row.number;
    }
}

TEST(To32BitsTest, APointerSizedHandleRepeatsItsHighestBitWhateverItsType) {
    LONG bits = 0;
    EXPECT_EQ(To32Bits(bits, Wide(VT_UI8, static_cast<LONG>(0x80001234)), 0), S_OK);
    EXPECT_EQ(bits, static_cast<LONG>(0x80001234));
    ULONGLONG variable = static_cast<ULONGLONG>(LONGLONG{-5});
    VARIANT reference = Reference(VT_UI8, &variable);
    EXPECT_EQ(To32Bits(bits, reference, 0), S_OK);
    EXPECT_EQ(bits, -5);
    EXPECT_EQ(To32Bits(bits, *Chain(2, reference).First(), 0), S_OK);
    variable = 0x1'0000'0000;
    EXPECT_EQ(To32Bits(bits, reference, 0), DISP_E_OVERFLOW);
}

TEST(To32BitsTest, TakesAnyNumericTypeAndNumbersInWords) {
    LONG bits = 0;
    VARIANT real = Tagged(VT_R8);
    real.dblVal = 4'294'967'295.0;
    EXPECT_EQ(To32Bits(bits, real, 0), S_OK);
    EXPECT_EQ(bits, -1);
    const Bstr word(L"-7");
    VARIANT text = Tagged(VT_BSTR);
    text.bstrVal = word.Get();
    EXPECT_EQ(To32Bits(bits, text, 0), S_OK);
    EXPECT_EQ(bits, -7);
    EXPECT_EQ(To32Bits(bits, Tagged(VT_EMPTY), 0), S_OK);
    EXPECT_EQ(bits, 0);
}

TEST(To32BitsTest, RefusesWhatIsNoNumber) {
    LONG bits = 77;
    EXPECT_EQ(To32Bits(bits, Tagged(VT_NULL), 0), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(To32Bits(bits, Tagged(VT_DISPATCH), 0), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(To32Bits(bits, Reference(VT_VARIANT, nullptr), 0), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bits, 77);
}

}  // namespace
}  // namespace kwo::com_support
