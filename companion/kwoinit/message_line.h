#pragma once

#include <cstdint>
#include <variant>

#include "platform/text.h"

namespace kwo::kwoinit {

using platform::Text;
using platform::TextView;

/// An empty line, or a comment, which begins with a semicolon.
struct NothingLine {};
/// [Program] or [Program 0407]; what follows the bracket is a remark.
/// Quotes allow a name that contains a bracket or ends in a number.
struct SectionLine {
    Text program;
    /// A language identifier, such as 0x0407; 0 if the header names none.
    std::uint16_t language = 0;
};
/// 1900 = Text
struct TextLine {
    /// 1 to kHighestNumber.
    std::int32_t number = 0;
    /// Its escapes are replaced and blanks around it dropped. Never empty.
    Text text;
};
/// A line that is skipped, and why; `reason` is a literal and lives for ever.
struct BadLine {
    TextView reason;
};
/// What one line is. Which of the four decides what a reader does with it.
using Line = std::variant<NothingLine, SectionLine, TextLine, BadLine>;

/// The highest number that a text may have. The lowest is 1.
constexpr std::int32_t kHighestNumber = 99'999'999;

/// One line of a message file, without its end.
/// Blanks and tabs around it do not count; a comment begins with a semicolon.
/// Raises nothing but lack of memory: a line that cannot be read is a BadLine. The escapes in a text are \n for a line
/// end, \\ for a backslash, and \s for a blank at its beginning or end.
Line ParseLine(TextView line);

}  // namespace kwo::kwoinit
