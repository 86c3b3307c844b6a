#include "platform/windows/passed_arguments.h"

#include <algorithm>

#include "com_support/com_ptr.h"
#include "com_support/type_description.h"
#include "com_support/variant_conversion.h"
#include "com_support/variant_references.h"
#include "platform/component_error.h"

namespace kwo::platform::windows {

namespace {

using com_support::ComPtr;
using com_support::FunctionDescription;
using com_support::kVariantReference;
using com_support::OwnedVariant;
using com_support::TypeAttributes;

VARTYPE TypeOf(const Argument& argument) {
    return OwnedVariant::Adopt(ToVariant(argument.value)).vt;
}

/// The type of a reference to a value of this type; a reference to a variant for types that no reference leads to.
VARTYPE ReferenceTo(VARTYPE type) {
    const bool isValue = type != VT_EMPTY && type != VT_NULL && type != VT_ERROR && type != VT_RECORD;
    return static_cast<VARTYPE>(VT_BYREF | (isValue ? type : static_cast<VARTYPE>(VT_VARIANT)));
}

VARTYPE WithLong(VARTYPE type) {
    return type == VT_I2 || type == VT_UI1 ? static_cast<VARTYPE>(VT_I4) : type;
}

template <class TypeFor>
PassedTypes ForEach(std::span<const Argument> arguments, TypeFor&& typeFor) {
    PassedTypes types;
    for (const Argument& argument : arguments)
        types.push_back(IsMissing(argument.value) ? static_cast<VARTYPE>(VT_ERROR) : typeFor(argument));
    return types;
}

OwnedVariant Converted(const VARIANT& value, VARTYPE type) {
    OwnedVariant converted;
    RaiseIfNotConverted(com_support::Convert(converted, value, type, LOCALE_USER_DEFAULT));
    return converted;
}

VARIANT ReferenceTo(VARIANT& cell, VARTYPE type) {
    VARIANT reference;
    ::VariantInit(&reference);
    reference.vt = type;
    if (type == kVariantReference) {
        reference.pvarVal = &cell;
    } else {
        reference.byref = cell.vt == VT_DECIMAL ? static_cast<void*>(&cell.decVal) : static_cast<void*>(&cell.llVal);
    }
    return reference;
}

/// True if the callee has not replaced the object: the caller then keeps it as it is.
bool HoldsTheSameObject(const VARIANT& cell, const Variant& value) {
    const auto* const object = std::get_if<HostObjectRef>(&value);
    if (object == nullptr || *object == nullptr || cell.vt != VT_DISPATCH) return false;
    const auto* const reference = dynamic_cast<const DispatchReference*>(object->get());
    return reference != nullptr && reference->Dispatch() == cell.pdispVal;
}

/// The VARIANT type for a parameter; VT_VOID if no VARIANT can hold it.
class ParameterTypes {
public:
    ParameterTypes(ITypeInfo& info, bool objectsAsValues) : mInfo(info), mObjectsAsValues(objectsAsValues) {}

    VARTYPE Of(const TYPEDESC& parameter) const {
        if (parameter.vt != VT_PTR) return ValueType(mInfo, parameter);
        const TYPEDESC& target = *parameter.lptdesc;
        const VARTYPE pointer = ObjectType(mInfo, target);
        if (pointer != VT_VOID) return pointer;  // a pointer to an interface is an object, as a value
        const VARTYPE type = target.vt == VT_PTR ? ObjectType(mInfo, *target.lptdesc) : ValueType(mInfo, target);
        if (type == VT_VOID) return VT_VOID;
        const bool isObject = type == VT_DISPATCH || type == VT_UNKNOWN;
        return static_cast<VARTYPE>(isObject && mObjectsAsValues ? type : VT_BYREF | type);
    }

private:
    static ComPtr<ITypeInfo> Named(ITypeInfo& info, const TYPEDESC& type) {
        ComPtr<ITypeInfo> named;
        if (type.vt == VT_USERDEFINED) info.GetRefTypeInfo(type.hreftype, named.Out());
        return named;
    }
    /// VT_DISPATCH for an interface that the library names.
    static VARTYPE ObjectType(ITypeInfo& info, const TYPEDESC& type) {
        const ComPtr<ITypeInfo> named = Named(info, type);
        if (!named) return VT_VOID;
        const TypeAttributes attributes(*named);
        if (!attributes) return VT_VOID;
        const TYPEKIND kind = attributes->typekind;
        const bool isObject = kind == TKIND_INTERFACE || kind == TKIND_DISPATCH || kind == TKIND_COCLASS;
        return static_cast<VARTYPE>(isObject ? VT_DISPATCH : VT_VOID);
    }
    static VARTYPE ValueType(ITypeInfo& info, const TYPEDESC& type) {
        switch (type.vt) {
            case VT_USERDEFINED: {
                const ComPtr<ITypeInfo> named = Named(info, type);
                if (!named) return VT_VOID;
                const TypeAttributes attributes(*named);
                if (!attributes) return VT_VOID;
                if (attributes->typekind == TKIND_ENUM) return VT_I4;
                if (attributes->typekind != TKIND_ALIAS) return VT_VOID;
                return ValueType(*named, attributes->tdescAlias);
            }
            case VT_I2:
            case VT_I4:
            case VT_R4:
            case VT_R8:
            case VT_CY:
            case VT_DATE:
            case VT_BSTR:
            case VT_DISPATCH:
            case VT_BOOL:
            case VT_VARIANT:
            case VT_UNKNOWN:
            case VT_DECIMAL:
            case VT_I1:
            case VT_UI1:
            case VT_UI2:
            case VT_UI4:
            case VT_I8:
            case VT_UI8:
            case VT_INT:
            case VT_UINT:
                return type.vt;
            default:
                return VT_VOID;
        }
    }

