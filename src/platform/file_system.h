#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// What the logic asks about files by name.
class FileSystem {
public:
    /// What the system returns in place of attributes (INVALID_FILE_ATTRIBUTES).
    static constexpr std::int32_t kNoAttributes = -1;
    static constexpr std::int32_t kFolder = 0x10;  ///< the bit of Attributes that says folder

    virtual ~FileSystem() = default;

    /// The attributes of a file or folder (GetFileAttributesW); kNoAttributes if there is none, and then the last-error
    /// value says why.
    virtual std::int32_t Attributes(TextView path) = 0;
    /// The same with the name in the ANSI code page (GetFileAttributesA), for systems that have no other call.
    virtual std::int32_t AttributesAnsi(TextView path) = 0;
    /// Whether there is a file that matches `pattern`, a path whose name may contain wildcards. Folders, hidden files
    /// and system files do not count. False for a name that no file can have and for a drive without a disk; no box is
    /// shown.
    virtual bool ListsFile(TextView pattern) = 0;
};

}  // namespace kwo::platform
