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
/// object belongs to one apartment, so its count needs no lock. It keeps the DLL loaded.
/// It begins with one reference: make it with com_support::MakeObject.
template <class Interface>
class AutomationObject : public Interface, public ISupportErrorInfo, public IProvideClassInfo2 {
public:
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;

    /// Answers IUnknown, IDispatch, the class's own interface, ISupportErrorInfo, IProvideClassInfo and
    /// IProvideClassInfo2, and what MoreInterface adds.
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
    /// Counts on the apartment's thread only. The result tells nothing that a program may rely on.
    STDMETHODIMP_(ULONG) AddRef() override { return ++mReferences; }
    /// Destroys the object with its last reference.
    /// What the destructor releases may call back; that does not end the object again.
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
    /// The type information of the interface, the same in every language.
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info == nullptr) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        *info = mTable.TypeInfo();
        (*info)->AddRef();
        return S_OK;
    }
    /// DISP_E_UNKNOWNNAME for a name that the class lacks. Upper and lower case are the same, in the letters A to Z.
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return id == IID_NULL ? mTable.IdsOfNames(names, count, ids) : DISP_E_UNKNOWNINTERFACE;
    }
    /// See InvokeMember. The object lives until the call returns, even if the caller releases it meanwhile.
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        // Converting arguments may call objects of the host, which may run any code.
        const SelfReference hold(*this);
        return InvokeMember(mTable, static_cast<Interface*>(this), member, locale, flags, arguments, result, exception,
                            badArgument);
    }

    /// S_OK for the class's own interface: its members leave an error object.
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override { return id == mInfo.interfaceId ? S_OK : S_FALSE; }

    /// The type information of the class, read from the DLL at each call.
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return info == nullptr ? E_POINTER : mInfo.CoClass(info); }
    /// The event interface; E_NOINTERFACE if the class has no events.
    STDMETHODIMP GetGUID(DWORD kind, GUID* id) override {
        if (id == nullptr) return E_POINTER;
        *id = GUID_NULL;
        if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
        if (mInfo.sourceId == nullptr) return E_NOINTERFACE;
        *id = *mInfo.sourceId;
        return S_OK;
    }

protected:
    /// `info` must live as long as the program.
    /// Reads the class's table of members at the first object; raises what ClassInfo::Table raises.
    explicit AutomationObject(ClassInfo& info) : mInfo(info), mTable(info.Table()) {}
    virtual ~AutomationObject() = default;

    /// A reference for the length of a call.
    class SelfReference {
    public:
        explicit SelfReference(AutomationObject& object) : mObject(object) { ++mObject.mReferences; }
        ~SelfReference() { mObject.AutomationObject::Release(); }
        SelfReference(const SelfReference&) = delete;
        SelfReference& operator=(const SelfReference&) = delete;

    private:
        AutomationObject& mObject;
    };

    const ClassInfo& Class() const { return mInfo; }

    /// Runs the body of a member and turns what it raises into an HRESULT and an error object.
    /// Keeps the object alive until the member returns.
    /// `member` begins with a dot and names the member in the error's source.
    template <class Body>
    HRESULT Run(const char16_t* member, Body&& body) noexcept {
        const SelfReference hold(*this);
        return Guarded([&] { return MemberName{mInfo.name, member, &mInfo.interfaceId}; }, std::forward<Body>(body));
    }

private:
    /// Another interface of the derived class, without adding a reference; null if there is none.
    virtual void* MoreInterface(REFIID) { return nullptr; }

    /// The count of an object that ends: far from 0, so that a release meanwhile does not reach it.
    static constexpr ULONG kEnding = 0x40000000;

    /// Keeps the DLL loaded as long as the object.
    ModuleLock mModuleLock;
    /// The class, and its table, which lives longer than the object.
    ClassInfo& mInfo;
    const DispatchTable& mTable;
    ULONG mReferences = 1;
};

}  // namespace kwo::com
