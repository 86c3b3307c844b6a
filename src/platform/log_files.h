#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text.h"

namespace kwo::platform {

/// Log files as they are written: new ones only, from their beginning to their end. Others may read along. They are
/// bytes here, because the trace counts bytes to know when a file is full.
class LogFiles {
public:
    using File = std::uintptr_t;  ///< 0 is none

    virtual ~LogFiles() = default;

    /// Makes a file of that name and opens it for writing (CreateFileW). 0 on failure, the last-error value says why:
    /// 80 when a file or folder has the name already.
    virtual File CreateNew(TextView path) = 0;
    /// Puts all of `bytes` at the end of the file, in one write. False when not all of them could be written, the
    /// last-error value says why: 112 when the disk is full.
    virtual bool Write(File file, std::string_view bytes) = 0;
    virtual void Close(File file) = 0;
    /// DeleteFileW.
    virtual bool Delete(TextView path) = 0;
};

}  // namespace kwo::platform
