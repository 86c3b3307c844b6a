#include "com_support/annotation_service.h"

#include <ole2.h>
// The identifiers as the system's header has them, independent of those of the component. Those of other headers stay
// out: a DLL that needs one would take this file for it.
#include <initguid.h>
#include <oleacc.h>

#include <new>
#include <utility>

namespace kwo::com_support {

namespace {

std::wstring NameOf(const MSAAPROPID& property) {
    static const std::pair<const MSAAPROPID*, const wchar_t*> kNames[] = {
        {&PROPID_ACC_ROLE, L"Role"},
        {&PROPID_ACC_STATE, L"State"},
        {&PROPID_ACC_NAME, L"Name"},
        {&PROPID_ACC_VALUE, L"Value"},
        {&PROPID_ACC_DESCRIPTION, L"Description"},
        {&PROPID_ACC_KEYBOARDSHORTCUT, L"KeyboardShortcut"},
        {&PROPID_ACC_DEFAULTACTION, L"DefaultAction"},
    };
    for (const auto& [id, name] : kNames) {
        if (property == *id) return name;
    }
    return L"Other";
}

template <class Body>
HRESULT WithinMemory(Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace

/// The service and its class object in one. Its owner ends it, not its last reference.
class AnnotationService::Server final : public IAccPropServices {
public:
    explicit Server(Heard heard) : mHeard(std::move(heard)), mFactory(*this) {}
    virtual ~Server() = default;

    IClassFactory& Factory() { return mFactory; }

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool isKnown = id == IID_IUnknown || id == IID_IAccPropServices;
        *object = isKnown ? this : nullptr;
        if (!isKnown) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    STDMETHODIMP SetHwndProp(HWND window, DWORD object, DWORD child, MSAAPROPID property, VARIANT value) override {
        if (value.vt != VT_I4) return E_INVALIDARG;
        return WithinMemory([&] {
            return mHeard({window, object, child, NameOf(property), std::to_wstring(value.lVal), false});
        });
    }
    STDMETHODIMP SetHwndPropStr(HWND window, DWORD object, DWORD child, MSAAPROPID property, LPCWSTR text) override {
        if (!text) return E_INVALIDARG;
        return WithinMemory([&] { return mHeard({window, object, child, NameOf(property), text, false}); });
    }
    STDMETHODIMP ClearHwndProps(HWND window, DWORD object, DWORD child, const MSAAPROPID* properties,
                                int count) override {
        return WithinMemory([&] {
            HRESULT result = S_OK;
            for (int at = 0; at < count; ++at)
                result = mHeard({window, object, child, NameOf(properties[at]), L"", true});
            return result;
        });
    }

    STDMETHODIMP SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override { return E_NOTIMPL; }
    STDMETHODIMP SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override { return E_NOTIMPL; }
    STDMETHODIMP SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override { return E_NOTIMPL; }
    STDMETHODIMP ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override { return E_NOTIMPL; }

    ULONG references = 0;
    int created = 0;

private:
    class ClassObject final : public IClassFactory {
    public:
        explicit ClassObject(Server& server) : mServer(server) {}
        virtual ~ClassObject() = default;
        STDMETHODIMP QueryInterface(REFIID id, void** object) override {
            const bool isKnown = id == IID_IUnknown || id == IID_IClassFactory;
            *object = isKnown ? this : nullptr;
            return isKnown ? S_OK : E_NOINTERFACE;
        }
        STDMETHODIMP_(ULONG) AddRef() override { return 2; }
        STDMETHODIMP_(ULONG) Release() override { return 1; }
        STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
            *object = nullptr;
            if (outer != nullptr) return CLASS_E_NOAGGREGATION;
            ++mServer.created;
            return mServer.QueryInterface(id, object);
        }
        STDMETHODIMP LockServer(BOOL) override { return S_OK; }

    private:
        Server& mServer;
    };

    Heard mHeard;
    ClassObject mFactory;
};

AnnotationService::AnnotationService(Heard heard) : mServer(std::make_unique<Server>(std::move(heard))) {
    ::CoRegisterClassObject(CLSID_AccPropServices, &mServer->Factory(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                            &mRegistration);
}

AnnotationService::~AnnotationService() {
    ::CoRevokeClassObject(mRegistration);
}

int AnnotationService::Created() const {
    return mServer->created;
}

ULONG AnnotationService::Held() const {
    return mServer->references;
}

}  // namespace kwo::com_support
