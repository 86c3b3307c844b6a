#pragma once

#include <optional>
#include <string>

#include "platform/text.h"

namespace kwo::kwoinit {

/// The path and the bytes of a message file, as they are on the disk.
struct FoundFile {
    platform::Text path;
    std::string bytes;
};

/// The file at `path`, else the file of the same name beside this DLL; KWOInit.nls for an empty path.
/// Nothing if there is neither; folders, devices and pipes do not count. No box asks for a missing disk.
/// Raises FileUnreadable or FileTooLarge for a file that is there and cannot be used. Others may write to the file
/// meanwhile.
std::optional<FoundFile> FindMessageFile(platform::TextView path);

}  // namespace kwo::kwoinit
