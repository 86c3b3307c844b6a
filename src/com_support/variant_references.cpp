#include "com_support/variant_references.h"

#include <cstring>
#include <utility>

namespace kwo::com_support {

bool IsMissing(const VARIANT& value) {
    VARIANT seen;
    return SeeInnermost(value, seen) && seen.vt == VT_ERROR && seen.scode == DISP_E_PARAMNOTFOUND;
}

bool IsNullObject(const VARIANT& value) {
    const auto type = static_cast<VARTYPE>(value.vt & ~VT_BYREF);
    if (type != VT_DISPATCH && type != VT_UNKNOWN) return false;
    if (value.punkVal == nullptr) return true;
    return (value.vt & VT_BYREF) != 0 && *value.ppunkVal == nullptr;
}

std::size_t StorageSize(VARTYPE type) {
    if ((type & VT_ARRAY) != 0) return sizeof(SAFEARRAY*);
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            return 8;
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return sizeof(void*);
        default:
            return 0;
    }
}

bool SeeReferred(const VARIANT& reference, VARIANT& value) {
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    VARIANT seen;
    ::VariantInit(&seen);
    if (type == VT_RECORD) {  // a record is held by a pointer in either case
        seen = reference;
    } else if (reference.byref == nullptr) {
        return false;
    } else if (type == VT_DECIMAL) {
        seen.decVal = *reference.pdecVal;
    } else {
        const std::size_t size = StorageSize(type);
        if (size == 0) return false;
        std::memcpy(&seen.llVal, reference.byref, size);
    }
    seen.vt = type;  // last: a decimal lies over the tag
    value = seen;
    return true;
}

bool SeeInnermost(const VARIANT& variant, VARIANT& value) {
    const VARIANT* const inner = Innermost(&variant);
    if (inner == nullptr) return false;
    if ((inner->vt & VT_BYREF) != 0) return SeeReferred(*inner, value);
    value = *inner;
    return true;
}

bool ExchangeReferred(const VARIANT& reference, VARIANT& value) {
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    if (type == VT_DECIMAL) {
        value.decVal.wReserved = 0;  // the tag lies there, and is no part of the number
        std::swap(*reference.pdecVal, value.decVal);
        value.vt = VT_DECIMAL;
        return true;
    }
    const std::size_t size = StorageSize(type);
    if (size == 0) return false;
    LONGLONG before = 0;
    std::memcpy(&before, reference.byref, size);
    std::memcpy(reference.byref, &value.llVal, size);
    std::memcpy(&value.llVal, &before, size);
    return true;
}

}  // namespace kwo::com_support
