#pragma once

#include <windows.h>
#include <oleauto.h>
#include <olectl.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/owned_variant.h"
#include "com_support/variant_conversion.h"
#include "com_support/variant_references.h"
#include "contract_test.h"
#include "platform/windows/variant_bridge.h"
#include "support/stand_in.h"

namespace kwo::contract {

/// An automation object of a host whose members a test writes. It ends with its last reference.
class ScriptedDispatch final : public test_support::StandIn<IDispatch> {
public:
    struct Member {
        std::optional<platform::Variant> value;
        ScriptedObject::Method method;
        std::vector<Text> parameters;
        std::optional<platform::ComponentError> failure;
    };

    explicit ScriptedDispatch(TextView typeName) : mTypeName(typeName) {}

    Member& At(TextView name) { return mMembers[IdOf(name, true)]; }

    ParameterTypes takes = ParameterTypes::AsGiven;

    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = StandIn::Release();
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        if (mTypeName.empty()) return StandIn::GetTypeInfo(index, locale, info);
        com_support::ComPtr<ICreateTypeLib2> library;
        com_support::ComPtr<ICreateTypeInfo> maker;
        std::wstring name(mTypeName.begin(), mTypeName.end());
        HRESULT code = CreateTypeLib2(SYS_WIN32, L"unsaved.tlb", library.Out());
        if (SUCCEEDED(code)) code = library->CreateTypeInfo(name.data(), TKIND_DISPATCH, maker.Out());
        return FAILED(code) ? code : maker->QueryInterface(IID_ITypeInfo, reinterpret_cast<void**>(info));
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        ids[0] = IdOf(TextOf(names[0]), false);
        HRESULT code = ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
        for (UINT at = 1; at < count; ++at) {
            ids[at] = code == S_OK ? ParameterOf(ids[0], TextOf(names[at])) : DISPID_UNKNOWN;
            if (ids[at] == DISPID_UNKNOWN) code = DISP_E_UNKNOWNNAME;
        }
        return code;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT*) override {
        const auto found = mMembers.find(id);
        if (found == mMembers.end()) return DISP_E_MEMBERNOTFOUND;
        try {
            if (found->second.failure) throw platform::ComponentError(*found->second.failure);
            if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) return Put(found->second, *parameters);
            if (found->second.value && parameters->cArgs == 0) return Answer(*found->second.value, result);
            // The method may replace itself and let go of this object: nothing of it is read after the call.
            const Member member = found->second;
            if (!member.method) return DISP_E_MEMBERNOTFOUND;
            if (Refuses(*parameters)) return DISP_E_TYPEMISMATCH;
            return Run(member, *parameters, result);
        } catch (const platform::ComponentError& error) {
            Describe(error, exception);
            return DISP_E_EXCEPTION;
        }
    }

