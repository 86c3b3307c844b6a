#pragma once

#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include <utility>

#include "com/server/error_report.h"
#include "com/server/module.h"
#include "com/server/object_core.h"

namespace kwo::com {

/// What every object of an automation DLL provides: a dual interface, error information and class information.
///
/// `Interface` is the dual interface of the class; a derived class implements its members and nothing else of COM. An
/// object belongs to one apartment, so its count needs no lock. It keeps the DLL loaded.
/// It begins with one reference: make it with com_support::MakeObject.
template <class Interface>
class AutomationObject : public Interface {
public:
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;

    /// Answers IUnknown, IDispatch, the class's own interface, ISupportErrorInfo, IProvideClassInfo and
    /// IProvideClassInfo2, and what MoreInterface adds.
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        return mCore.Answer(id, object, MoreInterface(id));
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
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return mCore.TypeInfo(index, locale, info);
    }
    /// DISP_E_UNKNOWNNAME for a name that the class lacks. Upper and lower case are the same, in the letters A to Z.
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return mCore.IdsOfNames(id, names, count, locale, ids);
    }
    /// See InvokeMember. The object lives until the call returns, even if the caller releases it meanwhile.
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        return mCore.Call(member, id, locale, flags, arguments, result, exception, badArgument);
    }

protected:
    /// `info` must live as long as the program.
    /// Reads the class's table of members at the first object; raises what ClassInfo::Table raises.
    explicit AutomationObject(ClassInfo& info) : mCore(*this, info) {}
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

    const ClassInfo& Class() const { return mCore.Class(); }

    /// Runs the body of a member and turns what it raises into an HRESULT and an error object.
    /// Keeps the object alive until the member returns.
    /// `member` begins with a dot and names the member in the error's source.
    template <class Body>
    HRESULT Run(const char16_t* member, Body&& body) noexcept {
        const SelfReference hold(*this);
        return Guarded(
            [&] {
                return MemberName{Class().name, member, &Class().interfaceId};
            },
            std::forward<Body>(body));
    }

private:
    /// Another interface of the derived class, without adding a reference; null if there is none.
    virtual void* MoreInterface(REFIID) { return nullptr; }

    /// The count of an object that ends: far from 0, so that a release meanwhile does not reach it.
    static constexpr ULONG kEnding = 0x40000000;

    /// Keeps the DLL loaded as long as the object.
    ModuleLock mModuleLock;
    ObjectCore mCore;
    ULONG mReferences = 1;
};

}  // namespace kwo::com
