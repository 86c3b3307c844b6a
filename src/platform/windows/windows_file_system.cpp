#include "platform/windows/windows_file_system.h"

#include "platform/windows/ansi.h"
#include "platform/windows/quiet_drives.h"

namespace kwo::platform::windows {

std::int32_t WindowsFileSystem::Attributes(TextView path) {
    const QuietDrives quiet;
    return static_cast<std::int32_t>(mLastError.After(::GetFileAttributesW(ToWide(path).c_str())));
}

std::int32_t WindowsFileSystem::AttributesAnsi(TextView path) {
    const QuietDrives quiet;
    return static_cast<std::int32_t>(mLastError.After(::GetFileAttributesA(ToAnsi(path).c_str())));
}

bool WindowsFileSystem::ListsFile(TextView pattern) {
    constexpr DWORD kNotPlain = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const QuietDrives quiet;
    WIN32_FIND_DATAW entry;
    const HANDLE listing = mLastError.After(::FindFirstFileW(ToWide(pattern).c_str(), &entry));
    if (listing == INVALID_HANDLE_VALUE) return false;
    bool found = false;
    do {
        found = (entry.dwFileAttributes & kNotPlain) == 0;
    } while (!found && ::FindNextFileW(listing, &entry));
    ::FindClose(listing);
    return found;
}

}  // namespace kwo::platform::windows
