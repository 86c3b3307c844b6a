#include "arguments.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "com_support/bstr.h"

namespace kwo::invoke_fuzz {

namespace {

constexpr LONG kNumbers[] = {0,  0,  1,  1,  -1, 2,   3,    4,     5,     7,      11,    13,
                             32, 33, 37, 39, 77, 150, 2026, 32767, 32768, -32768, 65536, 0x7FFFFFFF};
constexpr double kReals[] = {0,      1,         -1,  0.5,  15,    300,    1500,       2026.25,
                             46'347, 46'347.75, 1e9, 1e38, 1e300, -1e300, 2'958'465.9};
constexpr const wchar_t* kTexts[] = {L"",
                                     L"0",
                                     L"1",
                                     L"probe",
                                     L"nonsense",
                                     L"&Save",
                                     L"True",
                                     L"1.5",
                                     L"-7",
                                     L"21 November 2026",
                                     L"a\\b",
                                     L"99999999999",
                                     L"\x20AC\xD800",
                                     L" x ",
                                     L"&HFF",
                                     L"10:30"};

// Numbers that no type of automation has; nothing is behind them.
constexpr VARTYPE kNoTypes[] = {0x0777, VT_CLSID};

bool IsNoType(VARTYPE type) {
    return std::ranges::find(kNoTypes, type) != std::end(kNoTypes);
}

BSTR AnyText(Random& random) {
    switch (random.Below(16)) {
        case 0:
            return nullptr;
        case 1:
            return com_support::NewString(std::wstring_view(L"a\0b", 3));
        case 2:
            return com_support::NewString(std::wstring(5'000, L'x'));
        default:
            return com_support::NewString(std::wstring_view(random.Of(kTexts)));
    }
}

IDispatch* WithReference(IDispatch* object) {
    if (object != nullptr) object->AddRef();
    return object;
}

SAFEARRAY* AnyArray(Random& random, VARTYPE type) {
    return random.Once(4) ? nullptr
                          : SafeArrayCreateVector(type, random.Below(3) - 1, static_cast<ULONG>(random.Below(4)));
}

}  // namespace

VARIANT AnyValue(Random& random, const Ingredients& from) {
    VARIANT value = {};
    const auto holds = [&](VARTYPE type) { value.vt = type; };
    switch (random.Below(27)) {
        case 0:
            break;
        case 1:
            holds(VT_NULL);
            break;
        case 2:
        case 3:
            holds(VT_I2);
            value.iVal = static_cast<SHORT>(random.Of(kNumbers));
            break;
        case 4:
        case 5:
            holds(VT_I4);
            value.lVal = random.Of(kNumbers);
            break;
        case 6:
            holds(VT_R4);
            value.fltVal =
                random.Once(8) ? std::numeric_limits<float>::infinity() : static_cast<float>(random.Below(4'000));
            break;
        case 7:
            holds(VT_R8);
            value.dblVal = random.Once(8) ? std::numeric_limits<double>::quiet_NaN() : random.Of(kReals);
            break;
        case 8:
            holds(VT_CY);
            value.cyVal.int64 = random.Once(8) ? INT64_MIN : static_cast<LONGLONG>(random.Of(kNumbers)) * 10'000;
            break;
        case 9:
            holds(VT_DATE);
            value.date = random.Once(4) ? random.Of(kReals) : from.day + random.Below(60) - 30;
            break;
        case 10:
        case 11:
        case 12:
            holds(VT_BSTR);
            value.bstrVal = AnyText(random);
            break;
        case 13:
        case 14:
        case 15:
            holds(VT_DISPATCH);
            value.pdispVal = WithReference(from.object());
            break;
        case 16:
            holds(VT_UNKNOWN);
            value.pdispVal = WithReference(from.object());
            break;
        case 17:
            holds(VT_ERROR);
            value.scode = random.Flag() ? DISP_E_PARAMNOTFOUND : E_FAIL;
            break;
        case 18:
            holds(VT_BOOL);
            value.boolVal = random.Once(8) ? SHORT{7} : random.Flag() ? VARIANT_TRUE : VARIANT_FALSE;
            break;
        case 19:
            holds(VT_DECIMAL);
            value.decVal.Lo64 = static_cast<ULONGLONG>(random.Below(1'000));
            value.vt = VT_DECIMAL;
            break;
        case 20:
            holds(VT_UI1);
            value.bVal = static_cast<BYTE>(random.Bits());
            break;
        case 21: {
            constexpr VARTYPE kTypes[] = {VT_I1, VT_UI2, VT_UI4, VT_I8, VT_UI8, VT_INT, VT_UINT};
            holds(random.Of(kTypes));
            value.llVal = random.Of(kNumbers);
            break;
        }
        case 22: {
            constexpr VARTYPE kTypes[] = {VT_I4, VT_BSTR, VT_VARIANT, VT_UI1, VT_R8};
            const VARTYPE type = random.Of(kTypes);
            holds(static_cast<VARTYPE>(VT_ARRAY | type));
            value.parray = AnyArray(random, type);
            break;
        }
        case 23:
            holds(random.Of(kNoTypes));
            break;
        case 24:
            holds(VT_I4);
            value.lVal = from.key;
            break;
        default:
            holds(VT_I2);
            value.iVal = static_cast<SHORT>(random.Below(5));
            break;
    }
    return value;
}

bool IsValid(const VARIANT& value) {
    if ((value.vt & VT_BYREF) != 0) return false;
    const VARTYPE base = value.vt & VT_TYPEMASK;
    if ((value.vt & ~(VT_ARRAY | VT_TYPEMASK)) != 0) return false;
    VARIANT copy = {};
    const bool canBeCopied = SUCCEEDED(VariantCopy(&copy, const_cast<VARIANT*>(&value)));
    VariantClear(&copy);
    return canBeCopied && (base <= VT_UINT || base == VT_RECORD);
}

Arguments::~Arguments() {
    for (VARIANT& value : mValues)
        VariantClear(&value);
    for (Variable& variable : mVariables)
        VariantClear(&variable.value);
}

void Arguments::AddAny(Random& random, const Ingredients& from) {
    constexpr int kDeepest = 3;
    mValues.push_back(random.Once(3) ? Reference(random, from, kDeepest) : AnyValue(random, from));
}

VARIANT Arguments::Reference(Random& random, const Ingredients& from, int depth) {
    VARIANT reference = {};
    if (random.Once(20)) {
        constexpr VARTYPE kTypes[] = {VT_VARIANT, VT_BSTR, VT_I4, VT_DISPATCH, VT_I2};
        reference.vt = static_cast<VARTYPE>(VT_BYREF | random.Of(kTypes));
        return reference;
    }
    if (depth > 0 && random.Once(3)) {
        mReferences.push_back({});
        VARIANT& inner = mReferences.back();
        // Now and then a circle.
        inner = random.Once(16) ? VARIANT{} : Reference(random, from, depth - 1);
        reference.vt = VT_BYREF | VT_VARIANT;
        reference.pvarVal = &inner;
        if (inner.vt == VT_EMPTY) inner = reference;
        return reference;
    }
    const VARIANT value = AnyValue(random, from);
    const bool canBeTyped = value.vt != VT_EMPTY && value.vt != VT_NULL && value.vt != VT_DECIMAL && IsValid(value);
    mVariables.push_back({value, canBeTyped && random.Flag()});
    Variable& variable = mVariables.back();
    reference.vt = static_cast<VARTYPE>(VT_BYREF | (variable.isTyped ? value.vt : VARTYPE{VT_VARIANT}));
    reference.byref = variable.isTyped ? static_cast<void*>(&variable.value.llVal) : &variable.value;
    return reference;
}

void Arguments::ChangeOne(Random& random, const Ingredients& from) {
    if (mVariables.empty()) return;
    Variable& variable = mVariables[random.Place(mVariables.size())];
    VARIANT value = AnyValue(random, from);
    if (!variable.isTyped || (value.vt == variable.value.vt && IsValid(value))) std::swap(variable.value, value);
    VariantClear(&value);
}

bool Arguments::AreValid() const {
    return std::ranges::all_of(mVariables, [](const Variable& variable) {
        return variable.isTyped || IsValid(variable.value) || IsNoType(variable.value.vt);
    });
}

}  // namespace kwo::invoke_fuzz
