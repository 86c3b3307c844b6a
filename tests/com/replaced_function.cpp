#include "replaced_function.h"

#include <gtest/gtest.h>

#include <map>

#include "windows_calls/import_table.h"

namespace kwo::com_test {
namespace {

/// What is answered instead when the DLL looks these functions up.
std::map<std::string, void*>& LookedUp() {
    static std::map<std::string, void*> functions;
    return functions;
}

FARPROC WINAPI Find(HMODULE module, const char* name) {
    if (reinterpret_cast<ULONG_PTR>(name) > 0xFFFF) {  // else it is a number
        const auto found = LookedUp().find(name);
        if (found != LookedUp().end()) return reinterpret_cast<FARPROC>(found->second);
    }
    return GetProcAddress(module, name);
}

}  // namespace

ReplacedFunction::ReplacedFunction(const char* name, void* replacement) : mName(name) {
    if (!GetModuleHandleExW(0, L"KWOUtil.dll", &mDll)) {
        ADD_FAILURE() << "KWOUtil.dll is not loaded";
        return;
    }
    mImport = windows_calls::PlaceOf(mDll, name);
    if (mImport != nullptr) {
        mBefore = windows_calls::Exchange(mImport, replacement);
        return;
    }
    void** const lookUp = windows_calls::PlaceOf(mDll, "GetProcAddress");
    if (lookUp == nullptr) {
        ADD_FAILURE() << "KWOUtil.dll neither imports " << name << " nor looks functions up";
        return;
    }
    LookedUp()[mName] = replacement;
    windows_calls::Exchange(lookUp, reinterpret_cast<void*>(&Find));
}

ReplacedFunction::~ReplacedFunction() {
    if (mImport != nullptr) {
        windows_calls::Exchange(mImport, mBefore);
    } else {
        LookedUp().erase(mName);
    }
    if (mDll != nullptr) FreeLibrary(mDll);
}

}  // namespace kwo::com_test
