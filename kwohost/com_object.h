#pragma once

#include <utility>

#include "com_values.h"

namespace kwohost {

/// Identity and lifetime of an object with one interface, used on the thread that created it. It starts with one
/// reference and lives on the heap: see MakeObject.
template <class Interface>
class ComObject : public Interface {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        const bool isKnown = iid == IID_IUnknown || iid == __uuidof(Interface) || AlsoAnswers(iid);
        *object = isKnown ? static_cast<Interface*>(this) : nullptr;
        if (!isKnown) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++mReferences; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --mReferences;
        if (left == 0) delete this;
        return left;
    }

protected:
    ComObject() = default;
    virtual ~ComObject() = default;

    /// Whether callers may ask for the same interface by this identifier too.
    virtual bool AlsoAnswers(REFIID) const { return false; }

private:
    ULONG mReferences = 1;
};

template <class Object, class... Args>
ComPtr<Object> MakeObject(Args&&... args) {
    return ComPtr<Object>::Adopt(new Object(std::forward<Args>(args)...));
}

}  // namespace kwohost
