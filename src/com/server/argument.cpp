#include "com/server/argument.h"

#include <cstring>
#include <utility>

namespace kwo::com {

namespace {

constexpr VARTYPE kVariantReference = VT_BYREF | VT_VARIANT;
constexpr VARTYPE kArrayOfVariants = VT_ARRAY | VT_VARIANT;

/// Follows references to variants; null when they lead nowhere.
VARIANT* Innermost(VARIANT* variant) {
    constexpr int kDeepest = 4;
    for (int depth = 0; variant != nullptr && variant->vt == kVariantReference; ++depth) {
        if (depth == kDeepest) return nullptr;
        variant = variant->pvarVal;
    }
    return variant;
}

/// True for a type that the automation functions can be trusted with, whatever a caller has put there.
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

bool IsMissing(const VARIANT& value) {
    if (value.vt == VT_ERROR) return value.scode == DISP_E_PARAMNOTFOUND;
    return value.vt == (VT_BYREF | VT_ERROR) && value.pscode != nullptr && *value.pscode == DISP_E_PARAMNOTFOUND;
}

/// False for an array whose own description contradicts the type that it is passed as. There may be no array yet.
bool IsArrayOf(SAFEARRAY* array, VARTYPE element) {
    VARTYPE type = VT_EMPTY;
    return array == nullptr || (SUCCEEDED(::SafeArrayGetVartype(array, &type)) && type == element);
}

/// True when a member may change a copy of the bits without the original noticing.
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
    return ::VariantCopyInd(&copy, &original);
}

/// The conversion failures that automation knows; anything else is a value of the wrong type.
HRESULT ConversionResult(HRESULT result) {
    if (SUCCEEDED(result) || result == DISP_E_OVERFLOW || result == E_OUTOFMEMORY || result == DISP_E_BADVARTYPE) {
        return result;
    }
    return DISP_E_TYPEMISMATCH;
}

HRESULT Convert(VARIANT& converted, VARIANT& value, VARTYPE type, LCID locale) {
    ::VariantInit(&converted);
    const VARTYPE base = value.vt & VT_TYPEMASK;
    if (base == VT_DISPATCH || base == VT_UNKNOWN) {
        IUnknown* const object = (value.vt & VT_BYREF) != 0 ? *value.ppunkVal : value.punkVal;
        if (object == nullptr) return DISP_E_TYPEMISMATCH;
    }
    return ConversionResult(::VariantChangeTypeEx(&converted, &value, locale, 0, type));
}

/// The element at `place` of either array as the element of the other, which is of variants.
HRESULT ConvertElement(SAFEARRAY* to, VARTYPE type, SAFEARRAY* from, LONG place, LCID locale) {
    VARIANT element;
    ::VariantInit(&element);
    const bool fromVariants = type != VT_VARIANT;
    VARTYPE fromType = VT_EMPTY;
    HRESULT result = ::SafeArrayGetVartype(from, &fromType);
    element.vt = fromVariants ? VT_EMPTY : fromType;
    if (SUCCEEDED(result)) {
        result = ::SafeArrayGetElement(
            from, &place, fromVariants ? static_cast<void*>(&element) : static_cast<void*>(&element.llVal));
    }
    if (SUCCEEDED(result) && fromVariants) result = ::VariantChangeTypeEx(&element, &element, locale, 0, type);
    if (SUCCEEDED(result)) {
        const bool isPointer = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
        void* const value = !fromVariants ? static_cast<void*>(&element)
                            : isPointer   ? static_cast<void*>(element.bstrVal)
                                          : static_cast<void*>(&element.llVal);
        result = ::SafeArrayPutElement(to, &place, value);
    }
    ::VariantClear(&element);
    return ConversionResult(result);
}

/// Between an array of variants and one of `type`, of one dimension. `converted` may be `array` itself, which it does
/// not end.
HRESULT ConvertArray(VARIANT& converted, const VARIANT& array, VARTYPE type, LCID locale) {
    SAFEARRAY* const from = array.parray;
    if (from == nullptr || from->cDims != 1) return DISP_E_TYPEMISMATCH;
    SAFEARRAYBOUND bound = from->rgsabound[0];
    SAFEARRAY* const to = ::SafeArrayCreate(type, 1, &bound);
    if (to == nullptr) return E_OUTOFMEMORY;
    for (ULONG at = 0; at < bound.cElements; ++at) {
        const HRESULT result = ConvertElement(to, type, from, bound.lLbound + static_cast<LONG>(at), locale);
        if (SUCCEEDED(result)) continue;
        ::SafeArrayDestroy(to);
        return result;
    }
    converted.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    converted.parray = to;
    return S_OK;
}

/// A handle is the low 32 bits of any whole number that 32 bits hold, with or without a sign.
HRESULT ConvertHandle(VARIANT& converted, VARIANT& value, LCID locale) {
    VARIANT wide;
    const bool isPointerSized = value.vt == VT_UI8;
    HRESULT result = S_OK;
    if (isPointerSized) {
        wide.vt = VT_I8;
        wide.llVal = static_cast<LONGLONG>(value.ullVal);
    } else {
        result = Convert(wide, value, VT_I8, locale);
    }
    if (FAILED(result)) return result;
    if (wide.llVal < INT32_MIN || wide.llVal > UINT32_MAX) return DISP_E_OVERFLOW;
    converted.vt = VT_I4;
    converted.lVal = static_cast<LONG>(wide.llVal);
    return S_OK;
}

}  // namespace

