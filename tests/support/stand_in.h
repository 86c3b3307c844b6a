#pragma once

#include <windows.h>
#include <oleauto.h>

#include <algorithm>

namespace kwo::test_support {

/// An automation object of a test's own, on the test's stack: it counts its references and has no members. A test gives
/// it members by deriving from it. `Interface` is IDispatch or one that is derived from it.
template <class Interface = IDispatch>
class StandIn : public Interface {
public:
    StandIn() = default;
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;
    virtual ~StandIn() = default;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool isKnown = id == IID_IUnknown || id == IID_IDispatch || id == interfaceId;
        *object = isKnown ? static_cast<Interface*>(this) : nullptr;
        if (!isKnown) return E_NOINTERFACE;
        this->AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) override {
        std::fill_n(ids, count, DISPID_UNKNOWN);
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }

    /// A further interface that it answers to.
    IID interfaceId = IID_IDispatch;
    /// How many others hold it; the test itself holds none.
    ULONG references = 0;
};

}  // namespace kwo::test_support
