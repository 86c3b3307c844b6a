#pragma once

#include <windows.h>
#include <unknwn.h>

#include <utility>

namespace kwo::com {

/// A counted reference.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    /// Takes a reference of its own.
    explicit ComPtr(Interface* pointer) : mPointer(pointer) {
        if (mPointer != nullptr) mPointer->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.mPointer) {}
    ComPtr(ComPtr&& other) noexcept : mPointer(std::exchange(other.mPointer, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(mPointer, other.mPointer);
        return *this;
    }
    ~ComPtr() { Reset(); }

    void Reset() {
        if (Interface* const held = std::exchange(mPointer, nullptr)) held->Release();
    }
    /// Where a call puts a reference that it hands over.
    Interface** Out() {
        Reset();
        return &mPointer;
    }
    Interface* Get() const { return mPointer; }
    /// Hands the reference over to the caller.
    Interface* Detach() { return std::exchange(mPointer, nullptr); }
    Interface* operator->() const { return mPointer; }
    Interface& operator*() const { return *mPointer; }
    explicit operator bool() const { return mPointer != nullptr; }

    /// Null when the object has no such interface.
    template <class Other>
    ComPtr<Other> As(const IID& id) const {
        ComPtr<Other> other;
        if (mPointer != nullptr) mPointer->QueryInterface(id, reinterpret_cast<void**>(other.Out()));
        return other;
    }

private:
    Interface* mPointer = nullptr;
};

}  // namespace kwo::com
