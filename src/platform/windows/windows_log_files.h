#pragma once

#include "platform/log_files.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Files of the system, opened for others to read. Names are UTF-16.
class WindowsLogFiles final : public LogFiles {
public:
    explicit WindowsLogFiles(Context& context) : mLastError(context.lastError) {}

    File CreateNew(TextView path) override;
    bool Write(File file, std::string_view bytes) override;
    void Close(File file) override;
    bool Delete(TextView path) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