HRESULT PassedArgument::Prepare(const Parameter& parameter, VARIANT* source, LCID locale) noexcept {
    mTarget = nullptr;
    mOwnsValue = false;
    mChanged = false;
    if (source == nullptr) return PrepareMissing(parameter);

    VARIANT* const held = Innermost(source);
    if (held == nullptr) return DISP_E_TYPEMISMATCH;
    if (!IsUsable(*held)) return DISP_E_BADVARTYPE;
    const bool fromVariable = held != source;
    if (IsMissing(*held)) {
        const bool takesVariable = parameter.type == VT_VARIANT && parameter.optional && parameter.byReference;
        if (!takesVariable || !fromVariable || held->vt != VT_ERROR) return PrepareMissing(parameter);
        // A member may fill in what is missing.
        mPointer = held;
        return S_OK;
    }

    if (parameter.type == VT_VARIANT) return PrepareVariant(parameter, held, fromVariable);
    if ((parameter.type & VT_ARRAY) != 0) return PrepareArray(parameter, held, fromVariable, locale);

    if (held->vt == (VT_BYREF | parameter.type) && (parameter.anyInterface || *held->ppdispVal == nullptr)) {
        mPointer = held->byref;
        return S_OK;
    }
    if (held->vt == parameter.type && (fromVariable || !parameter.byReference) &&
        (parameter.anyInterface || held->pdispVal == nullptr)) {
        mPointer = &held->llVal;
        return S_OK;
    }
    mPointer = &mValue.llVal;
    if (parameter.type == VT_DISPATCH) return PrepareObject(parameter, held, fromVariable);
    if (held->vt == parameter.type) {
        mOwnsValue = true;
        return Copy(mValue, *held);
    }
    return PrepareConverted(parameter, held, fromVariable, locale);
}

HRESULT PassedArgument::PrepareMissing(const Parameter& parameter) noexcept {
    if (!parameter.optional) return DISP_E_PARAMNOTOPTIONAL;
    if (parameter.type == VT_VARIANT) {
        mPointer = &mValue;
        mValue.vt = VT_ERROR;
        mValue.scode = DISP_E_PARAMNOTFOUND;
        mOwnsValue = true;
    } else {
        mPointer = &mValue.llVal;
        mValue.vt = parameter.type;
        mValue.llVal = parameter.defaultValue;
    }
    return S_OK;
}

