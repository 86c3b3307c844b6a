#pragma once

#include "platform/file_system.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The files of this machine and its network.
/// For a drive without a disk each call fails at once and shows no box.
/// A path that does not begin with \\?\ may have some 260 characters, unless system and program allow more.
class WindowsFileSystem final : public FileSystem {
public:
    explicit WindowsFileSystem(Context& context) : mLastError(context.lastError) {}

    /// GetFileAttributesW. Asks the disk or the network each time, which can take seconds.
    std::int32_t Attributes(TextView path) override;
    std::int32_t AttributesAnsi(TextView path) override;
    /// FindFirstFileW and, behind entries that do not count, FindNextFileW.
    /// Short names are looked at too, as the system does.
    bool ListsFile(TextView pattern) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
