#include "windows_calls/import_table.h"

#include <cstring>

namespace kwo::windows_calls {

void ForEachImport(HMODULE module, const std::function<void(const char* name, void** place)>& see) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const LONG headersAt = reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew;
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + headersAt);
    const DWORD imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports); library->Name != 0;
         ++library) {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto& import = *reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            see(reinterpret_cast<const char*>(import.Name), reinterpret_cast<void**>(&address->u1.Function));
        }
    }
}

void** PlaceOf(HMODULE module, const char* name) {
    void** found = nullptr;
    ForEachImport(module, [&](const char* one, void** place) {
        if (std::strcmp(one, name) == 0) found = place;
    });
    return found;
}

void* Exchange(void** place, void* function) {
    DWORD before = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    void* const was = *place;
    *place = function;
    VirtualProtect(place, sizeof *place, before, &before);
    return was;
}

}  // namespace kwo::windows_calls