HRESULT PassedArgument::PrepareVariant(const Parameter& parameter, VARIANT* held, bool fromVariable) noexcept {
    const bool isReference = (held->vt & VT_BYREF) != 0;
    if (!isReference && (fromVariable || !parameter.byReference)) {
        mPointer = held;
        return S_OK;
    }
    mPointer = &mValue;
    const HRESULT copied = Copy(mValue, *held);
    if (FAILED(copied)) return ConversionResult(copied);
    mOwnsValue = true;
    return parameter.byReference && isReference ? Remember(held, fromVariable) : S_OK;
}

HRESULT PassedArgument::PrepareArray(const Parameter& parameter, VARIANT* held, bool fromVariable,
                                     LCID locale) noexcept {
    if ((held->vt & ~VT_BYREF) == kArrayOfVariants)
        return PrepareArrayOfVariants(parameter, held, fromVariable, locale);
    if ((held->vt & ~VT_BYREF) != parameter.type) return DISP_E_TYPEMISMATCH;
    const bool isReference = (held->vt & VT_BYREF) != 0;
    SAFEARRAY** const array = isReference ? held->pparray : &held->parray;
    if (!IsArrayOf(*array, static_cast<VARTYPE>(parameter.type & ~VT_ARRAY))) return DISP_E_TYPEMISMATCH;
    if (isReference || fromVariable) {
        mPointer = array;
        return S_OK;
    }
    // What the member does to an array passed by value is not the caller's.
    const HRESULT copied = Copy(mValue, *held);
    if (FAILED(copied)) return ConversionResult(copied);
    mPointer = &mValue.parray;
    mOwnsValue = true;
    return S_OK;
}

/// Scripts have no other arrays: the member gets one of its own type, and the script's gets the elements back.
HRESULT PassedArgument::PrepareArrayOfVariants(const Parameter& parameter, VARIANT* held, bool fromVariable,
                                               LCID locale) noexcept {
    const bool isReference = (held->vt & VT_BYREF) != 0;
    mValue.vt = kArrayOfVariants;
    mValue.parray = isReference ? *held->pparray : held->parray;
    if (!IsArrayOf(mValue.parray, VT_VARIANT)) return DISP_E_TYPEMISMATCH;
    const HRESULT converted = ConvertArray(mValue, mValue, static_cast<VARTYPE>(parameter.type & ~VT_ARRAY), locale);
    if (FAILED(converted)) return converted;
    mPointer = &mValue.parray;
    mOwnsValue = true;
    mBefore.vt = VT_EMPTY;
    if (isReference || fromVariable) mTarget = held;
    return S_OK;
}

HRESULT PassedArgument::PrepareObject(const Parameter& parameter, VARIANT* held, bool fromVariable) noexcept {
    const VARTYPE base = held->vt & ~VT_BYREF;
    mValue.vt = VT_DISPATCH;
    mValue.pdispVal = nullptr;
    if (base == VT_DISPATCH || base == VT_UNKNOWN) {
        IUnknown* const object = (held->vt & VT_BYREF) != 0 ? *held->ppunkVal : held->punkVal;
        auto* const place = reinterpret_cast<void**>(&mValue.pdispVal);
        if (object != nullptr && FAILED(object->QueryInterface(parameter.interfaceId, place)) &&
            FAILED(object->QueryInterface(IID_IDispatch, place))) {
            return DISP_E_TYPEMISMATCH;
        }
    } else if (base != VT_NULL) {  // how a script that has no Nothing says it
        return DISP_E_TYPEMISMATCH;
    }
    mOwnsValue = true;
    return parameter.byReference ? Remember(held, fromVariable) : S_OK;
}

HRESULT PassedArgument::PrepareConverted(const Parameter& parameter, VARIANT* held, bool fromVariable,
                                         LCID locale) noexcept {
    const HRESULT converted =
        parameter.handle ? ConvertHandle(mValue, *held, locale) : Convert(mValue, *held, parameter.type, locale);
    if (FAILED(converted)) return converted;
    mOwnsValue = true;
    return parameter.byReference ? Remember(held, fromVariable) : S_OK;
}

