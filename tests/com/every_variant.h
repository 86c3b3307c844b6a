#pragma once

#include <memory>
#include <string>
#include <vector>

#include "com_test.h"

namespace kwo::com_test {

/// What one hostile argument points into; lives as long as the call.
struct ArgumentStorage {
    ArgumentStorage() = default;
    ArgumentStorage(const ArgumentStorage&) = delete;
    ArgumentStorage& operator=(const ArgumentStorage&) = delete;
    ~ArgumentStorage() { Clean(); }

    /// Frees what the argument and its variables own. Nothing may hold the probe afterwards.
    void Clean();

    Probe probe;
    bool ownsObject = false;  ///< `dispatch` holds a counted reference
    union {
        SHORT i2;
        LONG i4;
        LONGLONG i8;
        float r4;
        double r8;
        VARIANT_BOOL flag;
        CY currency;
        BYTE byte;
        IDispatch* dispatch;
        IUnknown* unknown;
        void* pointer;
        LONGLONG scalar = 0;
    };
    DECIMAL decimal = {};
    BSTR text = nullptr;
    SAFEARRAY* array = nullptr;
    VARIANT inner = {};
    VARIANT outer = {};
};

/// One shape of argument: a name for the failure message and a function that builds it.
struct ArgumentCase {
    std::string name;
    void (*build)(ArgumentStorage& storage, VARIANT& argument, VARTYPE type);
    VARTYPE type;
};

/// Every VARIANT type that automation allows, by value, by reference, as arrays, inside variables, with null
/// pointers, and types that are none.
const std::vector<ArgumentCase>& AllArgumentCases();

}  // namespace kwo::com_test
