#pragma once

#include <windows.h>
#include <unknwn.h>

#include <utility>

#include "com_support/com_ptr.h"

namespace kwo::com_support {

/// Identity and lifetime of an object with one interface.
/// Derive from it and implement the interface; it starts with one reference and lives on the heap:
///
///     class Spy final : public ComObject<IInitializeSpy> { ... };
///     const auto spy = MakeObject<Spy>(user);
///
/// `Counter` is an atomic type if several threads use the object; the default serves one thread.
template <class Interface, class Counter = ULONG>
class ComObject : public Interface {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    /// Answers IUnknown, the interface, and what AlsoAnswers adds, with a reference for the caller.
    /// E_NOINTERFACE, and null in `object`, for any other; E_POINTER if `object` is null.
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
    /// Returns the number of references left; nothing of the object may be used after 0.
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --mReferences;
        if (left == 0) delete this;
        return left;
    }

protected:
    ComObject() = default;
    /// Runs with the last reference, on the thread that released it. It must not raise.
    virtual ~ComObject() = default;

    /// Whether callers may ask for the same interface by this identifier too.
    /// Use it for a base of `Interface`, such as IDispatch.
    virtual bool AlsoAnswers(REFIID) const { return false; }

private:
    /// The reference of whoever made the object.
    Counter mReferences = 1;
};

/// Makes an object and returns its first reference. Raises std::bad_alloc and what the constructor raises.
template <class Object, class... Args>
ComPtr<Object> MakeObject(Args&&... args) {
    return ComPtr<Object>::Adopt(new Object(std::forward<Args>(args)...));
}

}  // namespace kwo::com_support