HRESULT PassedArgument::Remember(VARIANT* held, bool fromVariable) noexcept {
    if (!fromVariable && (held->vt & VT_BYREF) == 0) return S_OK;
    mTarget = held;
    if ((mValue.vt & VT_ARRAY) != 0) {
        // Another array is a change; what stands in one is not compared, so it is not copied either.
        mBefore.vt = VT_PTR;
        mBefore.parray = mValue.parray;
        return S_OK;
    }
    const HRESULT copied = Copy(mBefore, mValue);
    if (FAILED(copied)) {
        mTarget = nullptr;
        ::VariantClear(&mValue);
        mOwnsValue = false;
    }
    return copied;
}

void PassedArgument::Clear() noexcept {
    if (mOwnsValue) ::VariantClear(&mValue);
    if (mTarget != nullptr) ::VariantClear(&mBefore);
}

bool PassedArgument::HasChanged() const noexcept {
    if (mBefore.vt == VT_PTR) return (mValue.vt & VT_ARRAY) == 0 || mValue.parray != mBefore.parray;
    if (mValue.vt != mBefore.vt) return true;
    switch (mValue.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return false;
        case VT_BSTR: {
            const UINT bytes = ::SysStringByteLen(mValue.bstrVal);
            return bytes != ::SysStringByteLen(mBefore.bstrVal) ||
                   (bytes != 0 && std::memcmp(mValue.bstrVal, mBefore.bstrVal, bytes) != 0);
        }
        case VT_DECIMAL:
            return std::memcmp(&mValue.decVal.Hi32, &mBefore.decVal.Hi32, 12) != 0;
        case VT_UI1:
        case VT_I1:
            return mValue.bVal != mBefore.bVal;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return mValue.iVal != mBefore.iVal;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_ERROR:
        case VT_R4:
            return mValue.lVal != mBefore.lVal;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return mValue.punkVal != mBefore.punkVal;
        default:
            return mValue.llVal != mBefore.llVal;
    }
}

HRESULT PassedArgument::ConvertBack(LCID locale) noexcept {
    if (mTarget == nullptr || !HasChanged()) return S_OK;
    mChanged = true;
    const bool toVariants = (mTarget->vt & ~VT_BYREF) == kArrayOfVariants && mValue.vt != kArrayOfVariants;
    if ((mTarget->vt & VT_BYREF) == 0 && !toVariants) return S_OK;

    VARIANT converted;
    const HRESULT result = toVariants ? ConvertArray(converted, mValue, VT_VARIANT, locale)
                                      : Convert(converted, mValue, mTarget->vt & ~VT_BYREF, locale);
    if (FAILED(result)) return result;
    ::VariantClear(&mValue);
    mValue = converted;
    return S_OK;
}

void PassedArgument::WriteBack() noexcept {
    if (!mChanged) return;
    if ((mTarget->vt & VT_BYREF) == 0) {
        std::swap(*mTarget, mValue);
        return;
    }
    if ((mTarget->vt & VT_ARRAY) != 0) {
        std::swap(*mTarget->pparray, mValue.parray);
        return;
    }
    switch (mTarget->vt & ~VT_BYREF) {
        case VT_UI1:
        case VT_I1:
            *mTarget->pbVal = mValue.bVal;
            break;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            *mTarget->piVal = mValue.iVal;
            break;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_ERROR:
        case VT_R4:
            *mTarget->plVal = mValue.lVal;
            break;
        case VT_DECIMAL: {
            mValue.decVal.wReserved = 0;
            *mTarget->pdecVal = mValue.decVal;
            break;
        }
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            std::swap(*static_cast<void**>(mTarget->byref), mValue.byref);
            break;
        default:
            *mTarget->pllVal = mValue.llVal;
            break;
    }
}

}  // namespace kwo::com
