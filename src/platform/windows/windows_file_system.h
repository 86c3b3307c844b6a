#pragma once

#include "platform/file_system.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The files of this machine and its network. For a drive without a disk each call fails at once and shows no box.
class WindowsFileSystem final : public FileSystem {
public:
    explicit WindowsFileSystem(Context& context) : mLastError(context.lastError) {}

    std::int32_t Attributes(TextView path) override;
    std::int32_t AttributesAnsi(TextView path) override;
    bool ListsFile(TextView pattern) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
