#pragma once

#include <string>

namespace kwohost {

enum class Language { VBScript, JScript };

/// A script as the engines take it.
struct SourceFile {
    std::wstring path;  ///< complete
    Language language = Language::VBScript;
    std::wstring text;  ///< lines end in CR LF
};

/// Why a script cannot be read, in words for its author.
struct UnreadableSource {
    std::wstring message;
};

/// Reads UTF-8, with or without a byte order mark, and UTF-16 with the low byte first. The language comes from the
/// extension. Throws UnreadableSource.
SourceFile ReadSource(const std::wstring& path);

}  // namespace kwohost
