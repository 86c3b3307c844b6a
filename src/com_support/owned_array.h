#pragma once

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <utility>

namespace kwo::com_support {

/// Owns an automation array, or none: null.
class OwnedArray {
public:
    OwnedArray() = default;
    /// A new array of one dimension whose first element has the index `lowest`. Raises std::bad_alloc.
    OwnedArray(VARTYPE element, LONG lowest, ULONG count) {
        SAFEARRAYBOUND bound = {count, lowest};
        mArray = ::SafeArrayCreate(element, 1, &bound);
        if (mArray == nullptr) throw std::bad_alloc();
    }
    /// Leaves `other` null.
    OwnedArray(OwnedArray&& other) noexcept : mArray(other.Detach()) {}
    OwnedArray& operator=(OwnedArray other) noexcept {
        std::swap(mArray, other.mArray);
        return *this;
    }
    ~OwnedArray() {
        if (mArray != nullptr) ::SafeArrayDestroy(mArray);
    }

    /// Takes over an array that the caller owns.
    static OwnedArray Adopt(SAFEARRAY* array) {
        OwnedArray owner;
        owner.mArray = array;
        return owner;
    }

    /// The array, which stays this owner's; null if it owns none.
    SAFEARRAY* Get() const { return mArray; }
    /// Where a call finds an array and may replace it.
    SAFEARRAY** InOut() { return &mArray; }
    /// Hands the array over to the caller and is null from then on.
    [[nodiscard]] SAFEARRAY* Detach() { return std::exchange(mArray, nullptr); }

private:
    SAFEARRAY* mArray = nullptr;
};

/// The elements of an array of one dimension, counted from 0. While this lives, the array cannot be resized or freed.
/// Whether `Element` is the type of the elements is the caller's to know.
template <class Element>
class ArrayElements {
public:
    /// Locks `array`, which must outlive it. A null array is a failure.
    explicit ArrayElements(SAFEARRAY* array)
        : mArray(array), mStatus(::SafeArrayAccessData(array, reinterpret_cast<void**>(&mFirst))) {}
    ArrayElements(const ArrayElements&) = delete;
    ArrayElements& operator=(const ArrayElements&) = delete;
    ~ArrayElements() {
        if (SUCCEEDED(mStatus)) ::SafeArrayUnaccessData(mArray);
    }

    /// A failure when the system does not give access; there are no elements then.
    HRESULT Status() const { return mStatus; }
    /// The first element; null after a failure.
    Element* First() const { return mFirst; }
    /// The element at a place from 0. There is no check of the place.
    Element& operator[](std::size_t at) const { return mFirst[at]; }

private:
    SAFEARRAY* mArray;
    Element* mFirst = nullptr;
    HRESULT mStatus;
};

}  // namespace kwo::com_support
