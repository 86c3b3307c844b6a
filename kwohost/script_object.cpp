#include "script_object.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "com_support/variant_conversion.h"
#include "com_support/variant_references.h"
#include "guard.h"
#include "type_information.h"

namespace kwohost {

namespace {

/// Answered by objects of this program alone.
constexpr IID kOwn = {0x5d1b3f0a, 0x6a7c, 0x4e52, {0x9b, 0x1e, 0x3c, 0x80, 0x27, 0x4d, 0xe1, 0x96}};

bool SameName(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), TRUE) ==
           CSTR_EQUAL;
}

/// What the caller of a member gets for a failure.
HRESULT Report(const ScriptFailure& failure, EXCEPINFO* exception) noexcept {
    if (failure.description.empty() || !exception) return failure.code;
    *exception = {};
    exception->scode = failure.code;
    exception->bstrSource = SysAllocString(kErrorSource);
    exception->bstrDescription = SysAllocString(failure.description.c_str());
    return DISP_E_EXCEPTION;
}

}  // namespace

bool Call::Has(int index) const {
    return index < Count() && !kwo::com_support::IsMissing(Raw(index));
}

OwnedVariant Call::Value(int index) const {
    return Copied(Raw(index));
}

std::wstring Call::Text(int index) const {
    const OwnedVariant text = Converted(index, VT_BSTR);
    return std::wstring(View(text.bstrVal));
}

LONG Call::Whole(int index) const {
    return Converted(index, VT_I4).lVal;
}

double Call::Number(int index) const {
    return Converted(index, VT_R8).dblVal;
}

bool Call::Truth(int index) const {
    return Converted(index, VT_BOOL).boolVal != VARIANT_FALSE;
}

ComPtr<IDispatch> Call::Object(int index) const {
    const OwnedVariant value = Value(index);
    if (value.vt != VT_DISPATCH && value.vt != VT_UNKNOWN) Fail(RuntimeError::ObjectRequired, L"Object required");
    if (!value.punkVal) Fail(RuntimeError::NoObjectSet, L"Object variable not set");
    ComPtr<IDispatch> object;
    Check(value.punkVal->QueryInterface(IID_PPV_ARGS(object.Out())));
    return object;
}

void Call::ReturnText(std::wstring_view text) {
    OwnedVariant value;
    value.bstrVal = Bstr(text).Detach();
    value.vt = VT_BSTR;
    ReturnValue(std::move(value));
}

void Call::ReturnWhole(LONG number) {
    OwnedVariant value;
    value.vt = VT_I4;
    value.lVal = number;
    ReturnValue(std::move(value));
}

void Call::ReturnSingle(double number) {
    if (std::abs(number) > std::numeric_limits<float>::max()) Fail(RuntimeError::Overflow, L"The result is too large");
    OwnedVariant value;
    value.vt = VT_R4;
    value.fltVal = static_cast<float>(number);
    ReturnValue(std::move(value));
}

void Call::ReturnTruth(bool truth) {
    OwnedVariant value;
    value.vt = VT_BOOL;
    value.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    ReturnValue(std::move(value));
}

void Call::ReturnObject(ComPtr<IDispatch> object) {
    OwnedVariant value;
    value.vt = VT_DISPATCH;
    value.pdispVal = object.Detach();
    ReturnValue(std::move(value));
}

void Call::ReturnUnknown(ComPtr<IUnknown> object) {
    OwnedVariant value;
    value.vt = VT_UNKNOWN;
    value.punkVal = object.Detach();
    ReturnValue(std::move(value));
}

const VARIANT& Call::Raw(int index) const {
    mLast = mParams.cArgs - 1 - static_cast<UINT>(index);
    return mParams.rgvarg[mLast];
}

OwnedVariant Call::Converted(int index, VARTYPE type) const {
    OwnedVariant value = Value(index);
    Check(kwo::com_support::Convert(value, value, type, LOCALE_USER_DEFAULT));
    return value;
}

void Call::ReturnValue(OwnedVariant value) {
    if (mResult) *mResult = value.Detach();
}

bool ScriptObject::AlsoAnswers(REFIID iid) const {
    return iid == kOwn;
}

ScriptObject* ScriptObject::OwnObject(IDispatch* object) {
    ComPtr<IDispatch> own;
    if (!object || FAILED(object->QueryInterface(kOwn, own.OutVoid()))) return nullptr;
    return static_cast<ScriptObject*>(own.Get());
}

HRESULT ScriptObject::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = mType ? 1 : 0;
    return S_OK;
}

HRESULT ScriptObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return index == 0 && mType ? mType.CopyTo(info) : DISP_E_BADINDEX;
}

HRESULT ScriptObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    if (count == 0) return S_OK;
    // The names behind the first one are those of arguments, and no member here takes named arguments.
    std::fill_n(ids, count, DISPID_UNKNOWN);
    return Guarded([&] {
        const Member* member = Find(std::wstring_view(names[0]));
        ids[0] = member ? member->id : IdOfOther(names[0]);
        return ids[0] != DISPID_UNKNOWN && count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    });
}

