#include "allocation_faults.h"

#include "com_test.h"
#include "windows_calls/import_table.h"

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

/// Puts `function` where the DLL keeps the address of the imported one; returns what was there.
void* Replace(const char* name, void* function) {
    void** const place = windows_calls::PlaceOf(GetModuleHandleW(L"KWOUtil.dll"), name);
    if (place != nullptr) return windows_calls::Exchange(place, function);
    ADD_FAILURE() << name << " is not imported by name";
    return nullptr;
}

}  // namespace

AllocationFaults::AllocationFaults(long which) {
    theCount = 0;
    theFailing = which;
    theAllocate = reinterpret_cast<Allocate>(Replace("malloc", reinterpret_cast<void*>(&FailingAllocate)));
    theMakeString =
        reinterpret_cast<MakeString>(Replace("SysAllocStringLen", reinterpret_cast<void*>(&FailingMakeString)));
}

AllocationFaults::~AllocationFaults() {
    Replace("malloc", reinterpret_cast<void*>(theAllocate));
    Replace("SysAllocStringLen", reinterpret_cast<void*>(theMakeString));
}

bool AllocationFaults::Happened() const {
    return theCount >= theFailing;
}

}  // namespace kwo::com_test
