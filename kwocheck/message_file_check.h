#pragma once

#include <string_view>

#include "kwocheck/facts.h"
#include "kwocheck/system.h"

namespace kwocheck {

/// Reads a message file as the companion does, and tells what is wrong in it.
MessageFileFacts CheckMessageFile(System& system, const Text& path);

/// The same for bytes that were read from `path`, which is only named.
/// Problems are the lines that the companion skips, in their order, and texts whose markers (%1, %2 ...) are others
/// than in the section without a language. Remarks are the texts that a translation does not have.
MessageFileFacts CheckMessages(std::string_view bytes, const Text& path);

}  // namespace kwocheck
