#include "platform/windows/array_bridge.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/windows/variant_bridge.h"
#include "recording_dispatch.h"

namespace kwo::platform::windows {
namespace {

template <class Array, class Items>
ForeignRef Made(std::int32_t lowerBound, Items items) {
    auto array = std::make_shared<Array>();
    array->lowerBound = lowerBound;
    array->items = std::move(items);
    return array;
}

ForeignRef Texts(std::int32_t lowerBound, std::vector<Text> items) {
    return Made<TextArray>(lowerBound, std::move(items));
}

const TextArray& TextsIn(const Variant& value) {
    return dynamic_cast<const TextArray&>(*std::get<ForeignRef>(value));
}

TEST(ArrayBridge, TextsKeepTheirBoundsAndCharacters) {
    const std::vector<Text> items = {u"first", u"", Text(u"a\0b", 3), u"\u00E4\u20AC"};
    for (const std::int32_t lower : {0, 1, 1899, -5}) {
        const OwnedVariant outside(ToVariant(Texts(lower, items)));
        ASSERT_EQ(outside.Get().vt, VT_ARRAY | VT_BSTR);
        LONG bound = 0;
        ASSERT_EQ(SafeArrayGetLBound(outside.Get().parray, 1, &bound), S_OK);
        EXPECT_EQ(bound, lower);
        ASSERT_EQ(SafeArrayGetUBound(outside.Get().parray, 1, &bound), S_OK);
        EXPECT_EQ(bound, lower + 3);

        const Variant inside = FromVariant(outside.Get());
        EXPECT_EQ(TextsIn(inside).lowerBound, lower);
        EXPECT_EQ(TextsIn(inside).items, items);
    }
}

TEST(ArrayBridge, NumbersKeepTheirBounds) {
    const ForeignRef numbers = Made<Int16Array>(1, std::vector<std::int16_t>{-32'768, 0, 32'767});
    const OwnedVariant outside(ToVariant(numbers));
    ASSERT_EQ(outside.Get().vt, VT_ARRAY | VT_I2);

    const Variant inside = FromVariant(outside.Get());
    const auto& back = dynamic_cast<const Int16Array&>(*std::get<ForeignRef>(inside));
    EXPECT_EQ(back.lowerBound, 1);
    EXPECT_EQ(back.items, (std::vector<std::int16_t>{-32'768, 0, 32'767}));
}

TEST(ArrayBridge, ArrayWithoutElementsStaysOne) {
    const OwnedVariant outside(ToVariant(Texts(3, {})));

    const Variant inside = FromVariant(outside.Get());
    EXPECT_EQ(TextsIn(inside).lowerBound, 3);
    EXPECT_TRUE(TextsIn(inside).items.empty());
}

TEST(ArrayBridge, ArraysOfOtherKindsAreCarriedAsTheyAre) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    VARIANT square = {};
    square.vt = VT_ARRAY | VT_BSTR;
    square.parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    const OwnedVariant twoDimensions(square);
    VARIANT longs = {};
    longs.vt = VT_ARRAY | VT_I4;
    longs.parray = SafeArrayCreate(VT_I4, 1, bounds);
    const OwnedVariant otherElements(longs);

    for (const OwnedVariant* outside : {&twoDimensions, &otherElements}) {
        EXPECT_EQ(FromArray(outside->Get()), nullptr);
        const OwnedVariant back(ToVariant(FromVariant(outside->Get())));
        EXPECT_EQ(back.Get().vt, outside->Get().vt);
        EXPECT_EQ(SafeArrayGetDim(back.Get().parray), SafeArrayGetDim(outside->Get().parray));
    }
}

TEST(ArrayBridge, ArrayThatIsNotWhatItIsPassedAsIsCarriedOnly) {
    struct Case {
        VARTYPE passedAs, is;
    };
    for (const Case& row :
         {Case{VT_BSTR, VT_I2}, Case{VT_BSTR, VT_I4}, Case{VT_BSTR, VT_I8}, Case{VT_BSTR, VT_VARIANT},
          Case{VT_BSTR, VT_DISPATCH}, Case{VT_I2, VT_I4}, Case{VT_I2, VT_BSTR}, Case{VT_I2, VT_UI1}}) {
        SAFEARRAY* const array = SafeArrayCreateVector(row.is, 1, 3);
        VARIANT value = {};
        value.vt = static_cast<VARTYPE>(VT_ARRAY | row.passedAs);
        value.parray = array;

        EXPECT_EQ(FromArray(value), nullptr) << row.is << " passed as " << row.passedAs;

        SafeArrayDestroy(array);
    }
}

TEST(ArrayBridge, ArrayThatIsNotThereIsCarriedOnly) {
    VARIANT none = {};
    none.vt = VT_ARRAY | VT_BSTR;
    EXPECT_EQ(FromArray(none), nullptr);
    const OwnedVariant back(ToVariant(FromVariant(none)));
    EXPECT_EQ(back.Get().vt, VT_ARRAY | VT_BSTR);
    EXPECT_EQ(back.Get().parray, nullptr);

    // Bounds without elements behind them.
    ASSERT_EQ(SafeArrayAllocDescriptorEx(VT_BSTR, 1, &none.parray), S_OK);
    none.parray->rgsabound[0] = {5, 1};
    EXPECT_EQ(FromArray(none), nullptr);
    SafeArrayDestroyDescriptor(none.parray);
}

/// What a callee does to an array that it was given by reference.
void Fill(SAFEARRAY* array) {
    LONG place = 11;
    const BSTR text = SysAllocString(L"filled");
    EXPECT_EQ(SafeArrayPutElement(array, &place, text), S_OK);
    SysFreeString(text);
}

TEST(ArrayBridge, CalleeFillsAnArrayThroughAReferenceToAVariant) {
    RecordingDispatch callee;
    callee.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        EXPECT_EQ(parameters.rgvarg[0].vt, VT_BYREF | VT_VARIANT);
        Fill(parameters.rgvarg[0].pvarVal->parray);
        return S_OK;
    };
    std::array arguments = {Variant(Texts(10, {u"", u""}))};

    MakeHostObject(&callee)->Call(u"First", arguments);

    EXPECT_EQ(TextsIn(arguments[0]).items, (std::vector<Text>{u"", u"filled"}));
}

TEST(ArrayBridge, CalleeWithATypedArgumentFillsItToo) {
    RecordingDispatch callee;
    callee.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        if (parameters.rgvarg[0].vt != (VT_BYREF | VT_ARRAY | VT_BSTR)) return DISP_E_TYPEMISMATCH;
        Fill(*parameters.rgvarg[0].pparray);
        return S_OK;
    };
    std::array arguments = {Variant(Texts(10, {u"", u""}))};

    MakeHostObject(&callee)->Call(u"First", arguments);

    EXPECT_EQ(TextsIn(arguments[0]).items, (std::vector<Text>{u"", u"filled"}));
}

TEST(ArrayBridge, CalleeMayPutAnotherArrayInThePlace) {
    RecordingDispatch callee;
    callee.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        SAFEARRAYBOUND bound = {3, 10};
        EXPECT_EQ(SafeArrayRedim(parameters.rgvarg[0].pvarVal->parray, &bound), S_OK);
        Fill(parameters.rgvarg[0].pvarVal->parray);
        return S_OK;
    };
    std::array arguments = {Variant(Texts(10, {u"", u""}))};

    MakeHostObject(&callee)->Call(u"First", arguments);

    EXPECT_EQ(TextsIn(arguments[0]).items, (std::vector<Text>{u"", u"filled", u""}));
}

}  // namespace
}  // namespace kwo::platform::windows
