#pragma once

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <utility>

namespace kwo::com_support {

/// Owns an automation array, or none: null. Destroying it frees the elements too: strings, objects and variants.
class OwnedArray {
public:
    OwnedArray() = default;
    /// A new array of one dimension whose first element has the index `lowest`.
    /// Its elements are 0, null or empty.
    /// Raises std::bad_alloc if the system makes none, also for a type that has no arrays.
    OwnedArray(VARTYPE element, LONG lowest, ULONG count) {
        SAFEARRAYBOUND bound = {count, lowest};
        mArray = ::SafeArrayCreate(element, 1, &bound);
        if (mArray == nullptr) throw std::bad_alloc();
    }
    /// Leaves `other` null.
    OwnedArray(OwnedArray&& other) noexcept : mArray(other.Detach()) {}
    /// Frees the array that was held, with its elements.
    OwnedArray& operator=(OwnedArray other) noexcept {
        std::swap(mArray, other.mArray);
        return *this;
    }
    /// Frees the array. Nobody may have locked it, or it stays for ever.
    ~OwnedArray() {
        if (mArray != nullptr) ::SafeArrayDestroy(mArray);
    }

    /// Takes over an array that the caller owns; the caller must not free it any more.
    static OwnedArray Adopt(SAFEARRAY* array) {
        OwnedArray owner;
        owner.mArray = array;
        return owner;
    }

    /// The array, which stays this owner's; null if it owns none.
    /// Valid until the array is replaced or freed.
    SAFEARRAY* Get() const { return mArray; }
    /// Where a call finds an array and may replace it. The call must free what it replaces.
    SAFEARRAY** InOut() { return &mArray; }
    /// Hands the array over to the caller, who frees it, and is null from then on.
    [[nodiscard]] SAFEARRAY* Detach() { return std::exchange(mArray, nullptr); }

private:
    SAFEARRAY* mArray = nullptr;
};

/// True if the array was made with bounds that nobody may change. An array that is in use keeps its own as well: see
/// its `cLocks`.
inline bool HasFixedBounds(const SAFEARRAY& array) {
    return (array.fFeatures & (FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE)) != 0;
}

/// The elements of an array of one dimension, counted from 0.
/// While this lives, the array cannot be resized or freed. Whether `Element` is the type of the elements is the
/// caller's to know: nothing is checked here.
///
///     const ArrayElements<BSTR> texts(array.Get());
///     if (SUCCEEDED(texts.Status())) use(texts[0]);
template <class Element>
class ArrayElements {
public:
    /// Locks `array`, which must outlive it. A null array is a failure, and so is one that is locked too often.
    explicit ArrayElements(SAFEARRAY* array)
        : mArray(array), mStatus(::SafeArrayAccessData(array, reinterpret_cast<void**>(&mFirst))) {}
    ArrayElements(const ArrayElements&) = delete;
    ArrayElements& operator=(const ArrayElements&) = delete;
    /// Unlocks the array, if it was locked here.
    ~ArrayElements() {
        if (SUCCEEDED(mStatus)) ::SafeArrayUnaccessData(mArray);
    }

    /// A failure if the system does not give access; there are no elements then. Look at it before the elements.
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
