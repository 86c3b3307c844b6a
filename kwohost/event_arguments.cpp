#include "event_arguments.h"

#include "com_support/variant_conversion.h"
#include "com_support/variant_references.h"

namespace kwohost {

namespace {

void Store(VARIANT& target, const VARIANT& value) {
    VARIANT* const variable = kwo::com_support::Innermost(&target);
    if (variable == nullptr) Fail(DISP_E_BADVARTYPE);
    if ((variable->vt & VT_BYREF) == 0) return Check(VariantCopy(variable, const_cast<VARIANT*>(&value)));
    const auto type = static_cast<VARTYPE>(variable->vt & ~VT_BYREF);
    OwnedVariant converted = Copied(value);
    if (converted.vt != type) Check(kwo::com_support::Convert(converted, converted, type, LOCALE_USER_DEFAULT));
    // The old value is released last: an object may call back when it ends.
    if (!kwo::com_support::ExchangeReferred(*variable, converted)) Fail(DISP_E_BADVARTYPE);
}

}  // namespace

EventArguments::EventArguments(const DISPPARAMS& original) : mOriginal(original) {
    mValues.reserve(original.cArgs);
    for (UINT i = 0; i < original.cArgs; ++i) {
        const VARIANT& argument = original.rgvarg[i];
        mValues.push_back(Copied(argument));
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
