#include "platform/windows/windows_log_files.h"

#include "platform/windows/ansi.h"
#include "platform/windows/quiet_drives.h"

namespace kwo::platform::windows {

LogFiles::File WindowsLogFiles::CreateNew(TextView path) {
    const QuietDrives quiet;
    const HANDLE file = mLastError.After(::CreateFileW(ToWide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                                       CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file == INVALID_HANDLE_VALUE ? 0 : reinterpret_cast<File>(file);
}

bool WindowsLogFiles::Write(File file, std::string_view bytes) {
    DWORD written = 0;
    if (!mLastError.After(::WriteFile(reinterpret_cast<HANDLE>(file), bytes.data(), static_cast<DWORD>(bytes.size()),
                                      &written, nullptr))) {
        return false;
    }
    if (written == bytes.size()) return true;
    mLastError.Set(ERROR_DISK_FULL);
    return false;
}

void WindowsLogFiles::Close(File file) {
    mLastError.After(::CloseHandle(reinterpret_cast<HANDLE>(file)));
}

bool WindowsLogFiles::Delete(TextView path) {
    const QuietDrives quiet;
    return mLastError.After(::DeleteFileW(ToWide(path).c_str())) != FALSE;
}

}  // namespace kwo::platform::windows
