#include "platform/windows/array_bridge.h"

#include <algorithm>
#include <new>
#include <utility>

#include "com_support/bstr.h"
#include "com_support/owned_array.h"

namespace kwo::platform::windows {

namespace {

using com_support::OwnedArray;

/// Access to the elements. It fails only without memory.
template <class Element>
class AccessedArray : public com_support::ArrayElements<Element> {
public:
    explicit AccessedArray(SAFEARRAY* array) : com_support::ArrayElements<Element>(array) {
        if (FAILED(this->Status())) throw std::bad_alloc();
    }
};

/// The array as a value that the caller owns.
VARIANT Value(OwnedArray array, VARTYPE element) {
    VARIANT value;
    ::VariantInit(&value);
    value.vt = static_cast<VARTYPE>(VT_ARRAY | element);
    value.parray = array.Detach();
    return value;
}

/// True if the array can be read as one of this type. The caller states the type twice, in the VARIANT and in the
/// array, and only this check keeps numbers from being read as pointers.
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
    OwnedArray made(VT_I2, array.lowerBound, static_cast<ULONG>(array.items.size()));
    std::ranges::copy(array.items, AccessedArray<std::int16_t>(made.Get()).First());
    return Value(std::move(made), VT_I2);
}

VARIANT ToArray(const TextArray& array) {
    OwnedArray made(VT_BSTR, array.lowerBound, static_cast<ULONG>(array.items.size()));
    {
        const AccessedArray<BSTR> accessed(made.Get());
        for (std::size_t i = 0; i < array.items.size(); ++i) {
            const Text& text = array.items[i];
            if (!text.empty()) accessed[i] = com_support::NewString(text);
        }
    }
    return Value(std::move(made), VT_BSTR);
}

ForeignRef FromArray(const VARIANT& value) {
    if ((value.vt & VT_ARRAY) == 0 || value.parray == nullptr) return nullptr;
    const VARTYPE element = value.vt & VT_TYPEMASK;
    if (element != VT_I2 && element != VT_BSTR) return nullptr;
    if (!Holds(*value.parray, element)) return nullptr;
    if (element == VT_I2) {
        auto array = WithBoundsOf<Int16Array>(*value.parray);
        std::copy_n(AccessedArray<std::int16_t>(value.parray).First(), array->items.size(), array->items.begin());
        return array;
    }
    auto array = WithBoundsOf<TextArray>(*value.parray);
    const AccessedArray<BSTR> accessed(value.parray);
    for (std::size_t i = 0; i < array->items.size(); ++i)
        array->items[i] = com_support::ToText(accessed[i]);
    return array;
}

}  // namespace kwo::platform::windows
