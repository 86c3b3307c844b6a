#include "platform/windows/dispatch_object.h"

#include <dispex.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include "com_support/bstr.h"
#include "com_support/exception_info.h"
#include "platform/component_error.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/passed_arguments.h"

namespace kwo::platform::windows {

namespace {

using com_support::ComPtr;
using com_support::OwnedVariant;

constexpr WORD kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

/// True if the callee refused the types of the arguments before it ran. A failure while it runs, even a type mismatch,
/// is an exception: a procedure that has run must not run again.
bool RefusesTypes(HRESULT code) {
    return code == DISP_E_TYPEMISMATCH || code == DISP_E_BADVARTYPE;
}

/// True for an object of a script engine. It accepts every argument but writes only into references to variants.
bool IsScripts(IDispatch& object) {
    return static_cast<bool>(com_support::As<IDispatchEx>(&object));
}

/// Calls a member once. Returns a refusal of the arguments' types; raises every other failure.
HRESULT Invoke(IDispatch* target, DISPID id, WORD flags, std::span<VARIANT> arguments, std::span<DISPID> names,
               VARIANT* result) {
    // The object may release the last reference to itself during the call.
    const ComPtr<IDispatch> held(target);
    DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                             static_cast<UINT>(names.size())};
    com_support::ExceptionInfo exception;
    UINT badArgument = 0;
    const ScriptObjectFailure failure;
    const HRESULT code =
        held->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &exception, &badArgument);
    if (code == DISP_E_EXCEPTION) RaiseException(exception);
    if (SUCCEEDED(code) || RefusesTypes(code) || code == DISP_E_MEMBERNOTFOUND) return code;
    if (IsScripts(*held.Get())) failure.Raise(code);
    RaiseFailure(code);
}

HRESULT Assign(IDispatch* target, DISPID id, WORD flags, VARIANT& value) {
    DISPID put = DISPID_PROPERTYPUT;
    return Invoke(target, id, flags, {&value, 1}, {&put, 1}, nullptr);
}

std::vector<Argument> Arguments(std::span<const Variant> values, bool byReference) {
    std::vector<Argument> arguments;
    for (const Variant& value : values)
        arguments.push_back({value, byReference});
    return arguments;
}

/// One way to pass the arguments; nothing if it is impossible for them.
using Way = std::function<std::optional<PassedTypes>(std::span<const Argument>)>;

Way AsDescribed(IDispatch& object, DISPID method, bool objectsAsValues) {
    return [&object, method, objectsAsValues](std::span<const Argument> arguments) {
        return DescribedTypes(object, method, arguments.size(), objectsAsValues);
    };
}

std::optional<PassedArguments> Passed(std::span<const Argument> arguments, const PassedTypes& types) {
    try {
        return PassedArguments(arguments, types);
    } catch (const ComponentError&) {
        return std::nullopt;  // a value that the type does not hold
    }
}

/// A callee that fails may have written into its arguments. What cannot be read stays as it was.
void ReadBackWhatCanBeRead(PassedArguments& passed, std::span<Argument> arguments) noexcept {
    try {
        passed.ReadBack(arguments);
    } catch (...) {
    }
}

/// Makes the call in the first way that the callee does not refuse.
Variant CallInOneOf(std::span<const Way> ways, IDispatch* target, DISPID id, std::span<DISPID> names,
                    std::span<Argument> arguments) {
    HRESULT code = DISP_E_TYPEMISMATCH;
    std::vector<PassedTypes> refused;
    for (const Way& way : ways) {
        const std::optional<PassedTypes> types = way(arguments);
        if (!types || std::ranges::find(refused, *types) != refused.end()) continue;
        std::optional<PassedArguments> passed = Passed(arguments, *types);
        if (!passed) continue;
        OwnedVariant result;
        try {
            code = Invoke(target, id, kRead, passed->Backwards(), names, &result);
        } catch (...) {
            ReadBackWhatCanBeRead(*passed, arguments);
            throw;
        }
        if (SUCCEEDED(code)) {
            passed->ReadBack(arguments);
            return FromVariant(result);
        }
        if (!RefusesTypes(code)) break;
        refused.push_back(*types);
    }
    RaiseFailure(code);
}

}  // namespace

Variant DispatchObject::DoGet(TextView member, std::span<const Variant> arguments) {
    const DISPID id = IdsOf(member).front();
    const std::vector<Argument> given = Arguments(arguments, false);
    PassedArguments passed(given, Values(given));
    OwnedVariant result;
    const HRESULT code = Invoke(Dispatch(), id, kRead, passed.Backwards(), {}, &result);
    if (FAILED(code)) RaiseFailure(code);
    return FromVariant(result);
}

void DispatchObject::DoLet(TextView member, const Variant& value) {
    const DISPID id = IdsOf(member).front();
    OwnedVariant cell = OwnedVariant::Adopt(ToVariant(value));
    const HRESULT code = Assign(Dispatch(), id, DISPATCH_PROPERTYPUT, cell);
    if (FAILED(code)) RaiseFailure(code);
}

