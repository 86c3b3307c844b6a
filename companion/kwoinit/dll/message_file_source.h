#pragma once

#include <optional>
#include <string>

#include "platform/text.h"

namespace kwo::kwoinit {

/// The path and the bytes of a message file.
struct FoundFile {
    platform::Text path;
    std::string bytes;
};

/// The file at `path`, else the file of the same name beside this DLL. Nothing if there is neither. Raises
/// ComponentError for a file that cannot be read or is too large.
std::optional<FoundFile> FindMessageFile(platform::TextView path);

}  // namespace kwo::kwoinit
