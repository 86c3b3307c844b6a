#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>

namespace kwo::invoke_fuzz {

class World;

/// An object of the host: form, picture box, font, picture or sink, all in one. Before each answer the world decides
/// whether it answers well, answers something else, fails, or first does something else with the component.
class HostObject final : public IDispatch {
public:
    explicit HostObject(World& world) : mWorld(world) {}
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;
    virtual ~HostObject() = default;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;

    /// How many others hold it; the world itself holds none.
    ULONG references = 0;

private:
    World& mWorld;
};

}  // namespace kwo::invoke_fuzz
