#include "com_support/variant_conversion.h"

#include <cstdint>

#include "com_support/variant_references.h"

namespace kwo::com_support {

HRESULT Convert(VARIANT& converted, const VARIANT& value, VARTYPE type, LCID locale) {
    // The function only reads its source, although it is not declared const.
    return ::VariantChangeTypeEx(&converted, const_cast<VARIANT*>(&value), locale, VARIANT_ALPHABOOL, type);
}

HRESULT To32Bits(LONG& bits, const VARIANT& value, LCID locale) {
    const VARIANT* const inner = Innermost(&value);
    if (inner == nullptr || IsNullObject(*inner)) return DISP_E_TYPEMISMATCH;
    VARIANT number = *inner;
    if ((inner->vt & VT_BYREF) != 0 && !SeeReferred(*inner, number)) return DISP_E_TYPEMISMATCH;
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
