#include "platform/windows/variant_bridge.h"

#include <new>

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/variant_references.h"
#include "platform/component_error.h"
#include "platform/windows/array_bridge.h"

namespace kwo::platform::windows {

namespace {

using com_support::OwnedVariant;

constexpr SCODE kRuntimeErrors = static_cast<SCODE>(0x800A0000);
constexpr std::int32_t kLastRuntimeError = 0xFFFF;

VARIANT Tagged(VARTYPE type) {
    VARIANT value;
    ::VariantInit(&value);
    value.vt = type;
    return value;
}

VARIANT ErrorVariant(SCODE code) {
    VARIANT value = Tagged(VT_ERROR);
    value.scode = code;
    return value;
}

/// Copies the value that `source` owns or refers to.
OwnedVariant Copied(const VARIANT& source) {
    OwnedVariant copy;
    // VariantCopy only reads its source, although it is not declared const.
    RaiseIfNotConverted(::VariantCopy(&copy, const_cast<VARIANT*>(&source)));
    return copy;
}

struct AsVariant {
    VARIANT operator()(Empty) const { return Tagged(VT_EMPTY); }
    VARIANT operator()(Missing) const { return ErrorVariant(DISP_E_PARAMNOTFOUND); }
    VARIANT operator()(Null) const { return Tagged(VT_NULL); }
    VARIANT operator()(std::int16_t number) const {
        VARIANT value = Tagged(VT_I2);
        value.iVal = number;
        return value;
    }
    VARIANT operator()(std::int32_t number) const {
        VARIANT value = Tagged(VT_I4);
        value.lVal = number;
        return value;
    }
    VARIANT operator()(float number) const {
        VARIANT value = Tagged(VT_R4);
        value.fltVal = number;
        return value;
    }
    VARIANT operator()(double number) const {
        VARIANT value = Tagged(VT_R8);
        value.dblVal = number;
        return value;
    }
    VARIANT operator()(Currency amount) const {
        VARIANT value = Tagged(VT_CY);
        value.cyVal.int64 = amount.scaled;
        return value;
    }
    VARIANT operator()(Date date) const {
        VARIANT value = Tagged(VT_DATE);
        value.date = date.days;
        return value;
    }
    VARIANT operator()(const Text& text) const {
        VARIANT value = Tagged(VT_BSTR);
        value.bstrVal = com_support::NewString(text);
        return value;
    }
    VARIANT operator()(bool truth) const {
        VARIANT value = Tagged(VT_BOOL);
        value.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
        return value;
    }
    VARIANT operator()(std::uint8_t number) const {
        VARIANT value = Tagged(VT_UI1);
        value.bVal = number;
        return value;
    }
    VARIANT operator()(ErrorValue error) const {
        const bool isRuntime = error.number > 0 && error.number <= kLastRuntimeError;
        return ErrorVariant(isRuntime ? kRuntimeErrors | error.number : error.number);
    }
    VARIANT operator()(const HostObjectRef& object) const {
        VARIANT value = Tagged(VT_DISPATCH);
        value.pdispVal = nullptr;
        if (object == nullptr) return value;
        const auto* const reference = dynamic_cast<const DispatchReference*>(object.get());
        if (reference == nullptr) RaiseRuntime(RuntimeError::TypeMismatch);
        value.pdispVal = reference->Dispatch();
        value.pdispVal->AddRef();
        return value;
    }
    VARIANT operator()(const ForeignRef& foreign) const {
        if (foreign == nullptr) return Tagged(VT_EMPTY);
        if (const auto* const numbers = dynamic_cast<const Int16Array*>(foreign.get())) return ToArray(*numbers);
        if (const auto* const texts = dynamic_cast<const TextArray*>(foreign.get())) return ToArray(*texts);
        const auto* const held = dynamic_cast<const WindowsForeignValue*>(foreign.get());
        if (held == nullptr) RaiseRuntime(RuntimeError::TypeMismatch);
        return Copied(held->Get()).Detach();
    }
};

Variant Foreign(const VARIANT& value) {
    return std::make_shared<const WindowsForeignValue>(Copied(value));
}

Variant FromUnknown(const VARIANT& value) {
    if (value.punkVal == nullptr) return HostObjectRef();
    const auto dispatch = com_support::As<IDispatch>(value.punkVal);
    return dispatch ? Variant(MakeHostObject(dispatch.Get())) : Foreign(value);
}

}  // namespace

void RaiseIfNotConverted(HRESULT result) {
    if (SUCCEEDED(result)) return;
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    RaiseRuntime(result == DISP_E_OVERFLOW ? RuntimeError::Overflow : RuntimeError::TypeMismatch);
}

std::int32_t ErrorNumber(SCODE code) {
    const auto number = static_cast<std::int32_t>(code & kLastRuntimeError);
    return (code & ~kLastRuntimeError) == kRuntimeErrors && number != 0 ? number : static_cast<std::int32_t>(code);
}

VARIANT ToVariant(const Variant& value) {
    return std::visit(AsVariant(), value);
}

Variant FromVariant(const VARIANT& value) {
    VARIANT inner;
    if (!com_support::SeeInnermost(value, inner)) RaiseRuntime(RuntimeError::TypeMismatch);
    switch (inner.vt) {
        case VT_EMPTY:
            return Empty();
        case VT_NULL:
            return Null();
        case VT_I2:
            return std::int16_t{inner.iVal};
        case VT_I4:
            return static_cast<std::int32_t>(inner.lVal);
        case VT_R4:
            return inner.fltVal;
        case VT_R8:
            return inner.dblVal;
        case VT_CY:
            return Currency{inner.cyVal.int64};
        case VT_DATE:
            return Date{inner.date};
        case VT_BSTR:
            return com_support::ToText(inner.bstrVal);
        case VT_BOOL:
            return inner.boolVal != VARIANT_FALSE;
        case VT_UI1:
            return std::uint8_t{inner.bVal};
        case VT_ERROR:
            if (inner.scode == DISP_E_PARAMNOTFOUND) return Missing();
            return ErrorValue{ErrorNumber(inner.scode)};
        case VT_DISPATCH:
            return MakeHostObject(inner.pdispVal);
        case VT_UNKNOWN:
            return FromUnknown(inner);
        case VT_VARIANT:  // there are only references to those, but copying does not mind
            RaiseRuntime(RuntimeError::TypeMismatch);
        default:
            if (ForeignRef array = FromArray(inner)) return array;
            return Foreign(inner);
    }
}

}  // namespace kwo::platform::windows
