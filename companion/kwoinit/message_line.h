#pragma once

#include <cstdint>
#include <variant>

#include "platform/text.h"

namespace kwo::kwoinit {

using platform::Text;
using platform::TextView;

/// An empty line or a comment.
struct NothingLine {};
/// [Program] or [Program 0407]; what follows the bracket is a remark.
struct SectionLine {
    Text program;
    std::uint16_t language = 0;  ///< 0 when the header names none
};
/// 1900 = Text
struct TextLine {
    std::int32_t number = 0;
    Text text;  ///< escapes replaced; never empty
};
/// A line that is skipped, and why; `reason` is a literal.
struct BadLine {
    TextView reason;
};
using Line = std::variant<NothingLine, SectionLine, TextLine, BadLine>;

/// The highest number that a text may have. The lowest is 1.
constexpr std::int32_t kHighestNumber = 99'999'999;

/// One line of a message file, without its end.
Line ParseLine(TextView line);

}  // namespace kwo::kwoinit
