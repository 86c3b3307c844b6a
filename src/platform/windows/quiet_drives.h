#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// While it lives, a drive without a disk in it is an error of the calls on this thread. Otherwise the system shows a
/// box that asks the user for the disk, and the call waits for the answer.
class QuietDrives {
public:
    QuietDrives() { mSet = ::SetThreadErrorMode(::GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &mBefore); }
    QuietDrives(const QuietDrives&) = delete;
    QuietDrives& operator=(const QuietDrives&) = delete;
    ~QuietDrives() {
        if (mSet) ::SetThreadErrorMode(mBefore, nullptr);
    }

private:
    DWORD mBefore = 0;
    BOOL mSet;
};

}  // namespace kwo::platform::windows
