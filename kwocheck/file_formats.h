#pragma once

#include <optional>
#include <string_view>

#include "kwocheck/facts.h"

namespace kwocheck {

/// The bitness of a DLL or program from its first bytes, some thousand are enough.
/// Nothing for another kind of file, or another kind of processor.
std::optional<Bitness> BitnessOf(std::string_view bytes);

struct VersionFacts {
    Text product;  ///< ProductName; empty if there is none
    Text version;  ///< "4.5.0.0"; empty if there is none
};
/// From the bytes of a version resource. Anything may be in them: they come from a file of unknown origin.
VersionFacts ReadVersionResource(std::string_view bytes);

/// Whether the bytes of a file's stream "Zone.Identifier" say that the file comes from the Internet or from a site that
/// is not trusted.
bool IsZoneMark(std::string_view bytes);

/// A path as this program has to write it to meet the file that programs of the bitness `view` meet.
/// Windows leads 32-bit programs from its folder System32 to another one. `windowsFolder` has no backslash at the end.
Text RedirectedPath(TextView path, TextView windowsFolder, Bitness own, Bitness view);

}  // namespace kwocheck
