#include "overwritten_memory.h"

#include <malloc.h>

#include <cstring>

#include "windows_calls/import_table.h"

namespace kwo::com_test {
namespace {

int theFreedBlocks = 0;

/// The memory stays taken: a program of tests ends soon enough.
void Overwrite(void* block) {
    if (block == nullptr) return;
    ++theFreedBlocks;
    std::memset(block, 0xDD, _msize(block));
}

}  // namespace

OverwrittenMemory::OverwrittenMemory() {
    theFreedBlocks = 0;
    const HMODULE module = GetModuleHandleW(L"KWOUtil.dll");
    mPlace = module != nullptr ? windows_calls::PlaceOf(module, "free") : nullptr;
    if (mPlace == nullptr) return;
    mBefore = windows_calls::Exchange(mPlace, reinterpret_cast<void*>(&Overwrite));
}

OverwrittenMemory::~OverwrittenMemory() {
    if (mPlace != nullptr) windows_calls::Exchange(mPlace, mBefore);
}

int OverwrittenMemory::Freed() {
    return theFreedBlocks;
}

}  // namespace kwo::com_test
