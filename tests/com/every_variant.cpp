#include "every_variant.h"

#include <cstdio>
#include <utility>

namespace kwo::com_test {
namespace {

/// Small numbers only: a probe must not be a handle, a long wait or a root key by accident.
void ByValue(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    argument.vt = type;
    if (type == VT_DISPATCH || type == VT_UNKNOWN) {
        argument.pdispVal = &storage.probe;
    } else if (type == VT_BSTR) {
        storage.text = SysAllocString(L"0");
        argument.bstrVal = storage.text;
    } else if (type == VT_ERROR) {
        argument.scode = DISP_E_PARAMNOTFOUND;
    } else if (type == VT_DECIMAL) {
        argument.decVal.Lo64 = 0;
    }
}

/// The value of a type that holds a pointer, with nothing in it.
void Null(ArgumentStorage&, VARIANT& argument, VARTYPE type) {
    argument.vt = type;
}

void Nonsense(ArgumentStorage& storage, VARIANT& argument, VARTYPE) {
    storage.text = SysAllocString(L"nonsense \x20AC\xD800");
    argument.vt = VT_BSTR;
    argument.bstrVal = storage.text;
}

void LongText(ArgumentStorage& storage, VARIANT& argument, VARTYPE) {
    storage.text = SysAllocStringLen(nullptr, 70000);
    for (UINT i = 0; i < 70000; ++i)
        storage.text[i] = L'x';
    argument.vt = VT_BSTR;
    argument.bstrVal = storage.text;
}

void EmbeddedZero(ArgumentStorage& storage, VARIANT& argument, VARTYPE) {
    storage.text = SysAllocStringLen(L"a\0b", 3);
    argument.vt = VT_BSTR;
    argument.bstrVal = storage.text;
}

void Huge(ArgumentStorage&, VARIANT& argument, VARTYPE) {
    argument.vt = VT_R8;
    argument.dblVal = 1e300;
}

void NotANumber(ArgumentStorage&, VARIANT& argument, VARTYPE) {
    argument.vt = VT_R8;
    argument.ullVal = 0x7FF8000000000000ULL;
}

void OtherError(ArgumentStorage&, VARIANT& argument, VARTYPE) {
    argument.vt = VT_ERROR;
    argument.scode = E_FAIL;
}

/// `VT_BYREF` with good storage behind it.
void ByReference(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    switch (type) {
        case VT_BSTR:
            storage.text = SysAllocString(L"0");
            argument.byref = &storage.text;
            break;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            storage.dispatch = &storage.probe;
            storage.probe.AddRef();
            storage.ownsObject = true;
            argument.byref = &storage.dispatch;
            break;
        case VT_VARIANT:
            argument.byref = &storage.inner;
            break;
        case VT_DECIMAL:
            argument.byref = &storage.decimal;
            break;
        case VT_ERROR:
            storage.i4 = DISP_E_PARAMNOTFOUND;
            argument.byref = &storage.i4;
            break;
        default:
            argument.byref = &storage.scalar;
            break;
    }
}

void ByReferenceToNull(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    storage.pointer = nullptr;
    argument.byref = type == VT_BSTR ? static_cast<void*>(&storage.text) : &storage.pointer;
}

void NullReference(ArgumentStorage&, VARIANT& argument, VARTYPE type) {
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = nullptr;
}

/// A variable that holds the type, as scripts pass it.
void InVariable(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    ByValue(storage, storage.inner, type);
    // The variable owns what it holds, so that a write-back may replace it.
    storage.text = nullptr;
    if (type == VT_DISPATCH || type == VT_UNKNOWN) storage.probe.AddRef();
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &storage.inner;
}

void ReferenceInVariable(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    ByReference(storage, storage.outer, type);
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &storage.outer;
}

void NullReferenceInVariable(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    NullReference(storage, storage.outer, type);
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &storage.outer;
}

void Circle(ArgumentStorage& storage, VARIANT& argument, VARTYPE) {
    storage.outer.vt = VT_BYREF | VT_VARIANT;
    storage.outer.pvarVal = &storage.outer;
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &storage.outer;
}

void Array(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    storage.array = SafeArrayCreateVector(type, 0, 3);
    argument.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    argument.parray = storage.array;
}

void NullArray(ArgumentStorage&, VARIANT& argument, VARTYPE type) {
    argument.vt = static_cast<VARTYPE>(VT_ARRAY | type);
}

void ArrayByReference(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    storage.array = SafeArrayCreateVector(type, 0, 3);
    argument.vt = static_cast<VARTYPE>(VT_BYREF | VT_ARRAY | type);
    argument.pparray = &storage.array;
}

void NullArrayByReference(ArgumentStorage& storage, VARIANT& argument, VARTYPE type) {
    argument.vt = static_cast<VARTYPE>(VT_BYREF | VT_ARRAY | type);
    argument.pparray = &storage.array;
}

std::vector<ArgumentCase> BuildCases() {
    std::vector<ArgumentCase> cases;
    const auto add = [&cases](const char* what, auto* build, int number) {
        const auto type = static_cast<VARTYPE>(number);
        char name[80];
        std::snprintf(name, sizeof name, "%s 0x%04X", what, type);
        cases.push_back({name, build, type});
    };
    // Every number up to VT_UINT_PTR, the structured types above, and numbers that mean nothing.
    std::vector<VARTYPE> types;
    for (VARTYPE type = 0; type <= VT_UINT_PTR; ++type)
        types.push_back(type);
    for (VARTYPE type = VT_FILETIME; type <= VT_CLSID; ++type)
        types.push_back(type);
    for (const int type : {0x0FFF, 0x0777, 0x1003, 0x1777, 0x8003, 0x9FFF}) {
        types.push_back(static_cast<VARTYPE>(type));
    }
    for (const VARTYPE type : types) {
        add("by value", ByValue, type);
        add("by reference", ByReference, type);
        add("by null reference", NullReference, type);
        add("in a variable", InVariable, type);
        add("by reference in a variable", ReferenceInVariable, type);
        add("by null reference in a variable", NullReferenceInVariable, type);
    }
    for (const int type : {VT_BSTR, VT_DISPATCH, VT_UNKNOWN}) {
        add("null", Null, type);
        add("by reference to null", ByReferenceToNull, type);
    }
    for (const int type : {VT_I4, VT_UI1, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_R8}) {
        add("array", Array, type);
        add("null array", NullArray, type);
        add("array by reference", ArrayByReference, type);
        add("null array by reference", NullArrayByReference, type);
        add("array by null reference", NullReference, VT_ARRAY | type);
    }
    add("nonsense text", Nonsense, VT_BSTR);
    add("long text", LongText, VT_BSTR);
    add("text with a zero in it", EmbeddedZero, VT_BSTR);
    add("huge number", Huge, VT_R8);
    add("not a number", NotANumber, VT_R8);
    add("another error", OtherError, VT_ERROR);
    add("circle of variables", Circle, VT_VARIANT);
    // Null arrays and null references whose element type or flags are nonsense.
    add("nonsense", Null, 0x7777);
    add("nonsense", Null, 0xFFFF);
    return cases;
}

/// True for types whose content may be freed the usual way.
bool IsOwnable(VARTYPE type) {
    return type == VT_BSTR || (type & ~VT_TYPEMASK) == VT_ARRAY || type == VT_DISPATCH || type == VT_UNKNOWN;
}

}  // namespace

void ArgumentStorage::Clean() {
    SysFreeString(std::exchange(text, nullptr));
    if (array != nullptr) SafeArrayDestroy(std::exchange(array, nullptr));
    if (std::exchange(ownsObject, false) && dispatch != nullptr) dispatch->Release();
    // What a variable received belongs to the test; nonsense types own nothing.
    if (IsOwnable(inner.vt)) VariantClear(&inner);
    if (IsOwnable(outer.vt)) VariantClear(&outer);
}

const std::vector<ArgumentCase>& AllArgumentCases() {
    static const std::vector<ArgumentCase> cases = BuildCases();
    return cases;
}

}  // namespace kwo::com_test
