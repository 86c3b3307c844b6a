#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// What the logic asks about files by name.
/// It opens and changes nothing; LogFiles does.
///
/// A path may be relative to the current folder, and ends at its first zero character. For a drive without a disk each
/// call fails at once; the system shows no box that asks for the disk.
class FileSystem {
public:
    /// What the system returns in place of attributes (INVALID_FILE_ATTRIBUTES).
    static constexpr std::int32_t kNoAttributes = -1;
    /// The bit of Attributes that says folder.
    static constexpr std::int32_t kFolder = 0x10;

    virtual ~FileSystem() = default;

    /// The attributes of a file or folder, bits of the system's FILE_ATTRIBUTE_ numbers (GetFileAttributesW).
    /// kNoAttributes if there is none or it may not be looked at; the last-error value then says why: 2 no such file,
    /// 3 no such folder, 5 denied.
    virtual std::int32_t Attributes(TextView path) = 0;
    /// The same with the name in the ANSI code page (GetFileAttributesA), for systems that have no other call.
    /// A name with other characters is not found.
    virtual std::int32_t AttributesAnsi(TextView path) = 0;
    /// Whether there is a file that matches `pattern`, a path whose last part may contain the wildcards * and ?.
    /// Folders, hidden files and system files do not count.
    /// False for a name that no file can have, for an empty one, and for one that ends in a separator.
    /// Raises nothing.
    virtual bool ListsFile(TextView pattern) = 0;
};

}  // namespace kwo::platform
