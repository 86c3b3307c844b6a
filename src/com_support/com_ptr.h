#pragma once

#include <windows.h>
#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace kwo::com_support {

/// Owns one reference to a COM object, or none: null.
/// A copy owns a reference of its own.
///
///     ComPtr<IDispatch> object;
///     if (SUCCEEDED(::CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, object.OutVoid()))) use(*object);
///
/// Releasing a reference may run any code of the object. So each member lets go of its reference before it releases
/// it: code that looks at the pointer meanwhile finds the new value.
/// One thread uses a pointer. Whether another thread may use the object is a matter of its apartment.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    /// Null, for functions that return "none".
    ComPtr(std::nullptr_t) {}
    /// Adds a reference. The caller keeps the one it has. Null is allowed.
    explicit ComPtr(Interface* object) : mObject(object) {
        if (mObject != nullptr) mObject->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.mObject) {}
    /// Takes the reference of `other`, which is null then.
    ComPtr(ComPtr&& other) noexcept : mObject(other.Detach()) {}
    /// Adds a reference to the object by one of its base interfaces.
    template <class Derived>
    ComPtr(const ComPtr<Derived>& other) : ComPtr(static_cast<Interface*>(other.Get())) {}
    /// Releases the reference that was held, when this already holds the new one.
    /// Assigning a pointer to itself changes nothing.
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~ComPtr() { Reset(); }

    /// Takes over a reference that the caller owns; the caller must not release it any more.
    static ComPtr Adopt(Interface* object) {
        ComPtr pointer;
        pointer.mObject = object;
        return pointer;
    }

    /// The object, without a reference for the caller; null if there is none. Valid as long as this pointer holds it.
    Interface* Get() const { return mObject; }
    /// These two need an object: there is no check for null.
    Interface* operator->() const { return mObject; }
    Interface& operator*() const { return *mObject; }
    explicit operator bool() const { return mObject != nullptr; }

    /// Where a call puts a reference that it hands over.
    /// Releases what was held. Use the pointer at once: it points into this object.
    Interface** Out() {
        Reset();
        return &mObject;
    }
    /// Where a call finds a reference and may replace it. The call must release what it replaces.
    Interface** InOut() { return &mObject; }
    /// As Out, for calls that take any interface, such as QueryInterface. Ask them for `Interface` and no other.
    void** OutVoid() { return reinterpret_cast<void**>(Out()); }

    /// Releases the reference; this is null before the object learns of it.
    /// Returns what Release answered; 0 for null.
    ULONG Reset() {
        // An object may call back while it is released: this is null by then.
        Interface* const held = Detach();
        return held != nullptr ? held->Release() : 0;
    }
    /// Hands the reference over to the caller, who releases it, and is null from then on.
    [[nodiscard]] Interface* Detach() { return std::exchange(mObject, nullptr); }
    /// Gives the caller of an interface a reference of its own, or null if there is no object.
    /// E_POINTER if `target` is null.
    HRESULT CopyTo(Interface** target) const {
        if (target == nullptr) return E_POINTER;
        *target = ComPtr(*this).Detach();
        return S_OK;
    }

    /// Another interface of the object, with a reference of its own; null if the object does not have it, and for
    /// null.
    template <class Other>
    ComPtr<Other> As(REFIID id = __uuidof(Other)) const;

private:
    Interface* mObject = nullptr;
};

/// An interface of `object`, with a reference of its own; null if the object does not have it, and for null.
/// `object` keeps its references.
template <class Interface>
ComPtr<Interface> As(IUnknown* object, REFIID id = __uuidof(Interface)) {
    void* found = nullptr;
    // After a failure the pointer is not a reference, whatever the call wrote.
    if (object == nullptr || FAILED(object->QueryInterface(id, &found))) return nullptr;
    return ComPtr<Interface>::Adopt(static_cast<Interface*>(found));
}

template <class Interface>
template <class Other>
ComPtr<Other> ComPtr<Interface>::As(REFIID id) const {
    return com_support::As<Other>(mObject, id);
}

}  // namespace kwo::com_support
