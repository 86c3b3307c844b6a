#include "replaced_function.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>

namespace kwo::com_test {
namespace {

/// What is answered instead when the DLL looks these functions up.
std::map<std::string, void*>& LookedUp() {
    static std::map<std::string, void*> functions;
    return functions;
}

void Put(void** place, void* function) {
    DWORD before = 0;
    ASSERT_TRUE(VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before));
    *place = function;
    VirtualProtect(place, sizeof *place, before, &before);
}

/// Where the DLL keeps the address of a function that it imports; null when it imports none of that name.
void** ImportOf(HMODULE dll, const char* name) {
    auto* const base = reinterpret_cast<BYTE*>(dll);
    const LONG headersAt = reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew;
    const auto& headers = *reinterpret_cast<IMAGE_NT_HEADERS*>(base + headersAt);
    const DWORD imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); module->Name != 0; ++module) {
        const auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
        auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto& entry = *reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(entry.Name), name) == 0) {
                return reinterpret_cast<void**>(&addresses->u1.Function);
            }
        }
    }
    return nullptr;
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
    mImport = ImportOf(mDll, name);
    if (mImport != nullptr) {
        mBefore = *mImport;
        Put(mImport, replacement);
        return;
    }
    void** const lookUp = ImportOf(mDll, "GetProcAddress");
    if (lookUp == nullptr) {
        ADD_FAILURE() << "KWOUtil.dll neither imports " << name << " nor looks functions up";
        return;
    }
    LookedUp()[mName] = replacement;
    Put(lookUp, reinterpret_cast<void*>(&Find));
}

ReplacedFunction::~ReplacedFunction() {
    if (mImport != nullptr) {
        Put(mImport, mBefore);
    } else {
        LookedUp().erase(mName);
    }
    if (mDll != nullptr) FreeLibrary(mDll);
}

}  // namespace kwo::com_test
