#pragma once

#include <string>

namespace kwohost {

/// The engines that Windows has.
enum class Language { VBScript, JScript };

/// A script as the engines take it.
struct SourceFile {
    /// Complete, with its drive and folder.
    std::wstring path;
    Language language = Language::VBScript;
    /// Lines end in CR LF. No zero characters.
    std::wstring text;
};

/// Why a script cannot be read, in words for its author. Thrown as an exception.
struct UnreadableSource {
    std::wstring message;
};

/// Reads UTF-8, with or without a byte order mark, and UTF-16 with the low byte first.
/// The language comes from the extension: .vbs or .js.
/// Throws UnreadableSource, for any other extension too and for more than 64 MB, and std::bad_alloc.
SourceFile ReadSource(const std::wstring& path);

}  // namespace kwohost
