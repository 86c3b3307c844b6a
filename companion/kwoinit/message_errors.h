#pragma once

#include <cstdint>

#include "platform/component_error.h"

namespace kwo::kwoinit {

/// What the companion raises, as an offset from 0x80040000. docs/messages.md lists them for users.
/// FileUnreadable to TooManyEntries come from KWO_MsgTableSize, the last two from KWO_MsgTableLoad.
enum class MessageError : std::uint32_t {
    FileUnreadable = 0x7601,  ///< the file is there but cannot be opened or read
    FileTooLarge = 0x7602,    ///< it has more than MessageFile::kLargestFile bytes
    NotText = 0x7603,         ///< it is UTF-16 or contains zero bytes
    LineTooLong = 0x7604,     ///< a line has more than kLongestLineBytes
    TooManyEntries = 0x7605,  ///< more than kMostTexts texts or kMostSections sections
    NotSized = 0x7606,        ///< KWO_MsgTableLoad without a table from KWO_MsgTableSize
    BadArray = 0x7607,        ///< an argument is not an array of the right kind
};

/// The number that callers see: 0x80047601 and so on, as a negative number.
/// A script reads it from `Err.Number`.
constexpr std::int32_t NumberOf(MessageError error) {
    return static_cast<std::int32_t>(0x80040000u + static_cast<std::uint32_t>(error));
}

/// Raises ComponentError with that number.
/// An empty `source` takes the member that was called.
/// `description` is for the user who wrote the file or the program: it names the file or the argument.
[[noreturn]] inline void Raise(MessageError error, platform::TextView source, platform::TextView description) {
    platform::Raise(NumberOf(error), source, description);
}

}  // namespace kwo::kwoinit
