#pragma once

#include <windows.h>
#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace kwo::com_support {

/// Owns one reference to a COM object, or none: null. A copy owns a reference of its own.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    /// Adds a reference. The caller keeps the one it has.
    explicit ComPtr(Interface* object) : mObject(object) {
        if (mObject != nullptr) mObject->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.mObject) {}
    /// Takes the reference of `other`, which is null then.
    ComPtr(ComPtr&& other) noexcept : mObject(other.Detach()) {}
    /// Adds a reference to the object by one of its base interfaces.
    template <class Derived>
    ComPtr(const ComPtr<Derived>& other) : ComPtr(static_cast<Interface*>(other.Get())) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~ComPtr() { Reset(); }

    /// Takes over a reference that the caller owns.
    static ComPtr Adopt(Interface* object) {
        ComPtr pointer;
        pointer.mObject = object;
        return pointer;
    }

    /// The object, without a reference for the caller; null if there is none.
    Interface* Get() const { return mObject; }
    Interface* operator->() const { return mObject; }
    Interface& operator*() const { return *mObject; }
    explicit operator bool() const { return mObject != nullptr; }

    /// Where a call puts a reference that it hands over. Releases what was held.
    Interface** Out() {
        Reset();
        return &mObject;
    }
    /// Where a call finds a reference and may replace it.
    Interface** InOut() { return &mObject; }
    /// The same for calls that take any interface, such as QueryInterface.
    void** OutVoid() { return reinterpret_cast<void**>(Out()); }

    /// Releases the reference. Returns what Release answered; 0 for null.
    ULONG Reset() {
        // An object may call back while it is released: this is null by then.
        Interface* const held = Detach();
        return held != nullptr ? held->Release() : 0;
    }
    /// Hands the reference over to the caller and is null from then on.
    [[nodiscard]] Interface* Detach() { return std::exchange(mObject, nullptr); }
    /// Gives the caller of an interface a reference of its own. E_POINTER when `target` is null.
    HRESULT CopyTo(Interface** target) const {
        if (target == nullptr) return E_POINTER;
        *target = ComPtr(*this).Detach();
        return S_OK;
    }

    /// Another interface of the object; null when the object does not have it, and for null.
    template <class Other>
    ComPtr<Other> As(REFIID id = __uuidof(Other)) const;

private:
    Interface* mObject = nullptr;
};

/// An interface of `object`; null when the object does not have it, and for null.
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
