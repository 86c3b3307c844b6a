#include "com_support/variant_conversion.h"

#include <cmath>
#include <cstdint>

#include "com_support/variant_references.h"

namespace kwo::com_support {

namespace {

bool IsNotANumber(const VARIANT& value) {
    VARIANT number;
    if (!SeeInnermost(value, number)) return false;
    return (number.vt == VT_R4 && std::isnan(number.fltVal)) ||
           ((number.vt == VT_R8 || number.vt == VT_DATE) && std::isnan(number.dblVal));
}

/// True for the types that have no place for a value that is not a number.
bool HoldsNumbersAlone(VARTYPE type) {
    return type == VT_DATE || type == VT_CY || type == VT_DECIMAL || type == VT_I2 || type == VT_I4 ||
           (type >= VT_I1 && type <= VT_UINT);
}

}  // namespace

HRESULT Convert(VARIANT& converted, const VARIANT& value, VARTYPE type, LCID locale) {
    // The system's comparisons for an overflow let such a value pass, and each system makes another number of it.
    if (HoldsNumbersAlone(type) && IsNotANumber(value)) return DISP_E_OVERFLOW;
    // The function only reads its source, although it is not declared const.
    return ::VariantChangeTypeEx(&converted, const_cast<VARIANT*>(&value), locale, VARIANT_ALPHABOOL, type);
}

HRESULT To32Bits(LONG& bits, const VARIANT& value, LCID locale) {
    VARIANT number;
    if (!SeeInnermost(value, number) || IsNullObject(number)) return DISP_E_TYPEMISMATCH;
    if (number.vt != VT_UI8) {
        const VARIANT given = number;
        ::VariantInit(&number);
        const HRESULT result = Convert(number, given, VT_I8, locale);
        if (FAILED(result)) return result;
    }
    if (number.llVal < INT32_MIN || number.llVal > UINT32_MAX) return DISP_E_OVERFLOW;
    bits = static_cast<LONG>(number.llVal);
    return S_OK;
}

}  // namespace kwo::com_support
