#include "platform/windows/array_bridge.h"

#include <gtest/gtest.h>

#include <array>

#include "com_support/com_ptr.h"
#include "com_support/owned_variant.h"
#include "platform/windows/variant_bridge.h"
#include "recording_dispatch.h"

namespace kwo::platform::windows {
namespace {

using com_support::OwnedVariant;

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
        const OwnedVariant outside = OwnedVariant::Adopt(ToVariant(Texts(lower, items)));
        ASSERT_EQ(outside.vt, VT_ARRAY | VT_BSTR);
        LONG bound = 0;
        ASSERT_EQ(SafeArrayGetLBound(outside.parray, 1, &bound), S_OK);
        EXPECT_EQ(bound, lower);
        ASSERT_EQ(SafeArrayGetUBound(outside.parray, 1, &bound), S_OK);
        EXPECT_EQ(bound, lower + 3);

        const Variant inside = FromVariant(outside);
        EXPECT_EQ(TextsIn(inside).lowerBound, lower);
        EXPECT_EQ(TextsIn(inside).items, items);
    }
}

TEST(ArrayBridge, NumbersKeepTheirBounds) {
    const ForeignRef numbers = Made<Int16Array>(1, std::vector<std::int16_t>{-32'768, 0, 32'767});
    const OwnedVariant outside = OwnedVariant::Adopt(ToVariant(numbers));
    ASSERT_EQ(outside.vt, VT_ARRAY | VT_I2);

    const Variant inside = FromVariant(outside);
    const auto& back = dynamic_cast<const Int16Array&>(*std::get<ForeignRef>(inside));
    EXPECT_EQ(back.lowerBound, 1);
    EXPECT_EQ(back.items, (std::vector<std::int16_t>{-32'768, 0, 32'767}));
}

TEST(ArrayBridge, ArrayWithoutElementsStaysOne) {
    const OwnedVariant outside = OwnedVariant::Adopt(ToVariant(Texts(3, {})));

    const Variant inside = FromVariant(outside);
    EXPECT_EQ(TextsIn(inside).lowerBound, 3);
    EXPECT_TRUE(TextsIn(inside).items.empty());
}

