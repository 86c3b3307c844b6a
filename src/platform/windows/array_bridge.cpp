#include "platform/windows/array_bridge.h"

#include <algorithm>
#include <new>
#include <utility>

namespace kwo::platform::windows {

namespace {

/// An array of the system while its elements are read or written.
template <class Element>
class AccessedArray {
public:
    explicit AccessedArray(SAFEARRAY* array) : mArray(array) {
        if (FAILED(::SafeArrayAccessData(array, reinterpret_cast<void**>(&mElements)))) throw std::bad_alloc();
    }
    ~AccessedArray() { ::SafeArrayUnaccessData(mArray); }
    AccessedArray(const AccessedArray&) = delete;
    AccessedArray& operator=(const AccessedArray&) = delete;
    Element* Elements() const { return mElements; }

private:
    SAFEARRAY* mArray;
    Element* mElements = nullptr;
};

/// An array for the caller unless something is raised on the way.
class NewArray {
public:
    NewArray(VARTYPE type, std::int32_t lowerBound, std::size_t size) {
        SAFEARRAYBOUND bound = {static_cast<ULONG>(size), lowerBound};
        mArray = ::SafeArrayCreate(type, 1, &bound);
        if (mArray == nullptr) throw std::bad_alloc();
    }
    ~NewArray() {
        if (mArray != nullptr) ::SafeArrayDestroy(mArray);
    }
    NewArray(const NewArray&) = delete;
    NewArray& operator=(const NewArray&) = delete;
    SAFEARRAY* Get() const { return mArray; }
    VARIANT Detach(VARTYPE type) {
        VARIANT value;
        ::VariantInit(&value);
        value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
        value.parray = std::exchange(mArray, nullptr);
        return value;
    }

private:
    SAFEARRAY* mArray = nullptr;
};

/// True for an array that can be read as one of that kind. What it is passed as and what it is are two statements of
/// whoever made it, and nothing else keeps an array of numbers from being read as one of pointers.
bool Holds(const SAFEARRAY& array, VARTYPE element) {
    constexpr USHORT kOwning = FADF_BSTR | FADF_UNKNOWN | FADF_DISPATCH | FADF_VARIANT | FADF_RECORD;
    const bool isText = element == VT_BSTR;
    return array.cDims == 1 && array.cbElements == (isText ? sizeof(BSTR) : sizeof(std::int16_t)) &&
           (array.fFeatures & kOwning) == (isText ? FADF_BSTR : 0) &&
           (array.pvData != nullptr || array.rgsabound[0].cElements == 0);
}

template <class Array>
std::shared_ptr<Array> WithBoundsOf(const SAFEARRAY& source) {
    auto array = std::make_shared<Array>();
    array->lowerBound = static_cast<std::int32_t>(source.rgsabound[0].lLbound);
    array->items.resize(source.rgsabound[0].cElements);
    return array;
}

}  // namespace

VARIANT ToArray(const Int16Array& array) {
    NewArray made(VT_I2, array.lowerBound, array.items.size());
    std::ranges::copy(array.items, AccessedArray<std::int16_t>(made.Get()).Elements());
    return made.Detach(VT_I2);
}

VARIANT ToArray(const TextArray& array) {
    NewArray made(VT_BSTR, array.lowerBound, array.items.size());
    {
        const AccessedArray<BSTR> accessed(made.Get());
        for (std::size_t i = 0; i < array.items.size(); ++i) {
            const Text& text = array.items[i];
            if (text.empty()) continue;
            BSTR& string = accessed.Elements()[i];
            string = ::SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
            if (string == nullptr) throw std::bad_alloc();
            std::ranges::copy(text, string);
        }
    }
    return made.Detach(VT_BSTR);
}

ForeignRef FromArray(const VARIANT& value) {
    if ((value.vt & VT_ARRAY) == 0 || value.parray == nullptr) return nullptr;
    const VARTYPE element = value.vt & VT_TYPEMASK;
    if (element != VT_I2 && element != VT_BSTR) return nullptr;
    if (!Holds(*value.parray, element)) return nullptr;
    if (element == VT_I2) {
        auto array = WithBoundsOf<Int16Array>(*value.parray);
        std::copy_n(AccessedArray<std::int16_t>(value.parray).Elements(), array->items.size(), array->items.begin());
        return array;
    }
    auto array = WithBoundsOf<TextArray>(*value.parray);
    const AccessedArray<BSTR> accessed(value.parray);
    for (std::size_t i = 0; i < array->items.size(); ++i) {
        const BSTR string = accessed.Elements()[i];
        array->items[i].assign(string, string + ::SysStringLen(string));
    }
    return array;
}

}  // namespace kwo::platform::windows
