#pragma once

#include "platform/file_system.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

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
