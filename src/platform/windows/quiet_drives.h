#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// While it exists, calls of this thread report a drive without a disk as an error.
/// Otherwise the system shows a box that asks for the disk, and the call waits for the answer.
///
///     const QuietDrives quiet;
///     return mLastError.After(::DeleteFileW(path)) != FALSE;
///
/// Read the last-error value before the scope ends.
class QuietDrives {
public:
    /// Keeps the other error modes of the thread.
    QuietDrives() { mSet = ::SetThreadErrorMode(::GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &mBefore); }
    QuietDrives(const QuietDrives&) = delete;
    QuietDrives& operator=(const QuietDrives&) = delete;
    /// Puts the error modes back.
    ~QuietDrives() {
        if (mSet) ::SetThreadErrorMode(mBefore, nullptr);
    }

private:
    DWORD mBefore = 0;
    /// False if the system refused: there is nothing to put back then.
    BOOL mSet;
};

}  // namespace kwo::platform::windows
