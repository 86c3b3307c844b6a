#pragma once

#include <string>
#include <string_view>

#include "platform/text.h"

namespace kwo::platform::simulated {

/// The desktop's ANSI code page, Windows-1252. What it lacks becomes '?'; a surrogate pair is two characters and
/// becomes two of them.
std::string ToAnsi(TextView text);
/// The five bytes that the code page leaves unused stand for the control characters of the same number.
Text FromAnsi(std::string_view bytes);

/// The code pages that a desktop may have: Windows-1252, or UTF-8, where one character takes up to four bytes.
enum class CodePage { Windows1252, Utf8 };
/// Bytes in the given code page. In UTF-8 nothing is lacking.
std::string ToAnsi(TextView text, CodePage page);
/// Text from bytes in the given code page.
Text FromAnsi(std::string_view bytes, CodePage page);

/// What an ANSI call sees of a text: its bytes up to the first zero.
std::string AnsiArgument(TextView text);
/// What a text is after it has gone through an ANSI call and back.
Text ThroughAnsi(TextView text);
/// The text up to its first zero character.
TextView UpToZero(TextView text);

/// UTF-8 for log lines and for messages of tests, and back.
std::string ToUtf8(TextView text);
/// A byte that is part of no character becomes the replacement character, U+FFFD.
Text FromUtf8(std::string_view bytes);

/// ASCII letters in lower case, for names that are compared without regard to case.
std::string Folded(std::string_view name);
/// The same for text.
Text Folded(TextView name);

}  // namespace kwo::platform::simulated
