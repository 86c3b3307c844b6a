#include "com/server/argument.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "com_support/owned_array.h"
#include "com_support/owned_variant.h"
#include "com_support/variant_conversion.h"
#include "com_support/variant_references.h"

namespace kwo::com {

namespace {

using com_support::Innermost;
using com_support::OwnedArray;
using com_support::OwnedVariant;

constexpr VARTYPE kArrayOfVariants = VT_ARRAY | VT_VARIANT;
/// Of a value that cannot be compared with what it was. No value has this type.
constexpr VARTYPE kUnknown = VT_VOID;

/// True for a type that the automation functions handle safely, whatever a caller has put there.
bool IsUsable(const VARIANT& value) {
    const VARTYPE base = value.vt & VT_TYPEMASK;
    const VARTYPE flags = static_cast<VARTYPE>(value.vt & ~VT_TYPEMASK);
    if ((flags & ~(VT_BYREF | VT_ARRAY)) != 0) return false;
    if ((flags & VT_BYREF) != 0 && value.byref == nullptr) return false;
    const bool isNumberOrText = (base >= VT_I2 && base <= VT_UNKNOWN && base != VT_VARIANT) || base == VT_DECIMAL ||
                                (base >= VT_I1 && base <= VT_UINT);
    if ((flags & VT_ARRAY) != 0) return isNumberOrText || base == VT_VARIANT;
    if (isNumberOrText) return true;
    return flags == 0 && (base == VT_EMPTY || base == VT_NULL);
}

/// False if the array's own description contradicts the type that it is passed as. The array may be null.
bool IsArrayOf(SAFEARRAY* array, VARTYPE element) {
    VARTYPE type = VT_EMPTY;
    return array == nullptr || (SUCCEEDED(::SafeArrayGetVartype(array, &type)) && type == element);
}

/// True if nobody may resize, replace or free the array: its size is fixed, or it is in use.
bool IsFixed(const SAFEARRAY& array) {
    return array.cLocks != 0 || com_support::HasFixedBounds(array);
}

/// Exchanges the elements, if both arrays have the same bounds; else does nothing and returns false. The elements are
/// of one type. Either may be null.
bool ExchangeElements(SAFEARRAY* one, SAFEARRAY* other) {
    // The elements of an array may have been freed although the array is still there.
    if (one == nullptr || other == nullptr || one->pvData == nullptr || other->pvData == nullptr) return false;
    if (one->cDims != 1 || other->cDims != 1 || one->cbElements != other->cbElements) return false;
    const SAFEARRAYBOUND& bound = one->rgsabound[0];
    if (bound.lLbound != other->rgsabound[0].lLbound || bound.cElements != other->rgsabound[0].cElements) return false;
    auto* const first = static_cast<BYTE*>(one->pvData);
    std::swap_ranges(first, first + std::size_t{bound.cElements} * one->cbElements, static_cast<BYTE*>(other->pvData));
    return true;
}

/// True if a member may change a copy of the bits and the original does not notice.
bool OwnsNothing(VARTYPE type) {
    switch (type) {
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return false;
        default:
            return (type & (VT_ARRAY | VT_BYREF)) == 0;
    }
}

HRESULT Copy(VARIANT& copy, VARIANT& original) {
    if (OwnsNothing(original.vt)) {
        copy = original;
        return S_OK;
    }
    ::VariantInit(&copy);
    const HRESULT copied = ::VariantCopyInd(&copy, &original);
    // After a failure it owns nothing, whatever the call wrote.
    if (FAILED(copied)) ::VariantInit(&copy);
    return copied;
}

/// The conversion failures that automation knows. Anything else is a type mismatch.
HRESULT ConversionResult(HRESULT result) {
    if (SUCCEEDED(result) || result == DISP_E_OVERFLOW || result == E_OUTOFMEMORY || result == DISP_E_BADVARTYPE) {
        return result;
    }
    return DISP_E_TYPEMISMATCH;
}

HRESULT ConvertValue(VARIANT& converted, const VARIANT& value, VARTYPE type, LCID locale) {
    ::VariantInit(&converted);
    if (com_support::IsNullObject(value)) return DISP_E_TYPEMISMATCH;
    const HRESULT changed = com_support::Convert(converted, value, type, locale);
    if (type != VT_DATE || changed != DISP_E_OVERFLOW) return ConversionResult(changed);
    // Every number is accepted as a date. The member decides about one outside the calendar, as it does for compiled
    // callers.
    const HRESULT number = com_support::Convert(converted, value, VT_R8, locale);
    if (SUCCEEDED(number)) converted.vt = VT_DATE;
    return ConversionResult(number);
}

/// Copies the element at `place` from one array to the other and converts it; one of the two is an array of variants.
HRESULT ConvertElement(SAFEARRAY* to, VARTYPE type, SAFEARRAY* from, LONG place, LCID locale) {
    OwnedVariant element;
    element.llVal = 0;
    const bool fromVariants = type != VT_VARIANT;
    VARTYPE fromType = VT_EMPTY;
    HRESULT result = ::SafeArrayGetVartype(from, &fromType);
    if (SUCCEEDED(result)) {
        if (!fromVariants) element.vt = fromType;
        result = ::SafeArrayGetElement(
            from, &place, fromVariants ? static_cast<void*>(&element) : static_cast<void*>(&element.llVal));
    }
    if (SUCCEEDED(result) && fromVariants) result = com_support::Convert(element, element, type, locale);
    if (SUCCEEDED(result)) {
        const bool isPointer = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
        void* const value = !fromVariants ? static_cast<void*>(&element)
                            : isPointer   ? static_cast<void*>(element.bstrVal)
                                          : static_cast<void*>(&element.llVal);
        result = ::SafeArrayPutElement(to, &place, value);
    }
    return ConversionResult(result);
}

/// Converts between an array of variants and one of `type`, of one dimension. `converted` may be `array` itself, which
/// stays the caller's.
HRESULT ConvertArray(VARIANT& converted, const VARIANT& array, VARTYPE type, LCID locale) {
    SAFEARRAY* const from = array.parray;
    if (from == nullptr || from->cDims != 1) return DISP_E_TYPEMISMATCH;
    SAFEARRAYBOUND bound = from->rgsabound[0];
    OwnedArray to = OwnedArray::Adopt(::SafeArrayCreate(type, 1, &bound));
    if (to.Get() == nullptr) return E_OUTOFMEMORY;
    // Reading an object's value runs code of the caller, which could free the array.
    const com_support::ArrayElements<BYTE> held(from);
    if (FAILED(held.Status())) return ConversionResult(held.Status());
    for (ULONG at = 0; at < bound.cElements; ++at) {
        const HRESULT result = ConvertElement(to.Get(), type, from, bound.lLbound + static_cast<LONG>(at), locale);
        if (FAILED(result)) return result;
    }
    converted.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    converted.parray = to.Detach();
    return S_OK;
}

/// True if a by-value argument can be passed without a copy.
bool FitsAsItIs(const Parameter& parameter, const VARIANT& held) {
    if (parameter.type == VT_VARIANT) return true;
    return held.vt == parameter.type && (parameter.anyInterface || held.pdispVal == nullptr);
}

/// Where in `value` the member reads its argument.
void* PlaceOfValue(const Parameter& parameter, VARIANT& value) {
    return parameter.type == VT_VARIANT ? static_cast<void*>(&value) : &value.llVal;
}

HRESULT ConvertHandle(VARIANT& converted, const VARIANT& value, LCID locale) {
    const HRESULT result = com_support::To32Bits(converted.lVal, value, locale);
    converted.vt = VT_I4;
    return ConversionResult(result);
}

}  // namespace

HRESULT PassedArgument::Prepare(const Parameter& parameter, VARIANT* source, LCID locale) noexcept {
    if (source == nullptr) return PrepareMissing(parameter);
    if (IsSimple(parameter, *source)) {
        mPointer = PlaceOfValue(parameter, *source);
        return S_OK;
    }

    VARIANT* const held = Innermost(source);
    if (held == nullptr) return DISP_E_TYPEMISMATCH;
    if (!IsUsable(*held)) return DISP_E_BADVARTYPE;
    const bool inVariable = held != source;
    if (com_support::IsMissing(*held)) {
        const HRESULT prepared = PrepareMissing(parameter);
        // A member may write a missing argument.
        const bool canBeFilled = inVariable && held->vt == VT_ERROR && parameter.byReference;
        return SUCCEEDED(prepared) && canBeFilled ? Remember(source) : prepared;
    }
    if ((parameter.type & VT_ARRAY) != 0) return PrepareArray(parameter, *held, source, locale);

    const bool fromVariable = inVariable || (held->vt & VT_BYREF) != 0;
    if (!fromVariable && !parameter.byReference && FitsAsItIs(parameter, *held)) {
        mPointer = PlaceOfValue(parameter, *held);
        return S_OK;
    }
    const HRESULT copied = CopyFor(parameter, *held, locale);
    if (FAILED(copied)) return copied;
    mPointer = PlaceOfValue(parameter, mValue);
    return fromVariable && parameter.byReference ? Remember(source) : S_OK;
}

HRESULT PassedArgument::PrepareMissing(const Parameter& parameter) noexcept {
    if (!parameter.optional) return DISP_E_PARAMNOTOPTIONAL;
    mPointer = PlaceOfValue(parameter, mValue);
    if (parameter.type == VT_VARIANT) {
        mValue.vt = VT_ERROR;
        mValue.scode = DISP_E_PARAMNOTFOUND;
    } else {
        mValue.vt = parameter.type;
        mValue.llVal = 0;
    }
    return S_OK;
}

HRESULT PassedArgument::PrepareArray(const Parameter& parameter, VARIANT& held, VARIANT* source, LCID locale) noexcept {
    const auto element = static_cast<VARTYPE>(parameter.type & ~VT_ARRAY);
    const bool isReference = (held.vt & VT_BYREF) != 0;
    const auto type = static_cast<VARTYPE>(held.vt & ~VT_BYREF);
    // Scripts have only arrays of variants: the member gets a copy of its own type.
    const bool ofVariants = type == kArrayOfVariants;
    if (!ofVariants && type != parameter.type) return DISP_E_TYPEMISMATCH;
    SAFEARRAY** const array = isReference ? held.pparray : &held.parray;
    if (!IsArrayOf(*array, ofVariants ? VARTYPE{VT_VARIANT} : element)) return DISP_E_TYPEMISMATCH;
    if (isReference && !ofVariants) {
        mPointer = array;
        return S_OK;
    }
    VARIANT whole;
    whole.vt = type;
    whole.parray = *array;
    const HRESULT copied = ofVariants ? ConvertArray(mValue, whole, element, locale) : Copy(mValue, whole);
    if (FAILED(copied)) return ConversionResult(copied);
    // The member leaves the size of the copy alone, as it would the caller's own.
    if (*array != nullptr && IsFixed(**array)) mValue.parray->fFeatures |= FADF_FIXEDSIZE;
    mPointer = &mValue.parray;
    // Changes that the member makes to an array passed by value do not reach the caller.
    if (isReference || &held != source) WriteBackAlways(source);
    return S_OK;
}

/// Sets mValue to what the member accepts, from the value that `held` is or refers to.
HRESULT PassedArgument::CopyFor(const Parameter& parameter, VARIANT& held, LCID locale) noexcept {
    if (parameter.type == VT_DISPATCH) return CopyObject(parameter, held);
    const bool fits = parameter.type == VT_VARIANT || parameter.type == (held.vt & ~VT_BYREF);
    if (fits) return ConversionResult(Copy(mValue, held));
    return parameter.handle ? ConvertHandle(mValue, held, locale) : ConvertValue(mValue, held, parameter.type, locale);
}

HRESULT PassedArgument::CopyObject(const Parameter& parameter, VARIANT& held) noexcept {
    const auto type = static_cast<VARTYPE>(held.vt & ~VT_BYREF);
    mValue.vt = VT_DISPATCH;
    mValue.pdispVal = nullptr;
    // Languages without a null object of their own pass these.
    if (type == VT_EMPTY || type == VT_NULL) return S_OK;
    if (type != VT_DISPATCH && type != VT_UNKNOWN) return DISP_E_TYPEMISMATCH;

    IUnknown* const object = (held.vt & VT_BYREF) != 0 ? *held.ppunkVal : held.punkVal;
    if (object == nullptr) return S_OK;
    if (parameter.anyInterface && type == VT_DISPATCH) {
        mValue.pdispVal = static_cast<IDispatch*>(object);
        object->AddRef();
        return S_OK;
    }
    void* found = nullptr;
    if (FAILED(object->QueryInterface(parameter.interfaceId, &found)) &&
        FAILED(object->QueryInterface(IID_IDispatch, &found))) {
        return DISP_E_TYPEMISMATCH;
    }
    mValue.pdispVal = static_cast<IDispatch*>(found);
    return S_OK;
}

/// Changes after this are written back to the caller's variable.
HRESULT PassedArgument::Remember(VARIANT* source) noexcept {
    if ((mValue.vt & VT_ARRAY) != 0) {
        // Only another array counts as a change. Elements are not compared, so they need no copy.
        mBefore.vt = VT_PTR;
        mBefore.parray = mValue.parray;
    } else if (const HRESULT copied = Copy(mBefore, mValue); FAILED(copied)) {
        mValue.Clear();
        return copied;
    }
    if (mValue.vt == VT_BSTR) mTextBefore = mValue.bstrVal;
    mSource = source;
    return S_OK;
}

void PassedArgument::WriteBackAlways(VARIANT* source) noexcept {
    mBefore.vt = kUnknown;
    mSource = source;
}

bool PassedArgument::CanCompare() const noexcept {
    return mBefore.vt != kUnknown;
}

bool PassedArgument::HasChanged() const noexcept {
    if (mBefore.vt == VT_PTR) return (mValue.vt & VT_ARRAY) == 0 || mValue.parray != mBefore.parray;
    if (mValue.vt != mBefore.vt) return true;
    switch (mValue.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return false;
        case VT_BSTR: {
            if (mValue.bstrVal != mTextBefore) return true;
            // A member that freed the old text first may have been given its place for the new one.
            const UINT bytes = ::SysStringByteLen(mValue.bstrVal);
            return bytes != ::SysStringByteLen(mBefore.bstrVal) ||
                   (bytes != 0 && std::memcmp(mValue.bstrVal, mBefore.bstrVal, bytes) != 0);
        }
        case VT_DECIMAL:
            return std::memcmp(&mValue.decVal.Hi32, &mBefore.decVal.Hi32, 12) != 0;
        default: {
            const std::size_t size = com_support::StorageSize(mValue.vt);
            return std::memcmp(&mValue.llVal, &mBefore.llVal, size != 0 ? size : sizeof mValue.llVal) != 0;
        }
    }
}

HRESULT PassedArgument::ConvertBack(LCID locale) noexcept {
    if (mSource == nullptr || !HasChanged()) return S_OK;
    // The variable is read again: it may hold something else than before the call.
    const VARIANT* const variable = Innermost(mSource);
    if (variable == nullptr) return DISP_E_TYPEMISMATCH;
    if (!IsUsable(*variable)) return DISP_E_BADVARTYPE;
    mVariableType = variable->vt;
    mChanged = true;
    const auto type = static_cast<VARTYPE>(mVariableType & ~VT_BYREF);
    const bool toVariants = type == kArrayOfVariants && mValue.vt != kArrayOfVariants && (mValue.vt & VT_ARRAY) != 0;
    if ((mVariableType & VT_BYREF) == 0 && !toVariants) return S_OK;
    // Also the null object, to which nothing can be converted. An automation object is an object.
    if (mValue.vt == type || (mValue.vt == VT_DISPATCH && type == VT_UNKNOWN)) return S_OK;

    OwnedVariant converted;
    const HRESULT result = toVariants ? ConvertArray(converted, mValue, VT_VARIANT, locale)
                                      : ConvertValue(converted, mValue, type, locale);
    if (FAILED(result)) return result;
    mValue = std::move(converted);
    return S_OK;
}

void PassedArgument::WriteBack() noexcept {
    if (!mChanged) return;
    VARIANT* const variable = Innermost(mSource);
    if (variable == nullptr) return;
    if (mValue.vt == (variable->vt & ~VT_BYREF) && (mValue.vt & VT_ARRAY) != 0) {
        SAFEARRAY* const theirs = (variable->vt & VT_BYREF) != 0 ? *variable->pparray : variable->parray;
        if (ExchangeElements(theirs, mValue.parray) || (theirs != nullptr && IsFixed(*theirs))) return;
    }
    if (((variable->vt | mVariableType) & VT_BYREF) == 0) {
        std::swap(*variable, static_cast<VARIANT&>(mValue));
        return;
    }
    // Converting may have run code of the caller.
    if (variable->vt != mVariableType) return;
    // The old value is freed with this object.
    com_support::ExchangeReferred(*variable, mValue);
}

}  // namespace kwo::com