private:
    static Text TextOf(LPCOLESTR text) { return Text(text, text + std::wcslen(text)); }
    static Text Folded(TextView name) {
        Text folded(name);
        for (char16_t& c : folded) {
            if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
        }
        return folded;
    }
    /// Pictures have fixed identifiers.
    DISPID NewId(const Text& folded) const {
        if (folded == u"type") return DISPID_PICT_TYPE;
        if (folded == u"handle") return DISPID_PICT_HANDLE;
        return 100 + static_cast<DISPID>(mIds.size());
    }
    DISPID IdOf(TextView name, bool isNew) {
        const Text folded = Folded(name);
        const auto found = mIds.find(folded);
        if (found != mIds.end()) return found->second;
        return isNew ? mIds[folded] = NewId(folded) : DISPID_UNKNOWN;
    }
    DISPID ParameterOf(DISPID method, TextView name) {
        const std::vector<Text>& parameters = mMembers[method].parameters;
        for (std::size_t at = 0; at < parameters.size(); ++at) {
            if (Folded(parameters[at]) == Folded(name)) return static_cast<DISPID>(at);
        }
        return DISPID_UNKNOWN;
    }

    bool Refuses(const DISPPARAMS& parameters) const {
        for (UINT at = 0; at < parameters.cArgs; ++at) {
            const VARTYPE type = parameters.rgvarg[at].vt;
            if (takes == ParameterTypes::Longs && type != (VT_BYREF | VT_I4)) return true;
            if (takes == ParameterTypes::Variants && type != (VT_BYREF | VT_VARIANT)) return true;
        }
        return false;
    }
    static HRESULT Put(Member& member, const DISPPARAMS& parameters) {
        if (!member.value) return DISP_E_MEMBERNOTFOUND;
        // The old value goes last: it may be an object.
        platform::Variant value = platform::windows::FromVariant(parameters.rgvarg[0]);
        std::swap(*member.value, value);
        return S_OK;
    }
    static HRESULT Answer(const platform::Variant& value, VARIANT* result) {
        if (result != nullptr) *result = platform::windows::ToVariant(value);
        return S_OK;
    }
    /// The place of each argument as it came in the order of the parameters.
    static std::vector<std::size_t> Places(const DISPPARAMS& parameters) {
        std::vector<std::size_t> places(parameters.cArgs);
        for (UINT at = 0; at < parameters.cArgs; ++at) {
            const bool isNamed = at < parameters.cNamedArgs;
            places[at] =
                isNamed ? static_cast<std::size_t>(parameters.rgdispidNamedArgs[at]) : parameters.cArgs - 1 - at;
        }
        return places;
    }
    static HRESULT Run(const Member& member, DISPPARAMS& parameters, VARIANT* result) {
        const std::vector<std::size_t> places = Places(parameters);
        const std::size_t count = parameters.cNamedArgs > 0 ? member.parameters.size() : parameters.cArgs;
        std::vector<platform::Variant> arguments(count, platform::Missing{});
        for (UINT at = 0; at < parameters.cArgs; ++at)
            arguments[places[at]] = platform::windows::FromVariant(parameters.rgvarg[at]);
        const auto writeBack = [&] {
            for (UINT at = 0; at < parameters.cArgs; ++at)
                Write(parameters.rgvarg[at], arguments[places[at]]);
        };
        try {
            Answer(member.method(arguments), result);
        } catch (const platform::ComponentError&) {
            writeBack();
            throw;
        }
        writeBack();
        return S_OK;
    }
    static void Write(VARIANT& argument, const platform::Variant& value) {
        if ((argument.vt & VT_BYREF) == 0) return;
        auto made = com_support::OwnedVariant::Adopt(platform::windows::ToVariant(value));
        if (argument.vt == com_support::kVariantReference) {
            std::swap(*argument.pvarVal, static_cast<VARIANT&>(made));
            return;
        }
        const auto type = static_cast<VARTYPE>(argument.vt & ~VT_BYREF);
        if (made.vt != type) {
            ASSERT_EQ(com_support::Convert(made, made, type, LOCALE_USER_DEFAULT), S_OK);
        }
        ASSERT_TRUE(com_support::ExchangeReferred(argument, made));
    }
    static void Describe(const platform::ComponentError& error, EXCEPINFO* exception) {
        if (exception == nullptr) return;
        const bool isRuntime = error.number > 0 && error.number <= 0xFFFF;
        *exception = {};
        exception->scode = isRuntime ? static_cast<SCODE>(0x800A0000) | error.number : error.number;
        exception->bstrSource = com_support::NewString(error.source);
        exception->bstrDescription = com_support::NewString(error.description);
        exception->bstrHelpFile = com_support::NewString(error.helpFile);
        exception->dwHelpContext = static_cast<DWORD>(error.helpContext);
    }

    Text mTypeName;
    std::map<Text, DISPID> mIds;
    std::map<DISPID, Member> mMembers;
};

class WindowsScriptedObject final : public ScriptedObject {
public:
    explicit WindowsScriptedObject(TextView typeName) : mObject(new ScriptedDispatch(typeName)) {}

    platform::HostObjectRef Reference() override { return platform::windows::MakeHostObject(mObject.Get()); }
    void SetProperty(TextView name, platform::Variant value) override { mObject->At(name).value = std::move(value); }
    platform::Variant Property(TextView name) override { return mObject->At(name).value.value(); }
    void SetMethod(TextView name, Method method, std::vector<Text> parameters) override {
        mObject->At(name).method = std::move(method);
        mObject->At(name).parameters = std::move(parameters);
    }
    void FailMember(TextView name, platform::ComponentError error) override {
        mObject->At(name).failure = std::move(error);
    }
    void TakeOnly(ParameterTypes types) override { mObject->takes = types; }

private:
    com_support::ComPtr<ScriptedDispatch> mObject;
};

}  // namespace kwo::contract
