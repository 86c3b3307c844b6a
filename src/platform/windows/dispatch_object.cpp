#include "platform/windows/dispatch_object.h"

#include <dispex.h>

#include <algorithm>
#include <new>
#include <string>

#include "platform/component_error.h"
#include "platform/windows/call_failure.h"

namespace kwo::platform::windows {

namespace {

using Microsoft::WRL::ComPtr;

constexpr WORD kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

/// One call of a member. A refusal of the arguments' types is returned, every other failure raised.
HRESULT Invoke(IDispatch* target, DISPID id, WORD flags, std::span<VARIANT> arguments, std::span<DISPID> names,
               VARIANT* result) {
    // The caller's object may let go of the last reference to itself in the middle of the call.
    const ComPtr<IDispatch> held(target);
    DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                             static_cast<UINT>(names.size())};
    ExceptionInfo exception;
    UINT badArgument = 0;
    const HRESULT code =
        held->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, exception.Out(), &badArgument);
    if (code == DISP_E_EXCEPTION) exception.RaiseIt();
    if (FAILED(code) && code != DISP_E_TYPEMISMATCH && code != DISP_E_MEMBERNOTFOUND) RaiseFailure(code);
    return code;
}

HRESULT Assign(IDispatch* target, DISPID id, WORD flags, VARIANT& value) {
    DISPID put = DISPID_PROPERTYPUT;
    return Invoke(target, id, flags, {&value, 1}, {&put, 1}, nullptr);
}

std::vector<OwnedVariant> ToVariants(std::span<const Variant> values) {
    std::vector<OwnedVariant> cells;
    cells.reserve(values.size());
    for (const Variant& value : values)
        cells.emplace_back(ToVariant(value));
    return cells;
}

/// A reference to the cell as it is. What was left out stays visible to an object that does not follow references.
VARIANT ReferenceToCell(VARIANT& cell) {
    if (cell.vt == VT_ERROR && cell.scode == DISP_E_PARAMNOTFOUND) return cell;
    VARIANT reference;
    ::VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &cell;
    return reference;
}

/// A reference to what the cell holds, where there are references to such values.
VARIANT ReferenceToValue(VARIANT& cell) {
    if (cell.vt == VT_EMPTY || cell.vt == VT_NULL || cell.vt == VT_ERROR || cell.vt == VT_RECORD) {
        return ReferenceToCell(cell);
    }
    VARIANT reference;
    ::VariantInit(&reference);
    reference.vt = static_cast<VARTYPE>(VT_BYREF | cell.vt);
    reference.byref = cell.vt == VT_DECIMAL ? static_cast<void*>(&cell.decVal) : static_cast<void*>(&cell.llVal);
    return reference;
}

/// An object that was not replaced stays what it is to the caller.
bool HoldsTheSameObject(const VARIANT& cell, const Variant& value) {
    const auto* const object = std::get_if<HostObjectRef>(&value);
    if (object == nullptr || *object == nullptr || cell.vt != VT_DISPATCH) return false;
    const auto* const reference = dynamic_cast<const DispatchReference*>(object->get());
    return reference != nullptr && reference->Dispatch() == cell.pdispVal;
}

void ReadBack(const std::vector<OwnedVariant>& cells, std::span<Variant> arguments) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (!HoldsTheSameObject(cells[i].Get(), arguments[i])) arguments[i] = FromVariant(cells[i].Get());
    }
}

ComPtr<IUnknown> IdentityOf(IDispatch* dispatch) {
    ComPtr<IUnknown> identity;
    dispatch->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identity.GetAddressOf()));
    return identity;
}

}  // namespace

Variant DispatchObject::DoGet(TextView member, std::span<const Variant> arguments) {
    const DISPID id = IdsOf(member).front();
    const std::vector<OwnedVariant> cells = ToVariants(arguments);
    std::vector<VARIANT> backwards;
    for (auto cell = cells.rbegin(); cell != cells.rend(); ++cell)
        backwards.push_back(cell->Get());
    OwnedVariant result;
    const HRESULT code = Invoke(Dispatch(), id, kRead, backwards, {}, result.Out());
    if (FAILED(code)) RaiseFailure(code);
    return FromVariant(result.Get());
}

