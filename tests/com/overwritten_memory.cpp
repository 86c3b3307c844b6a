#include "overwritten_memory.h"

#include <malloc.h>

#include <cstring>

namespace kwo::com_test {
namespace {

int theFreedBlocks = 0;

/// The memory stays taken: a program of tests ends soon enough.
void Overwrite(void* block) {
    if (block == nullptr) return;
    ++theFreedBlocks;
    std::memset(block, 0xDD, _msize(block));
}

/// The place in which `module` keeps the address of the run-time's function; null when it imports none of that name.
void** ImportOf(HMODULE module, const char* name) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* places = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++places) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* const import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), name) == 0) {
                return reinterpret_cast<void**>(&places->u1.Function);
            }
        }
    }
    return nullptr;
}

}  // namespace

OverwrittenMemory::OverwrittenMemory() {
    theFreedBlocks = 0;
    const HMODULE module = GetModuleHandleW(L"KWOUtil.dll");
    mPlace = module != nullptr ? ImportOf(module, "free") : nullptr;
    if (mPlace == nullptr) return;
    mBefore = *mPlace;
    Put(reinterpret_cast<void*>(&Overwrite));
}

OverwrittenMemory::~OverwrittenMemory() {
    if (mPlace != nullptr) Put(mBefore);
}

int OverwrittenMemory::Freed() {
    return theFreedBlocks;
}

void OverwrittenMemory::Put(void* function) {
    DWORD protection = 0;
    VirtualProtect(mPlace, sizeof *mPlace, PAGE_READWRITE, &protection);
    *mPlace = function;
    VirtualProtect(mPlace, sizeof *mPlace, protection, &protection);
}

}  // namespace kwo::com_test
