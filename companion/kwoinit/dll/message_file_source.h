#pragma once

#include <optional>
#include <string>

#include "platform/text.h"

namespace kwo::kwoinit {

/// A message file as it was found.
struct FoundFile {
    platform::Text path;
    std::string bytes;
};

/// The file at `path`, else the one of the same name beside this DLL; nothing when there is neither. Raises
/// ComponentError for a file that cannot be read or is too large to be one of messages.
std::optional<FoundFile> FindMessageFile(platform::TextView path);

}  // namespace kwo::kwoinit
