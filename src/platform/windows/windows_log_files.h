#pragma once

#include "platform/log_files.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Files of the system (CreateFileW), opened for others to read.
/// Names are UTF-16. For a drive without a disk a call fails and shows no box.
/// A write that the disk had no room for in full reports 112, even where the system reports success.
class WindowsLogFiles final : public LogFiles {
public:
    explicit WindowsLogFiles(Context& context) : mLastError(context.lastError) {}

    /// CreateFileW with CREATE_NEW and FILE_SHARE_READ.
    File CreateNew(TextView path) override;
    /// WriteFile. Sets the last-error value itself if only a part was written.
    bool Write(File file, std::string_view bytes) override;
    void Close(File file) override;
    bool Delete(TextView path) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
