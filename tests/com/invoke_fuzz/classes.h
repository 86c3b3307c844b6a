#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <vector>

namespace kwo::invoke_fuzz {

struct Member {
    std::wstring name;
    std::vector<std::wstring> parameters;  ///< names
    DISPID id = DISPID_UNKNOWN;
    WORD kind = 0;
    UINT arguments = 0;  ///< that a caller passes, with the new value of an assignment

    /// For early-bound calls: the place in the virtual table in bytes, and the types on the stack: VT_BYREF for
    /// pointers, VT_UNKNOWN for any interface but IDispatch.
    short offset = 0;
    std::vector<VARTYPE> stack;
    std::vector<bool> mayBeLeftOut;  ///< for each of them
    bool hasResult = false;          ///< behind the last pointer
};

/// A class of the DLL as its type library describes it.
struct ClassDescription {
    std::wstring name;
    CLSID id = {};
    IID interfaceId = {};
    IID sourceId = {};  ///< null if the class raises no events
    std::vector<Member> members;
};

/// The classes that can be created, from the type library in the file; empty if it cannot be read.
std::vector<ClassDescription> ReadClasses(const std::wstring& dllPath);

}  // namespace kwo::invoke_fuzz