    ITypeInfo& mInfo;
    bool mObjectsAsValues;
};

}  // namespace

PassedTypes TypesAsGiven(std::span<const Argument> arguments) {
    return ForEach(arguments, [](const Argument& argument) {
        const VARTYPE type = TypeOf(argument);
        return argument.byReference ? ReferenceTo(type) : type;
    });
}

PassedTypes TypesWithLongs(std::span<const Argument> arguments) {
    return ForEach(arguments, [](const Argument& argument) {
        const VARTYPE type = WithLong(TypeOf(argument));
        return argument.byReference ? ReferenceTo(type) : type;
    });
}

PassedTypes VariantReferences(std::span<const Argument> arguments) {
    return ForEach(arguments, [](const Argument&) { return kVariantReference; });
}

PassedTypes TypedReferences(std::span<const Argument> arguments) {
    return ForEach(arguments, [](const Argument& argument) { return ReferenceTo(TypeOf(argument)); });
}

PassedTypes LongReferences(std::span<const Argument> arguments) {
    return ForEach(arguments, [](const Argument& argument) { return ReferenceTo(WithLong(TypeOf(argument))); });
}

PassedTypes Values(std::span<const Argument> arguments) {
    return ForEach(arguments, TypeOf);
}

std::optional<PassedTypes> DescribedTypes(IDispatch& object, DISPID method, std::size_t count, bool objectsAsValues) {
    ComPtr<ITypeInfo> info;
    if (FAILED(object.GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out())) || !info) return {};
    const TypeAttributes attributes(*info);
    if (!attributes) return {};
    const ParameterTypes parameters(*info, objectsAsValues);
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        const FunctionDescription found(*info, index);
        if (!found || found->memid != method || found->invkind != INVOKE_FUNC) continue;
        if (found->cParams < 0 || static_cast<std::size_t>(found->cParams) < count) return {};
        PassedTypes types;
        for (std::size_t at = 0; at < count; ++at)
            types.push_back(parameters.Of(found->lprgelemdescParam[at].tdesc));
        if (std::find(types.begin(), types.end(), static_cast<VARTYPE>(VT_VOID)) != types.end()) return {};
        return types;
    }
    return {};
}

PassedArguments::PassedArguments(std::span<const Argument> arguments, const PassedTypes& types) {
    mCells.reserve(arguments.size());
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        OwnedVariant cell = OwnedVariant::Adopt(ToVariant(arguments[at].value));
        const auto type = static_cast<VARTYPE>(types[at] & ~VT_BYREF);
        const bool converts = type != VT_VARIANT && type != cell.vt;
        mOriginalTypes.push_back(converts ? cell.vt : static_cast<VARTYPE>(VT_EMPTY));
        mCells.push_back(converts ? Converted(cell, type) : std::move(cell));
    }
    for (std::size_t at = mCells.size(); at-- > 0;) {
        VARIANT& cell = mCells[at];
        mBackwards.push_back((types[at] & VT_BYREF) != 0 ? ReferenceTo(cell, types[at]) : cell);
    }
}

void PassedArguments::ReadBack(std::span<Argument> arguments) {
    std::vector<Variant> values;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        VARIANT& cell = mCells[at];
        // A decimal lies over the type of the cell, which the callee has overwritten with it.
        if (mBackwards[arguments.size() - 1 - at].vt == (VT_BYREF | VT_DECIMAL)) cell.vt = VT_DECIMAL;
        const bool stays = !arguments[at].byReference || HoldsTheSameObject(cell, arguments[at].value);
        if (stays) {
            values.push_back(arguments[at].value);
        } else if (mOriginalTypes[at] != VT_EMPTY) {
            values.push_back(FromVariant(Converted(cell, mOriginalTypes[at])));
        } else {
            values.push_back(FromVariant(cell));
        }
    }
    for (std::size_t at = 0; at < arguments.size(); ++at)
        arguments[at].value = std::move(values[at]);
}

}  // namespace kwo::platform::windows