TEST(ArrayBridge, ArraysOfOtherKindsAreCarriedAsTheyAre) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    VARIANT square = {};
    square.vt = VT_ARRAY | VT_BSTR;
    square.parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    const OwnedVariant twoDimensions = OwnedVariant::Adopt(square);
    VARIANT longs = {};
    longs.vt = VT_ARRAY | VT_I4;
    longs.parray = SafeArrayCreate(VT_I4, 1, bounds);
    const OwnedVariant otherElements = OwnedVariant::Adopt(longs);

    for (const OwnedVariant* outside : {&twoDimensions, &otherElements}) {
        EXPECT_EQ(FromArray(*outside), nullptr);
        const OwnedVariant back = OwnedVariant::Adopt(ToVariant(FromVariant(*outside)));
        EXPECT_EQ(back.vt, outside->vt);
        EXPECT_EQ(SafeArrayGetDim(back.parray), SafeArrayGetDim(outside->parray));
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

// As a compiled host declares it: Dim Numbers(5 To 6) As Integer.
TEST(ArrayBridge, ArrayOfFixedSizeIsReadAsAnyOther) {
    std::int16_t numbers[] = {7, 8};
    SAFEARRAY array = {};
    array.cDims = 1;
    array.cbElements = sizeof numbers[0];
    array.pvData = numbers;
    array.rgsabound[0] = {2, 5};
    VARIANT value = {};
    value.vt = VT_ARRAY | VT_I2;
    value.parray = &array;

    array.fFeatures = FADF_AUTO | FADF_FIXEDSIZE;
    const ForeignRef inside = FromArray(value);
    ASSERT_NE(inside, nullptr);
    EXPECT_EQ(dynamic_cast<const Int16Array&>(*inside).lowerBound, 5);
    EXPECT_EQ(dynamic_cast<const Int16Array&>(*inside).items, (std::vector<std::int16_t>{7, 8}));
    array.fFeatures = FADF_AUTO | FADF_FIXEDSIZE | FADF_RECORD;
    EXPECT_EQ(FromArray(value), nullptr) << "records may be as small as numbers";
}

TEST(ArrayBridge, ANumberOrATextIsNoArrayEvenWhereOneLies) {
    const ForeignRef numbers = Made<Int16Array>(0, std::vector<std::int16_t>{1});
    for (const ForeignRef& items : {numbers, Texts(0, {u"text"})}) {
        const OwnedVariant array = OwnedVariant::Adopt(ToVariant(items));
        VARIANT value = array;
        value.vt = array.vt & VT_TYPEMASK;
        EXPECT_NE(FromArray(array), nullptr);
        EXPECT_EQ(FromArray(value), nullptr);
    }
}

TEST(ArrayBridge, ArrayThatIsNotThereIsCarriedOnly) {
    VARIANT none = {};
    none.vt = VT_ARRAY | VT_BSTR;
    EXPECT_EQ(FromArray(none), nullptr);
    const OwnedVariant back = OwnedVariant::Adopt(ToVariant(FromVariant(none)));
    EXPECT_EQ(back.vt, VT_ARRAY | VT_BSTR);
    EXPECT_EQ(back.parray, nullptr);

    // Bounds without elements behind them.
    none.vt = VT_ARRAY | VT_I2;
    ASSERT_EQ(SafeArrayAllocDescriptorEx(VT_I2, 1, &none.parray), S_OK);
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
    constexpr std::array kNames = {TextView(u"Second")};

    MakeHostObject(&callee)->CallNamed(u"First", kNames, arguments);

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
    constexpr std::array kNames = {TextView(u"Second")};

    MakeHostObject(&callee)->CallNamed(u"First", kNames, arguments);

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
    constexpr std::array kNames = {TextView(u"Second")};

    MakeHostObject(&callee)->CallNamed(u"First", kNames, arguments);

    EXPECT_EQ(TextsIn(arguments[0]).items, (std::vector<Text>{u"", u"filled", u""}));
}

/// A component with a member of named arguments, as those that fill a table are.
class NamedArrays : public testing::Test {
protected:
    NamedArrays() { callee.members = {{L"Load", 5}, {L"Language", 10}, {L"IdxArray", 11}, {L"TextArray", 12}}; }

    /// What became of the texts.
    Variant Load() {
        constexpr TextView kNames[] = {u"Language", u"IdxArray", u"TextArray"};
        Variant arguments[] = {std::int32_t{1033}, Made<Int16Array>(1, std::vector<std::int16_t>{1}),
                               Texts(10, {u"", u""})};
        MakeHostObject(&callee)->CallNamed(u"Load", kNames, arguments);
        return arguments[2];
    }
    /// The member is written for arrays of texts and of numbers alone.
    template <class Body>
    void Typed(Body body) {
        callee.body = [body](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
            const VARIANT* const given = parameters.rgvarg;
            if (given[0].vt != (VT_BYREF | VT_ARRAY | VT_BSTR)) return DISP_E_TYPEMISMATCH;
            if (given[1].vt != (VT_BYREF | VT_ARRAY | VT_I2)) return DISP_E_TYPEMISMATCH;
            if (given[2].vt != (VT_BYREF | VT_I4)) return DISP_E_TYPEMISMATCH;
            body(*given[0].pparray);
            return S_OK;
        };
    }
    /// The member takes any value.
    template <class Body>
    void Untyped(Body body) {
        callee.body = [body](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
            EXPECT_EQ(parameters.rgvarg[0].vt, VT_BYREF | VT_VARIANT);
            EXPECT_EQ(parameters.rgvarg[1].pvarVal->vt, VT_ARRAY | VT_I2);
            body(*parameters.rgvarg[0].pvarVal);
            return S_OK;
        };
    }
    static SAFEARRAY* Other(VARTYPE type) { return SafeArrayCreateVector(type, 7, 4); }

    RecordingDispatch callee;
};

TEST_F(NamedArrays, AreFilledByAMemberOfEitherKind) {
    Typed([](SAFEARRAY*& texts) { Fill(texts); });
    EXPECT_EQ(TextsIn(Load()).items, (std::vector<Text>{u"", u"filled"}));
    EXPECT_EQ(callee.calls.back().names, (std::vector<DISPID>{12, 11, 10}));

    Untyped([](VARIANT& texts) { Fill(texts.parray); });
    EXPECT_EQ(TextsIn(Load()).items, (std::vector<Text>{u"", u"filled"}));
}

TEST_F(NamedArrays, MayBeReplacedByAMemberOfEitherKind) {
    Typed([](SAFEARRAY*& texts) {
        SafeArrayDestroy(texts);
        texts = Other(VT_BSTR);
    });
    EXPECT_EQ(TextsIn(Load()).lowerBound, 7);
    EXPECT_EQ(TextsIn(Load()).items.size(), 4u);

    Untyped([](VARIANT& texts) {
        VariantClear(&texts);
        texts.vt = VT_ARRAY | VT_BSTR;
        texts.parray = Other(VT_BSTR);
    });
    EXPECT_EQ(TextsIn(Load()).lowerBound, 7);
    EXPECT_EQ(TextsIn(Load()).items.size(), 4u);
}

TEST_F(NamedArrays, ReplacedBySomethingElseAreNoTextsAnyMore) {
    const auto areTexts = [this] {
        const Variant value = Load();
        const auto* const foreign = std::get_if<ForeignRef>(&value);
        return foreign != nullptr && std::dynamic_pointer_cast<const TextArray>(*foreign) != nullptr;
    };
    for (const VARTYPE type : {VT_I2, VT_I4, VT_VARIANT}) {
        Typed([type](SAFEARRAY*& texts) {
            SafeArrayDestroy(texts);
            texts = Other(type);
        });
        EXPECT_FALSE(areTexts()) << type;
    }
    Typed([](SAFEARRAY*& texts) {
        SafeArrayDestroy(texts);
        texts = nullptr;
    });
    EXPECT_FALSE(areTexts());
    Untyped([](VARIANT& texts) { VariantClear(&texts); });
    EXPECT_FALSE(areTexts());
}

/// A dual interface with a typed member, called by name through the system's own way from a name to a slot.
struct ITypedFiller : IDispatch {
    STDMETHOD(Load)(LONG* language, SAFEARRAY** numbers, SAFEARRAY** texts) = 0;
};

class TypedFiller final : public test_support::StandIn<ITypedFiller> {
public:
    TypedFiller() {
        static PARAMDATA parameters[] = {{const_cast<OLECHAR*>(L"Language"), VT_BYREF | VT_I4},
                                         {const_cast<OLECHAR*>(L"IdxArray"), VT_BYREF | VT_ARRAY | VT_I2},
                                         {const_cast<OLECHAR*>(L"TextArray"), VT_BYREF | VT_ARRAY | VT_BSTR}};
        constexpr UINT kSlotsOfDispatch = 7;
        static METHODDATA method = {
            const_cast<OLECHAR*>(L"Load"), parameters, 5, kSlotsOfDispatch, CC_STDCALL, 3, DISPATCH_METHOD, VT_EMPTY};
        static INTERFACEDATA members = {&method, 1};
        // What is made is a class of one interface, and Wine calls through the interface alone.
        com_support::ComPtr<ITypeInfo> madeClass;
        HREFTYPE interfaceOfClass = 0;
        EXPECT_EQ(CreateDispTypeInfo(&members, LOCALE_SYSTEM_DEFAULT, madeClass.Out()), S_OK);
        EXPECT_EQ(madeClass->GetRefTypeOfImplType(0, &interfaceOfClass), S_OK);
        EXPECT_EQ(madeClass->GetRefTypeInfo(interfaceOfClass, mInfo.Out()), S_OK);
    }

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return DispGetIDsOfNames(mInfo.Get(), names, count, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        return DispInvoke(static_cast<ITypedFiller*>(this), mInfo.Get(), id, flags, parameters, result, exception,
                          badArgument);
    }
    STDMETHODIMP Load(LONG* given, SAFEARRAY** numbers, SAFEARRAY** texts) override {
        this->language = *given;
        LONG first = 1;
        EXPECT_EQ(SafeArrayGetElement(*numbers, &first, &number), S_OK);
        SAFEARRAYBOUND bound = {3, 10};
        EXPECT_EQ(SafeArrayRedim(*texts, &bound), S_OK);
        Fill(*texts);
        return S_OK;
    }

    LONG language = 0;
    SHORT number = 0;

private:
    com_support::ComPtr<ITypeInfo> mInfo;
};

TEST(DualInterface, MemberTypedForArraysFillsThem) {
    constexpr TextView kNames[] = {u"Language", u"IdxArray", u"TextArray"};
    TypedFiller filler;
    Variant arguments[] = {std::int32_t{1033}, Made<Int16Array>(1, std::vector<std::int16_t>{1}),
                           Texts(10, {u"", u""})};

    MakeHostObject(&filler)->CallNamed(u"Load", kNames, arguments);

    EXPECT_EQ(filler.language, 1033);
    EXPECT_EQ(filler.number, 1);
    EXPECT_EQ(TextsIn(arguments[2]).lowerBound, 10);
    EXPECT_EQ(TextsIn(arguments[2]).items, (std::vector<Text>{u"", u"filled", u""}));
}

}  // namespace
}  // namespace kwo::platform::windows
