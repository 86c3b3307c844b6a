#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text.h"

namespace kwo::platform {

/// Writes new log files from beginning to end.
/// Others may read them meanwhile, but not write or delete them.
///
///     const auto file = files.CreateNew(path);
///     if (file == 0) fail(errors.Last());
///     files.Write(file, "first line\r\n");
///     files.Close(file);
///
/// Files are bytes here, because the trace counts bytes to know when a file is full. A path ends at its first zero
/// character.
/// No call raises anything but lack of memory; after a failure the last-error value says why.
class LogFiles {
public:
    /// An open file; 0 is none.
    using File = std::uintptr_t;

    virtual ~LogFiles() = default;

    /// Creates a file and opens it for writing (CreateFileW).
    /// Its folder must exist.
    /// Returns 0 on failure. The last-error value is 80 if a file has the name already; if a folder has it, 80 or 5.
    /// The caller closes the file.
    virtual File CreateNew(TextView path) = 0;
    /// Appends all of `bytes` in one write.
    /// Returns false if not all of them could be written; the last-error value says why: 112 if the disk is full. A
    /// part may then be in the file.
    virtual bool Write(File file, std::string_view bytes) = 0;
    /// Ends a successful CreateNew. `file` must not be used after it.
    virtual void Close(File file) = 0;
    /// Deletes a file (DeleteFileW).
    /// Returns false on failure: for a file that is still open, for a folder, and if there is none.
    virtual bool Delete(TextView path) = 0;
};

}  // namespace kwo::platform
