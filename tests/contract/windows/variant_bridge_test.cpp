#include "platform/windows/variant_bridge.h"

#include <gtest/gtest.h>

#include <limits>

#include "recording_dispatch.h"
#include "support/raised.h"

namespace kwo::platform::windows {
namespace {

using com_support::OwnedVariant;
using test_support::kMismatch;
using test_support::Raised;

VARIANT Tagged(VARTYPE type) {
    VARIANT value = {};
    value.vt = type;
    return value;
}

/// A value whose bits begin with `bits`, which is enough for every type of up to 64 bits.
VARIANT WithBits(VARTYPE type, LONGLONG bits) {
    VARIANT value = Tagged(type);
    value.llVal = bits;
    return value;
}

VARIANT Real(double number, VARTYPE type) {
    VARIANT value = Tagged(type);
    if (type == VT_R4) {
        value.fltVal = static_cast<float>(number);
    } else {
        value.dblVal = number;
    }
    return value;
}

VARIANT ReferenceTo(VARIANT& value) {
    VARIANT reference = Tagged(static_cast<VARTYPE>(value.vt | VT_BYREF));
    reference.byref = value.vt == VT_DECIMAL ? static_cast<void*>(&value.decVal) : static_cast<void*>(&value.llVal);
    return reference;
}

VARIANT ReferenceToVariant(VARIANT& value) {
    VARIANT reference = Tagged(VT_BYREF | VT_VARIANT);
    reference.pvarVal = &value;
    return reference;
}

OwnedVariant String(TextView text) {
    VARIANT value = Tagged(VT_BSTR);
    value.bstrVal = ::SysAllocStringLen(std::wstring(text.begin(), text.end()).data(), static_cast<UINT>(text.size()));
    return OwnedVariant::Adopt(value);
}

const VARIANT& ForeignOf(const Variant& value) {
    return dynamic_cast<const WindowsForeignValue&>(*std::get<ForeignRef>(value)).Get();
}

struct PlainValue {
    VARIANT outside;
    Variant inside;
};

std::vector<PlainValue> PlainValues() {
    return {{WithBits(VT_I2, 0), std::int16_t{0}},
            {WithBits(VT_I2, 0x7FFF), std::int16_t{32767}},
            {WithBits(VT_I2, 0x8000), std::int16_t{-32768}},
            {WithBits(VT_I4, 0x7FFFFFFF), std::numeric_limits<std::int32_t>::max()},
            {WithBits(VT_I4, 0x80000000), std::numeric_limits<std::int32_t>::min()},
            {Real(1.5, VT_R4), 1.5f},
            {Real(-1e300, VT_R8), -1e300},
            {WithBits(VT_CY, -15000), Currency{-15000}},
            {WithBits(VT_CY, std::numeric_limits<LONGLONG>::min()), Currency{std::numeric_limits<LONGLONG>::min()}},
            {Real(-1.25, VT_DATE), Date{-1.25}},
            {WithBits(VT_BOOL, 0), false},
            {WithBits(VT_BOOL, 0xFFFF), true},
            {WithBits(VT_UI1, 0), std::uint8_t{0}},
            {WithBits(VT_UI1, 255), std::uint8_t{255}},
            {WithBits(VT_ERROR, static_cast<LONG>(0x800A0035)), ErrorValue{53}},
            {WithBits(VT_ERROR, -5), ErrorValue{-5}},
            {WithBits(VT_ERROR, static_cast<LONG>(0x80040001)), ErrorValue{static_cast<std::int32_t>(0x80040001)}},
            {WithBits(VT_ERROR, DISP_E_PARAMNOTFOUND), Missing{}}};
}

TEST(VariantBridgeTest, PlainValuesByValueAndByReference) {
    for (PlainValue& row : PlainValues()) {
        VARIANT reference = ReferenceTo(row.outside);
        VARIANT variantReference = ReferenceToVariant(row.outside);
        VARIANT nested = ReferenceToVariant(reference);
        VARIANT twice = ReferenceToVariant(variantReference);

        EXPECT_EQ(FromVariant(row.outside), row.inside) << row.outside.vt;
        EXPECT_EQ(FromVariant(reference), row.inside) << row.outside.vt;
        EXPECT_EQ(FromVariant(variantReference), row.inside) << row.outside.vt;
        EXPECT_EQ(FromVariant(nested), row.inside) << row.outside.vt;
        EXPECT_EQ(FromVariant(twice), row.inside) << row.outside.vt;
    }
}

TEST(VariantBridgeTest, PlainValuesGoBackAsTheyCame) {
    for (const PlainValue& row : PlainValues()) {
        const OwnedVariant back = OwnedVariant::Adopt(ToVariant(row.inside));

        ASSERT_EQ(back.vt, row.outside.vt);
        EXPECT_EQ(FromVariant(back), row.inside) << row.outside.vt;
        switch (row.outside.vt) {
            case VT_UI1:
                EXPECT_EQ(back.bVal, row.outside.bVal);
                break;
            case VT_I2:
            case VT_BOOL:
                EXPECT_EQ(back.iVal, row.outside.iVal);
                break;
            case VT_I4:
            case VT_R4:
            case VT_ERROR:
                EXPECT_EQ(back.lVal, row.outside.lVal);
                break;
            default:
                EXPECT_EQ(back.llVal, row.outside.llVal);
        }
    }
}

TEST(VariantBridgeTest, AnyBitMakesATrueBooleanWhichGoesBackAsAllBits) {
    for (const LONGLONG bits : {1, 2, 0x100, 0x8000, 0xFFFF}) {
        EXPECT_EQ(FromVariant(WithBits(VT_BOOL, bits)), Variant(true)) << bits;
    }
    EXPECT_EQ(ToVariant(true).boolVal, VARIANT_TRUE);
    // Only the sixteen bits of the value count.
    EXPECT_EQ(FromVariant(WithBits(VT_BOOL, 0x10000)), Variant(false));
}

TEST(VariantBridgeTest, EmptyNullAndMissingAreThreeDifferentThings) {
    EXPECT_EQ(FromVariant(Tagged(VT_EMPTY)), Variant(Empty{}));
    EXPECT_EQ(FromVariant(Tagged(VT_NULL)), Variant(Null{}));
    EXPECT_EQ(ToVariant(Empty{}).vt, VT_EMPTY);
    EXPECT_EQ(ToVariant(Null{}).vt, VT_NULL);
    const VARIANT missing = ToVariant(Missing{});
    EXPECT_EQ(missing.vt, VT_ERROR);
    EXPECT_EQ(missing.scode, DISP_E_PARAMNOTFOUND);
    VARIANT empty = Tagged(VT_EMPTY);
    EXPECT_EQ(FromVariant(ReferenceToVariant(empty)), Variant(Empty{}));
}

TEST(VariantBridgeTest, ErrorNumbersOfTheRuntimeHaveTheirOwnCodes) {
    EXPECT_EQ(ToVariant(ErrorValue{1}).scode, static_cast<SCODE>(0x800A0001));
    EXPECT_EQ(ToVariant(ErrorValue{0xFFFF}).scode, static_cast<SCODE>(0x800AFFFF));
    EXPECT_EQ(ToVariant(ErrorValue{0x10000}).scode, 0x10000);
    EXPECT_EQ(ToVariant(ErrorValue{0}).scode, 0);
    EXPECT_EQ(ErrorNumber(static_cast<SCODE>(0x800A0000)), static_cast<std::int32_t>(0x800A0000));
    EXPECT_EQ(ErrorNumber(static_cast<SCODE>(0x800AFFFF)), 0xFFFF);
    EXPECT_EQ(ErrorNumber(static_cast<SCODE>(0x800B0001)), static_cast<std::int32_t>(0x800B0001));
}

TEST(VariantBridgeTest, TextKeepsItsZeroCharactersAndIsCopied) {
    const Text text(u"a\0\xD83D\xDE00 b", 6);
    OwnedVariant string = String(text);
    const BSTR own = string.bstrVal;

    EXPECT_EQ(FromVariant(string), Variant(text));
    EXPECT_EQ(FromVariant(ReferenceTo(string)), Variant(text));
    const OwnedVariant back = OwnedVariant::Adopt(ToVariant(text));
    ASSERT_EQ(back.vt, VT_BSTR);
    EXPECT_EQ(::SysStringLen(back.bstrVal), 6u);
    EXPECT_EQ(FromVariant(back), Variant(text));
    EXPECT_NE(back.bstrVal, own);
}

TEST(VariantBridgeTest, ANullStringIsAnEmptyText) {
    VARIANT string = Tagged(VT_BSTR);
    EXPECT_EQ(FromVariant(string), Variant(Text()));
    EXPECT_EQ(FromVariant(ReferenceTo(string)), Variant(Text()));
    const OwnedVariant back = OwnedVariant::Adopt(ToVariant(Text()));
    EXPECT_EQ(back.vt, VT_BSTR);
    EXPECT_EQ(::SysStringLen(back.bstrVal), 0u);
}

TEST(VariantBridgeTest, ObjectsComeInWithAReferenceOfTheirOwnAndGoBackAsThemselves) {
    RecordingDispatch object;
    VARIANT dispatch = Tagged(VT_DISPATCH);
    dispatch.pdispVal = &object;
    VARIANT unknown = Tagged(VT_UNKNOWN);
    unknown.punkVal = &object;
    VARIANT unknownReference = ReferenceTo(unknown);

    for (const VARIANT& value :
         {dispatch, unknown, ReferenceTo(dispatch), ReferenceTo(unknown), ReferenceToVariant(unknownReference)}) {
        Variant inside = FromVariant(value);
        ASSERT_TRUE(IsObject(inside)) << value.vt;
        EXPECT_EQ(object.references, 2u) << value.vt;
        {
            const OwnedVariant back = OwnedVariant::Adopt(ToVariant(inside));
            EXPECT_EQ(back.vt, VT_DISPATCH);
            EXPECT_EQ(back.pdispVal, &object);
            EXPECT_EQ(object.references, 3u) << value.vt;
        }
        inside = Empty();
        EXPECT_EQ(object.references, 1u) << value.vt;
    }
}

TEST(VariantBridgeTest, TheNullObjectStaysTheNullObject) {
    for (const VARTYPE type : {VT_DISPATCH, VT_UNKNOWN}) {
        VARIANT null = Tagged(type);
        EXPECT_EQ(FromVariant(null), Variant(HostObjectRef())) << type;
        EXPECT_EQ(FromVariant(ReferenceTo(null)), Variant(HostObjectRef())) << type;
    }
    const VARIANT back = ToVariant(HostObjectRef());
    EXPECT_EQ(back.vt, VT_DISPATCH);
    EXPECT_EQ(back.pdispVal, nullptr);
    EXPECT_EQ(MakeHostObject(nullptr), nullptr);
}

TEST(VariantBridgeTest, AnObjectWithoutAutomationIsCarriedOnly) {
    PlainUnknown object;
    VARIANT unknown = Tagged(VT_UNKNOWN);
    unknown.punkVal = &object;
    {
        const Variant inside = FromVariant(unknown);
        EXPECT_FALSE(IsObject(inside));
        EXPECT_EQ(ForeignOf(inside).punkVal, &object);
        EXPECT_EQ(object.references, 2u);
        const OwnedVariant back = OwnedVariant::Adopt(ToVariant(inside));
        EXPECT_EQ(back.vt, VT_UNKNOWN);
        EXPECT_EQ(object.references, 3u);
    }
    EXPECT_EQ(object.references, 1u);
}

TEST(VariantBridgeTest, IntegersOfOtherWidthsAreCarriedOnly) {
    for (const VARTYPE type : {VT_I1, VT_UI2, VT_UI4, VT_I8, VT_UI8, VT_INT, VT_UINT}) {
        VARIANT value = WithBits(type, 0x71);

        for (const VARIANT& given : {value, ReferenceTo(value), ReferenceToVariant(value)}) {
            const Variant inside = FromVariant(given);
            ASSERT_TRUE(std::holds_alternative<ForeignRef>(inside)) << type;
            const OwnedVariant back = OwnedVariant::Adopt(ToVariant(inside));
            EXPECT_EQ(back.vt, type);
            EXPECT_EQ(back.cVal, 0x71);
        }
    }
}

TEST(VariantBridgeTest, DecimalsAreCarriedByValueAndByReference) {
    VARIANT value;
    ASSERT_EQ(::VarDecFromR8(-12.75, &value.decVal), S_OK);
    value.vt = VT_DECIMAL;

    // Only inside a variant does a decimal carry a tag.
    DECIMAL alone = value.decVal;
    alone.wReserved = 0x4711;
    VARIANT reference = Tagged(VT_BYREF | VT_DECIMAL);
    reference.pdecVal = &alone;
    for (const VARIANT& given : {value, reference, ReferenceTo(value), ReferenceToVariant(value)}) {
        OwnedVariant back = OwnedVariant::Adopt(ToVariant(FromVariant(given)));
        ASSERT_EQ(back.vt, VT_DECIMAL);
        double number = 0;
        EXPECT_EQ(::VarR8FromDec(&back.decVal, &number), S_OK);
        EXPECT_EQ(number, -12.75);
    }
}

TEST(VariantBridgeTest, ArraysAreCopiedOnTheWayInAndOnTheWayOut) {
    RecordingDispatch object;
    VARIANT array = Tagged(VT_ARRAY | VT_DISPATCH);
    array.parray = ::SafeArrayCreateVector(VT_DISPATCH, 0, 1);
    LONG index = 0;
    ASSERT_EQ(::SafeArrayPutElement(array.parray, &index, static_cast<IDispatch*>(&object)), S_OK);
    OwnedVariant owner = OwnedVariant::Adopt(array);
    ASSERT_EQ(object.references, 2u);

    for (const VARIANT& given : {array, ReferenceTo(array), ReferenceToVariant(array)}) {
        {
            const Variant inside = FromVariant(given);
            EXPECT_EQ(object.references, 3u);
            const OwnedVariant back = OwnedVariant::Adopt(ToVariant(inside));
            EXPECT_EQ(back.vt, VT_ARRAY | VT_DISPATCH);
            EXPECT_NE(back.parray, array.parray);
            EXPECT_EQ(object.references, 4u);
        }
        EXPECT_EQ(object.references, 2u);
    }
    owner = OwnedVariant();
    EXPECT_EQ(object.references, 1u);
}

TEST(VariantBridgeTest, NullReferencesAreRefused) {
    for (const VARTYPE type :
         {VT_I2,      VT_I4,      VT_R4, VT_R8,  VT_CY,  VT_DATE, VT_BSTR, VT_DISPATCH, VT_ERROR, VT_BOOL, VT_VARIANT,
          VT_UNKNOWN, VT_DECIMAL, VT_I1, VT_UI1, VT_UI2, VT_UI4,  VT_I8,   VT_UI8,      VT_INT,   VT_UINT}) {
        VARIANT reference = Tagged(static_cast<VARTYPE>(VT_BYREF | type));
        reference.byref = nullptr;
        EXPECT_EQ(Raised([&] { FromVariant(reference); }).number, kMismatch) << type;
        EXPECT_EQ(Raised([&] { FromVariant(ReferenceToVariant(reference)); }).number, kMismatch) << type;
    }
    EXPECT_EQ(Raised([] { FromVariant(Tagged(VT_BYREF | VT_ARRAY | VT_I4)); }).number, kMismatch);
}

TEST(VariantBridgeTest, WhatIsNoValueIsRefused) {
    int target[4] = {};
    for (const int type : {77, int{VT_VARIANT}, int{VT_LPSTR}, int{VT_VOID}, int{VT_RECORD}, 0x1000 | VT_I4,
                           VT_BYREF | 77, int{VT_BYREF | VT_EMPTY}, int{VT_BYREF | VT_NULL}, VT_ARRAY | 77}) {
        VARIANT value = Tagged(static_cast<VARTYPE>(type));
        value.byref = target;
        EXPECT_EQ(Raised([&] { FromVariant(value); }).number, kMismatch) << type;
    }
}

TEST(VariantBridgeTest, AVariantThatRefersToItselfIsRefused) {
    VARIANT value = Tagged(VT_BYREF | VT_VARIANT);
    value.pvarVal = &value;
    EXPECT_EQ(Raised([&] { FromVariant(value); }).number, kMismatch);
}

TEST(VariantBridgeTest, ObjectsAndValuesThatAreNotTheSystemsDoNotGoOut) {
    class Other final : public HostObject {
        Variant DoGet(TextView, std::span<const Variant>) override { return Empty(); }
        void DoLet(TextView, const Variant&) override {}
        void DoSet(TextView, const HostObjectRef&) override {}
        Variant DoCall(TextView, std::span<const Variant>) override { return Empty(); }
        Variant DoNotify(TextView, std::span<Argument>) override { return Empty(); }
        Variant DoCallNamed(TextView, std::span<const TextView>, std::span<Variant>) override { return Empty(); }
        bool DoKnows(TextView) override { return false; }
        bool DoIsSameAs(const HostObject&) const override { return false; }
        Text DoTypeName() const override { return {}; }
    };
    EXPECT_EQ(Raised([] { ToVariant(HostObjectRef(std::make_shared<Other>())); }).number, kMismatch);
    class OtherValue final : public ForeignValue {};
    EXPECT_EQ(Raised([] { ToVariant(ForeignRef(std::make_shared<OtherValue>())); }).number, kMismatch);
    EXPECT_EQ(ToVariant(ForeignRef()).vt, VT_EMPTY);
}

}  // namespace
}  // namespace kwo::platform::windows
