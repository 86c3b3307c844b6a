#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text.h"

namespace kwo::platform {

/// Writes new log files from beginning to end. Others may read them meanwhile. Files are bytes here, because the trace
/// counts bytes to know when a file is full.
class LogFiles {
public:
    using File = std::uintptr_t;  ///< 0 is none

    virtual ~LogFiles() = default;

    /// Creates a file and opens it for writing (CreateFileW). Returns 0 on failure; the last-error value says why: 80
    /// if a file or folder has the name already. The caller closes the file.
    virtual File CreateNew(TextView path) = 0;
    /// Appends all of `bytes` in one write. Returns false if not all of them could be written; the last-error value
    /// says why: 112 if the disk is full.
    virtual bool Write(File file, std::string_view bytes) = 0;
    /// Ends a successful CreateNew.
    virtual void Close(File file) = 0;
    /// Deletes a file (DeleteFileW); false on failure.
    virtual bool Delete(TextView path) = 0;
};

}  // namespace kwo::platform
