#pragma once

#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include <utility>

#include "com/server/class_info.h"
#include "com/server/error_report.h"
#include "com/server/invoke.h"
#include "com/server/module.h"

namespace kwo::com {

/// What every object of an automation DLL provides: a dual interface, error information and class information.
///
/// `Interface` is the dual interface of the class; a derived class implements its members and nothing else of COM. An
/// object belongs to one apartment, so its count needs no lock.
template <class Interface>
class AutomationObject : public Interface, public ISupportErrorInfo, public IProvideClassInfo2 {
public:
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (id == IID_IUnknown || id == IID_IDispatch || id == mInfo.interfaceId) {
            *object = static_cast<Interface*>(this);
        } else if (id == IID_ISupportErrorInfo) {
            *object = static_cast<ISupportErrorInfo*>(this);
        } else if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2) {
            *object = static_cast<IProvideClassInfo2*>(this);
        } else {
            *object = MoreInterface(id);
        }
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++mReferences; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --mReferences;
        if (left == 0) {
            // A release at the end may call back; that must not end the object again.
            mReferences = kEnding;
            delete this;
        }
        return left;
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info == nullptr) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        *info = mTable.TypeInfo();
        (*info)->AddRef();
        return S_OK;
    }
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return id == IID_NULL ? mTable.IdsOfNames(names, count, ids) : DISP_E_UNKNOWNINTERFACE;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        if (arguments == nullptr || arguments->cArgs == 0) {
            return InvokeMember(mTable, static_cast<Interface*>(this), member, locale, flags, arguments, result,
                                exception, badArgument);
        }
        // Converting arguments may call objects of the host, which may run any code.
        const SelfReference hold(*this);
        return InvokeMember(mTable, static_cast<Interface*>(this), member, locale, flags, arguments, result, exception,
                            badArgument);
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override { return id == mInfo.interfaceId ? S_OK : S_FALSE; }

    STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return info == nullptr ? E_POINTER : mInfo.CoClass(info); }
    STDMETHODIMP GetGUID(DWORD kind, GUID* id) override {
        if (id == nullptr) return E_POINTER;
        *id = GUID_NULL;
        if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
        if (mInfo.sourceId == nullptr) return E_NOINTERFACE;
        *id = *mInfo.sourceId;
        return S_OK;
    }

protected:
    explicit AutomationObject(ClassInfo& info) : mInfo(info), mTable(info.Table()) {}
    virtual ~AutomationObject() = default;

    TextView ClassName() const { return mInfo.name; }

    /// Runs the body of a member and turns what it raises into an HRESULT. Keeps the object alive until the member
    /// returns.
    template <class Body>
    HRESULT Run(TextView member, Body&& body) noexcept {
        const SelfReference hold(*this);
        return Guarded([&] { return MemberName{mInfo.name, member, &mInfo.interfaceId}; }, std::forward<Body>(body));
    }

private:
    class SelfReference {
    public:
        explicit SelfReference(AutomationObject& object) : mObject(object) { ++mObject.mReferences; }
        ~SelfReference() { mObject.AutomationObject::Release(); }
        SelfReference(const SelfReference&) = delete;
        SelfReference& operator=(const SelfReference&) = delete;

    private:
        AutomationObject& mObject;
    };

    /// Another interface of the derived class, without adding a reference; null if there is none.
    virtual void* MoreInterface(REFIID) { return nullptr; }

    static constexpr ULONG kEnding = 0x40000000;

    ModuleLock mModuleLock;
    ClassInfo& mInfo;
    const DispatchTable& mTable;
    ULONG mReferences = 1;
};

}  // namespace kwo::com
