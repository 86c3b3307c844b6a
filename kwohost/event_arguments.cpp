#include "event_arguments.h"

#include <cstring>

namespace kwohost {

namespace {

/// The size of a value of this type; 0 if it cannot be stored through a reference.
std::size_t SizeOf(VARTYPE type) {
    if (type & VT_ARRAY) return sizeof(SAFEARRAY*);
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

void Store(const VARIANT& target, Variant& value) {
    if (target.vt == (VT_BYREF | VT_VARIANT)) {
        if (target.pvarVal->vt & VT_BYREF) return Store(*target.pvarVal, value);
        return Check(VariantCopy(target.pvarVal, &value));
    }
    const VARTYPE type = target.vt & ~VT_BYREF;
    Variant converted(static_cast<const VARIANT&>(value));
    if (converted.vt != type)
        Check(VariantChangeTypeEx(&converted, &converted, LOCALE_USER_DEFAULT, VARIANT_ALPHABOOL, type));
    if (type == VT_DECIMAL) {
        *target.pdecVal = converted.decVal;
        target.pdecVal->wReserved = 0;
        return;
    }
    const std::size_t size = SizeOf(type);
    if (size == 0) Fail(DISP_E_BADVARTYPE);
    Variant replaced;
    std::memcpy(&replaced.byref, target.byref, size);
    std::memcpy(target.byref, &converted.byref, size);
    // The old value is released last: an object may call back when it ends.
    replaced.vt = type;
    converted.Detach();
}

}  // namespace

EventArguments::EventArguments(const DISPPARAMS& original) : mOriginal(original) {
    mValues.reserve(original.cArgs);
    for (UINT i = 0; i < original.cArgs; ++i) {
        const VARIANT& argument = original.rgvarg[i];
        mValues.emplace_back(argument);
        VARIANT forScript = argument;
        if (argument.vt & VT_BYREF) {
            VariantInit(&forScript);
            forScript.vt = VT_BYREF | VT_VARIANT;
            forScript.pvarVal = &mValues.back();
        }
        mForScript.push_back(forScript);
    }
    mParams.rgvarg = mForScript.data();
    mParams.cArgs = original.cArgs;
}

HRESULT EventArguments::WriteBack() {
    HRESULT failure = S_OK;
    for (UINT i = 0; i < mOriginal.cArgs; ++i) {
        if (!(mOriginal.rgvarg[i].vt & VT_BYREF)) continue;
        try {
            Store(mOriginal.rgvarg[i], mValues[i]);
        } catch (const ScriptFailure& cannot) {
            failure = cannot.code;
        }
    }
    return failure;
}

}  // namespace kwohost
