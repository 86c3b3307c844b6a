#pragma once

#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include "com/server/class_info.h"

namespace kwo::com {

/// The part of an automation object that does not depend on its interface: what IDispatch answers, and the two
/// interfaces that tell about the class. So the DLL has this code once, and not once for each class.
/// It is a member of the object, and counts references on it.
class ObjectCore final : public ISupportErrorInfo, public IProvideClassInfo2 {
public:
    /// `object` contains this, and is the class's own interface. `info` must live as long as the program.
    /// Reads the class's table of members at the first object; raises what ClassInfo::Table raises.
    ObjectCore(IDispatch& object, ClassInfo& info) : mObject(object), mInfo(info), mTable(info.Table()) {}
    ObjectCore(const ObjectCore&) = delete;
    ObjectCore& operator=(const ObjectCore&) = delete;

    const ClassInfo& Class() const { return mInfo; }

    // What AutomationObject answers to the calls of IUnknown and IDispatch. The calling convention is theirs, so that a
    // call is passed on by a jump.

    /// `more` is the interface `id` of the object if only the object knows that one, else null.
    HRESULT STDMETHODCALLTYPE Answer(REFIID id, void** found, void* more) noexcept;
    HRESULT STDMETHODCALLTYPE TypeInfo(UINT index, LCID, ITypeInfo** info) noexcept;
    HRESULT STDMETHODCALLTYPE IdsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) noexcept;
    HRESULT STDMETHODCALLTYPE Call(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* arguments,
                                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override { return mObject.QueryInterface(id, found); }
    STDMETHODIMP_(ULONG) AddRef() override { return mObject.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return mObject.Release(); }
    /// S_OK for the class's own interface: its members leave an error object.
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override { return id == mInfo.interfaceId ? S_OK : S_FALSE; }
    /// The type information of the class, read from the DLL at each call.
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return info == nullptr ? E_POINTER : mInfo.CoClass(info); }
    /// The event interface; E_NOINTERFACE if the class has no events.
    STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;

private:
    IDispatch& mObject;
    /// The class, and its table, which lives longer than the object.
    ClassInfo& mInfo;
    const DispatchTable& mTable;
};

}  // namespace kwo::com