void DispatchObject::DoSet(TextView member, const HostObjectRef& value) {
    const DISPID id = IdsOf(member).front();
    OwnedVariant cell = OwnedVariant::Adopt(ToVariant(value));
    const ComPtr<IDispatch> held(Dispatch());
    HRESULT code = Assign(held.Get(), id, DISPATCH_PROPERTYPUTREF, cell);
    // Many objects have one accessor for both kinds of assignment.
    if (code == DISP_E_MEMBERNOTFOUND) code = Assign(held.Get(), id, DISPATCH_PROPERTYPUT, cell);
    if (FAILED(code)) RaiseFailure(code);
}

Variant DispatchObject::DoCall(TextView member, std::span<const Variant> arguments) {
    return DoGet(member, arguments);
}

Variant DispatchObject::DoNotify(TextView member, std::span<Argument> arguments) {
    const DISPID id = IdsOf(member).front();
    const ComPtr<IDispatch> held(mDispatch);
    std::vector<Way> ways = {TypesAsGiven,
                             AsDescribed(*held.Get(), id, false),
                             AsDescribed(*held.Get(), id, true),
                             VariantReferences,
                             TypesWithLongs,
                             TypedReferences,
                             LongReferences,
                             Values};
    if (IsScripts(*held.Get())) ways.emplace(ways.begin(), VariantReferences);
    return CallInOneOf(ways, held.Get(), id, {}, arguments);
}

Variant DispatchObject::DoCallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) {
    if (names.size() != arguments.size()) RaiseFailure(DISP_E_BADPARAMCOUNT);
    const Ids ids = IdsOf(member, names);
    Ids backwards(ids.rbegin(), ids.rend() - 1);
    const ComPtr<IDispatch> held(mDispatch);
    const Way ways[] = {VariantReferences, TypedReferences};
    std::vector<Argument> given = Arguments(arguments, true);
    Variant result = CallInOneOf(ways, held.Get(), ids.front(), backwards, given);
    for (std::size_t at = 0; at < given.size(); ++at)
        arguments[at] = std::move(given[at].value);
    return result;
}

bool DispatchObject::DoIsSameAs(const HostObject& other) const {
    const auto* const reference = dynamic_cast<const DispatchReference*>(&other);
    if (reference == nullptr) return false;
    if (reference->Dispatch() == Dispatch()) return true;
    const auto identity = com_support::As<IUnknown>(Dispatch());
    return identity && identity.Get() == com_support::As<IUnknown>(reference->Dispatch()).Get();
}

Text DispatchObject::DoTypeName() const {
    ComPtr<ITypeInfo> info;
    if (FAILED(mDispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out())) || !info) return {};
    com_support::Bstr name;
    if (FAILED(info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr))) return {};
    return com_support::ToText(name.Get());
}

bool DispatchObject::DoKnows(TextView member) {
    try {
        IdsOf(member);
        return true;
    } catch (const ComponentError&) {
        return false;
    }
}

DispatchObject::Ids DispatchObject::IdsOf(TextView member, std::span<const TextView> names) {
    Text key(member);
    for (const TextView name : names)
        key.append(1, u'\0').append(name);
    if (const auto known = mIds.find(key); known != mIds.end()) return known->second;
    // The object may call back through this host object while it looks up a name: keep no iterator across the call.
    Ids ids = AskForIds(member, names);
    mIds.insert_or_assign(std::move(key), ids);
    return ids;
}

DispatchObject::Ids DispatchObject::AskForIds(TextView member, std::span<const TextView> names) const {
    const ComPtr<IDispatch> held(mDispatch);
    std::vector<std::wstring> texts{{member.begin(), member.end()}};
    for (const TextView name : names)
        texts.emplace_back(name.begin(), name.end());
    std::vector<wchar_t*> pointers;
    for (std::wstring& text : texts)
        pointers.push_back(text.data());

    Ids ids(texts.size(), DISPID_UNKNOWN);
    HRESULT code = held->GetIDsOfNames(IID_NULL, pointers.data(), static_cast<UINT>(pointers.size()),
                                       LOCALE_USER_DEFAULT, ids.data());
    // Class instances of script engines know names only by their extended interface, and no names of arguments.
    const auto extended = code == E_NOTIMPL ? held.As<IDispatchEx>() : nullptr;
    if (extended) {
        if (!names.empty()) RaiseFailure(DISP_E_NONAMEDARGS);
        code = extended->GetDispID(com_support::Bstr(texts[0]).Get(), fdexNameCaseInsensitive, ids.data());
    }
    if (code == DISP_E_UNKNOWNNAME && ids[0] != DISPID_UNKNOWN && !names.empty()) RaiseFailure(DISP_E_PARAMNOTFOUND);
    if (FAILED(code)) RaiseFailure(code);
    return ids;
}

HostObjectRef MakeHostObject(IDispatch* dispatch) {
    if (dispatch == nullptr) return nullptr;
    return std::make_shared<DispatchObject>(*dispatch);
}

}  // namespace kwo::platform::windows
