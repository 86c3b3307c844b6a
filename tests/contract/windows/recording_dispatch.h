#pragma once

#include <windows.h>
#include <dispex.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/stand_in.h"

namespace kwo::platform::windows {

/// An object without automation. The test itself holds a reference.
class PlainUnknown final : public test_support::StandIn<> {
public:
    PlainUnknown() { references = 1; }
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = IsEqualIID(id, IID_IUnknown) ? this : nullptr;
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
};

/// An automation object whose members are all one function of the test, which also sees how it was called.
class RecordingDispatch : public test_support::StandIn<IDispatchEx> {
public:
    /// The test itself holds a reference.
    RecordingDispatch() { references = 1; }

    struct Call {
        DISPID id;
        WORD flags;
        std::vector<VARTYPE> types;  ///< of the arguments as they came: the last one first
        std::vector<DISPID> names;
    };
    using Body = std::function<HRESULT(DISPPARAMS&, VARIANT*, EXCEPINFO*)>;

    std::map<std::wstring, DISPID> members{{L"First", 1}, {L"Second", 2}};
    Body body = [](DISPPARAMS&, VARIANT*, EXCEPINFO*) { return S_OK; };
    std::vector<Call> calls;
    int lookups = 0;
    /// Names are known to the extended interface alone.
    bool extendedOnly = false;
    std::vector<std::wstring> extendedLookups;
    DWORD extendedFlags = 0;
    bool hasExtended = false;
    ITypeInfo* typeInfo = nullptr;
    /// What else is this very object.
    IUnknown* identity = nullptr;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = nullptr;
        if (IsEqualIID(id, IID_IUnknown) && identity != nullptr) return identity->QueryInterface(id, object);
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) ||
                           (hasExtended && IsEqualIID(id, __uuidof(IDispatchEx)));
        if (!known) return E_NOINTERFACE;
        *object = static_cast<IDispatchEx*>(this);
        AddRef();
        return S_OK;
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = typeInfo != nullptr;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = typeInfo;
        if (typeInfo == nullptr) return E_NOTIMPL;
        typeInfo->AddRef();
        return S_OK;
    }
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        Look(reserved, locale);
        ++lookups;
        if (extendedOnly) return E_NOTIMPL;
        HRESULT result = S_OK;
        for (UINT i = 0; i < count; ++i) {
            const auto found = members.find(names[i]);
            ids[i] = found == members.end() ? DISPID_UNKNOWN : found->second;
            if (ids[i] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
        }
        return result;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT*) override {
        Look(reserved, locale);
        Call call{id, flags, {}, {}};
        for (UINT i = 0; i < parameters->cArgs; ++i)
            call.types.push_back(parameters->rgvarg[i].vt);
        for (UINT i = 0; i < parameters->cNamedArgs; ++i)
            call.names.push_back(parameters->rgdispidNamedArgs[i]);
        calls.push_back(call);
        return body(*parameters, result, exception);
    }

    STDMETHODIMP GetDispID(BSTR name, DWORD flags, DISPID* id) override {
        extendedLookups.emplace_back(name);
        extendedFlags = flags;
        const auto found = members.find(name);
        *id = found == members.end() ? DISPID_UNKNOWN : found->second;
        return found == members.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }
    STDMETHODIMP InvokeEx(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, IServiceProvider*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
    STDMETHODIMP GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

private:
    /// What automation prescribes for every call.
    static void Look(REFIID reserved, LCID locale) {
        EXPECT_TRUE(IsEqualIID(reserved, IID_NULL));
        EXPECT_EQ(locale, LCID{LOCALE_USER_DEFAULT});
    }
};

}  // namespace kwo::platform::windows