void DispatchObject::DoLet(TextView member, const Variant& value) {
    const DISPID id = IdsOf(member).front();
    OwnedVariant cell(ToVariant(value));
    const HRESULT code = Assign(Dispatch(), id, DISPATCH_PROPERTYPUT, cell.Get());
    if (FAILED(code)) RaiseFailure(code);
}

void DispatchObject::DoSet(TextView member, const HostObjectRef& value) {
    const DISPID id = IdsOf(member).front();
    OwnedVariant cell(ToVariant(value));
    const ComPtr<IDispatch> held(Dispatch());
    HRESULT code = Assign(held.Get(), id, DISPATCH_PROPERTYPUTREF, cell.Get());
    // Many objects have one accessor for both ways.
    if (code == DISP_E_MEMBERNOTFOUND) code = Assign(held.Get(), id, DISPATCH_PROPERTYPUT, cell.Get());
    if (FAILED(code)) RaiseFailure(code);
}

Variant DispatchObject::DoCall(TextView member, std::span<Variant> arguments) {
    return CallByReference(IdsOf(member), arguments);
}

Variant DispatchObject::DoCallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) {
    if (names.size() != arguments.size()) RaiseFailure(DISP_E_BADPARAMCOUNT);
    return CallByReference(IdsOf(member, names), arguments);
}

bool DispatchObject::DoIsSameAs(const HostObject& other) const {
    const auto* const reference = dynamic_cast<const DispatchReference*>(&other);
    if (reference == nullptr) return false;
    if (reference->Dispatch() == Dispatch()) return true;
    const ComPtr<IUnknown> identity = IdentityOf(Dispatch());
    return identity.Get() != nullptr && identity.Get() == IdentityOf(reference->Dispatch()).Get();
}

Text DispatchObject::DoTypeName() const {
    ComPtr<ITypeInfo> info;
    if (FAILED(mDispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.GetAddressOf())) || info.Get() == nullptr) return {};
    OwnedVariant name;
    name.Get().bstrVal = nullptr;
    if (FAILED(info->GetDocumentation(MEMBERID_NIL, &name.Get().bstrVal, nullptr, nullptr, nullptr))) return {};
    name.Get().vt = VT_BSTR;
    return std::get<Text>(FromVariant(name.Get()));
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
    // An object may call back, through this very object, while it looks a name up: nothing is kept across the call.
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
    ComPtr<IDispatchEx> extended;
    // Script engines' class instances know names by their extended interface alone, and no arguments' names.
    if (code == E_NOTIMPL && SUCCEEDED(held.As(&extended))) {
        if (!names.empty()) RaiseFailure(DISP_E_NONAMEDARGS);
        const BSTR name = ::SysAllocStringLen(texts[0].data(), static_cast<UINT>(texts[0].size()));
        if (name == nullptr) throw std::bad_alloc();
        code = extended->GetDispID(name, fdexNameCaseInsensitive, ids.data());
        ::SysFreeString(name);
    }
    if (code == DISP_E_UNKNOWNNAME && ids[0] != DISPID_UNKNOWN && !names.empty()) RaiseFailure(DISP_E_PARAMNOTFOUND);
    if (FAILED(code)) RaiseFailure(code);
    return ids;
}

Variant DispatchObject::CallByReference(const Ids& ids, std::span<Variant> arguments) {
    const ComPtr<IDispatch> held(mDispatch);
    Ids names(ids.rbegin(), ids.rend() - 1);
    OwnedVariant result;
    HRESULT code = S_OK;
    for (const auto reference : {ReferenceToCell, ReferenceToValue}) {
        std::vector<OwnedVariant> cells = ToVariants(arguments);
        std::vector<VARIANT> backwards;
        for (auto cell = cells.rbegin(); cell != cells.rend(); ++cell)
            backwards.push_back(reference(cell->Get()));
        code = Invoke(held.Get(), ids.front(), kRead, backwards, names, result.Out());
        if (SUCCEEDED(code)) {
            ReadBack(cells, arguments);
            return FromVariant(result.Get());
        }
        if (code != DISP_E_TYPEMISMATCH || arguments.empty()) break;
    }
    RaiseFailure(code);
}

HostObjectRef MakeHostObject(IDispatch* dispatch) {
    if (dispatch == nullptr) return nullptr;
    return std::make_shared<DispatchObject>(*dispatch);
}

}  // namespace kwo::platform::windows
