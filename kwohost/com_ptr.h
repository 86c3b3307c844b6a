#pragma once

#include <unknwn.h>

#include <utility>

namespace kwohost {

/// One counted reference to an interface.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    /// Adds a reference of its own.
    explicit ComPtr(Interface* object) : mObject(object) {
        if (mObject) mObject->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.mObject) {}
    ComPtr(ComPtr&& other) noexcept : mObject(other.Detach()) {}
    template <class Derived>
    ComPtr(const ComPtr<Derived>& other) : ComPtr(static_cast<Interface*>(other.Get())) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~ComPtr() {
        if (mObject) mObject->Release();
    }

    /// Takes over a reference that the caller has.
    static ComPtr Adopt(Interface* object) {
        ComPtr pointer;
        pointer.mObject = object;
        return pointer;
    }

    Interface* Get() const { return mObject; }
    Interface* operator->() const { return mObject; }
    explicit operator bool() const { return mObject != nullptr; }

    /// Where a call puts the reference that it hands over; what was held is given up.
    Interface** Receive() {
        Reset();
        return &mObject;
    }
    void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }
    Interface* Detach() { return std::exchange(mObject, nullptr); }
    void Reset() {
        if (Interface* object = Detach()) object->Release();
    }
    HRESULT CopyTo(Interface** target) const {
        if (!target) return E_POINTER;
        *target = ComPtr(*this).Detach();
        return S_OK;
    }
    template <class Other>
    HRESULT As(ComPtr<Other>& other) const {
        return mObject->QueryInterface(__uuidof(Other), other.ReceiveAny());
    }

private:
    Interface* mObject = nullptr;
};

}  // namespace kwohost
