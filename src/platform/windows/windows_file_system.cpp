#include "platform/windows/windows_file_system.h"

#include "platform/windows/ansi.h"

namespace kwo::platform::windows {

std::int32_t WindowsFileSystem::Attributes(TextView path) {
    return static_cast<std::int32_t>(mLastError.After(::GetFileAttributesW(ToWide(path).c_str())));
}

std::int32_t WindowsFileSystem::AttributesAnsi(TextView path) {
    return static_cast<std::int32_t>(mLastError.After(::GetFileAttributesA(ToAnsi(path).c_str())));
}

}  // namespace kwo::platform::windows