HRESULT ScriptObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                             EXCEPINFO* exception, UINT* badArgument) {
    if (!params) return E_POINTER;
    const ComPtr<IDispatch> keep(this);
    return Guarded([&] { return InvokeMember(id, flags, params, result, exception, badArgument); },
                   [exception](const ScriptFailure& failure) { return Report(failure, exception); });
}

HRESULT ScriptObject::InvokeMember(DISPID id, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                                   UINT* badArgument) {
    const Member* member = Find(id == DISPID_VALUE ? mDefault : id);
    const bool isAssigned = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (!member) return isAssigned ? DISP_E_MEMBERNOTFOUND : InvokeOther(id, *params, result, exception);
    if (isAssigned) return Assign(*member, *params, badArgument);
    const WORD accepted = member->isMethod ? DISPATCH_METHOD : DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    if (!(flags & accepted)) return DISP_E_MEMBERNOTFOUND;
    if (params->cNamedArgs > 0) return DISP_E_NONAMEDARGS;
    const int count = static_cast<int>(params->cArgs);
    if (count > 0 && !member->isMethod && member->most == 0)
        return CallDefaultOf(*member, flags, params, result, exception, badArgument);
    if (count < member->fewest || (member->most != kAnyNumber && count > member->most)) return DISP_E_BADPARAMCOUNT;
    CallMember(*member, *params, result, badArgument);
    return S_OK;
}

void ScriptObject::AddMethod(const wchar_t* name, int fewest, int most, Body body) {
    mMembers.push_back({static_cast<DISPID>(mMembers.size() + 1), name, true, fewest, most, std::move(body), {}});
}

void ScriptObject::AddProperty(const wchar_t* name, Body body, int arguments) {
    mMembers.push_back(
        {static_cast<DISPID>(mMembers.size() + 1), name, false, arguments, arguments, std::move(body), {}});
}

void ScriptObject::AddVariable(const wchar_t* name, Body get, Body put) {
    mMembers.push_back({static_cast<DISPID>(mMembers.size() + 1), name, false, 0, 0, std::move(get), std::move(put)});
}

void ScriptObject::AddIndexed(const wchar_t* name, Body get, Body put) {
    mMembers.push_back({static_cast<DISPID>(mMembers.size() + 1), name, false, 1, 1, std::move(get), std::move(put)});
}

void ScriptObject::Describe(const wchar_t* typeName) {
    std::vector<DescribedMember> members;
    for (const Member& member : mMembers)
        members.push_back({member.id, member.name, member.isMethod, member.put != nullptr});
    mType = MakeTypeInformation(typeName, members);
}

void ScriptObject::SetDefault(const wchar_t* name) {
    mDefault = Find(std::wstring_view(name))->id;
}

void ScriptObject::SetEnumerator(Body body) {
    mMembers.push_back({DISPID_NEWENUM, L"_NewEnum", false, 0, 0, std::move(body), {}});
}

const ScriptObject::Member* ScriptObject::Find(std::wstring_view name) const {
    const auto found = std::find_if(mMembers.begin(), mMembers.end(),
                                    [name](const Member& member) { return SameName(member.name, name); });
    return found == mMembers.end() ? nullptr : &*found;
}

const ScriptObject::Member* ScriptObject::Find(DISPID id) const {
    // Most are where their number says.
    const auto place = static_cast<std::size_t>(id - 1);
    if (id > 0 && place < mMembers.size() && mMembers[place].id == id) return &mMembers[place];
    const auto found =
        std::find_if(mMembers.begin(), mMembers.end(), [id](const Member& member) { return member.id == id; });
    return found == mMembers.end() ? nullptr : &*found;
}

void ScriptObject::CallMember(const Member& member, const DISPPARAMS& params, VARIANT* result,
                              UINT* badArgument) const {
    if (result) VariantInit(result);
    RunBody(member.body, params, result, badArgument);
}

HRESULT ScriptObject::Assign(const Member& member, const DISPPARAMS& params, UINT* badArgument) const {
    if (!member.put) return DISP_E_MEMBERNOTFOUND;
    if (params.cArgs != static_cast<UINT>(member.fewest) + 1) return DISP_E_BADPARAMCOUNT;
    RunBody(member.put, params, nullptr, badArgument);
    return S_OK;
}

void ScriptObject::RunBody(const Body& body, const DISPPARAMS& params, VARIANT* result, UINT* badArgument) const {
    CheckUsable();
    Call call(params, result);
    try {
        body(call);
    } catch (const ScriptFailure& failure) {
        if (badArgument && (failure.code == DISP_E_TYPEMISMATCH || failure.code == DISP_E_OVERFLOW))
            *badArgument = call.LastArgument();
        throw;
    }
}

/// `WScript.Arguments(0)` reaches this object as a property with an argument; the argument is meant for the object
/// that the property returns.
HRESULT ScriptObject::CallDefaultOf(const Member& property, WORD flags, DISPPARAMS* params, VARIANT* result,
                                    EXCEPINFO* exception, UINT* badArgument) const {
    DISPPARAMS none = {};
    OwnedVariant object;
    CallMember(property, none, &object, badArgument);
    if (object.vt != VT_DISPATCH || !object.pdispVal) return DISP_E_BADPARAMCOUNT;
    return object.pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, flags, params, result, exception,
                                   badArgument);
}

}  // namespace kwohost
