#pragma once

#include <windows.h>
#include <unknwn.h>

#include <utility>

#include "com_support/com_ptr.h"

namespace kwo::com_support {

/// Identity and lifetime of an object with one interface. It starts with one reference and lives on the heap: see
/// MakeObject. `Counter` is an atomic type if several threads use the object.
template <class Interface, class Counter = ULONG>
class ComObject : public Interface {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    /// Answers IUnknown, the interface, and what AlsoAnswers adds.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool isKnown = id == IID_IUnknown || id == __uuidof(Interface) || AlsoAnswers(id);
        *object = isKnown ? static_cast<Interface*>(this) : nullptr;
        if (!isKnown) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++mReferences; }
    /// Destroys the object with its last reference.
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
    Counter mReferences = 1;
};

/// Makes an object and returns its first reference. Raises std::bad_alloc.
template <class Object, class... Args>
ComPtr<Object> MakeObject(Args&&... args) {
    return ComPtr<Object>::Adopt(new Object(std::forward<Args>(args)...));
}

}  // namespace kwo::com_support
