#pragma once

#include <string>

#include "com_support/owned_array.h"
#include "com_test.h"

namespace kwo::com_test {

/// Null and a failure when "KWOInit.KWOInitialize" cannot be created.
ComPtr<IDispatch> CreateCompanion();

/// A file of the tests' own in the temporary folder, gone at the end.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& bytes);
    ~TemporaryFile() { DeleteFileW(mPath.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    const std::wstring& Path() const { return mPath; }

private:
    std::wstring mPath;
};

/// An array that is freed at the end, whatever it has become.
class Array {
public:
    Array(VARTYPE type, LONG lowest, ULONG count) : Array(SafeArrayCreateVector(type, lowest, count)) {}
    explicit Array(SAFEARRAY* array) : mArray(com_support::OwnedArray::Adopt(array)) {}

    SAFEARRAY* Get() const { return mArray.Get(); }
    SAFEARRAY** InOut() { return mArray.InOut(); }
    Var Reference(VARTYPE type) { return Var::Reference(static_cast<VARTYPE>(VT_ARRAY | type), InOut()); }
    LONG Lowest() const;
    LONG Highest() const;
    std::wstring Text(LONG at) const;
    SHORT Number(LONG at) const;
    void Put(LONG at, const wchar_t* text);

private:
    com_support::OwnedArray mArray;
};

}  // namespace kwo::com_test
