#include "allocation_faults.h"

#include "com_test.h"

namespace kwo::com_test {
namespace {

using Allocate = void*(__cdecl*)(std::size_t);
using MakeString = BSTR(STDAPICALLTYPE*)(const OLECHAR*, UINT);

long theCount = 0;
long theFailing = 0;
Allocate theAllocate = nullptr;
MakeString theMakeString = nullptr;

bool Fails() {
    return ++theCount == theFailing;
}

void* __cdecl FailingAllocate(std::size_t size) {
    return Fails() ? nullptr : theAllocate(size);
}

BSTR STDAPICALLTYPE FailingMakeString(const OLECHAR* text, UINT length) {
    return Fails() ? nullptr : theMakeString(text, length);
}

/// Puts `function` where the module keeps the address of the imported one; returns what was there.
void* Replace(HMODULE module, const char* name, void* function) {
    auto* const base = reinterpret_cast<char*>(module);
    const auto* const headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports);
    for (; library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* const import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (lstrcmpA(reinterpret_cast<const char*>(import->Name), name) != 0) continue;
            auto& place = reinterpret_cast<void*&>(addresses->u1.Function);
            DWORD before = 0;
            VirtualProtect(&place, sizeof place, PAGE_READWRITE, &before);
            return std::exchange(place, function);
        }
    }
    ADD_FAILURE() << name << " is not imported by name";
    return nullptr;
}

HMODULE Module() {
    return GetModuleHandleW(L"KWOUtil.dll");
}

}  // namespace

AllocationFaults::AllocationFaults(long which) {
    theCount = 0;
    theFailing = which;
    theAllocate = reinterpret_cast<Allocate>(Replace(Module(), "malloc", reinterpret_cast<void*>(&FailingAllocate)));
    theMakeString = reinterpret_cast<MakeString>(
        Replace(Module(), "SysAllocStringLen", reinterpret_cast<void*>(&FailingMakeString)));
}

AllocationFaults::~AllocationFaults() {
    Replace(Module(), "malloc", reinterpret_cast<void*>(theAllocate));
    Replace(Module(), "SysAllocStringLen", reinterpret_cast<void*>(theMakeString));
}

bool AllocationFaults::Happened() const {
    return theCount >= theFailing;
}

}  // namespace kwo::com_test
