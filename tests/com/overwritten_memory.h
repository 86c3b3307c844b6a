#pragma once

#include <windows.h>

namespace kwo::com_test {

/// While it lives, memory that KWOUtil.dll frees is filled with 0xDD and not used again, so that a use of what is gone
/// is a crash. The DLL must be loaded.
class OverwrittenMemory {
public:
    OverwrittenMemory();
    OverwrittenMemory(const OverwrittenMemory&) = delete;
    OverwrittenMemory& operator=(const OverwrittenMemory&) = delete;
    ~OverwrittenMemory();

    explicit operator bool() const { return mPlace != nullptr; }
    /// How many blocks were freed meanwhile.
    static int Freed();

private:
    void** mPlace = nullptr;  ///< the DLL's entry for the run-time's function that frees
    void* mBefore = nullptr;
};

}  // namespace kwo::com_test
