#pragma once

#include <cstdint>

#include "platform/component_error.h"

namespace kwo::kwoinit {

/// What the companion raises, as an offset from 0x80040000.
enum class MessageError : std::uint32_t {
    FileUnreadable = 0x7601,
    FileTooLarge = 0x7602,
    NotText = 0x7603,
    LineTooLong = 0x7604,
    TooManyEntries = 0x7605,
    NotSized = 0x7606,
    BadArray = 0x7607,
};

constexpr std::int32_t NumberOf(MessageError error) {
    return static_cast<std::int32_t>(0x80040000u + static_cast<std::uint32_t>(error));
}

[[noreturn]] inline void Raise(MessageError error, platform::TextView source, platform::TextView description) {
    platform::Raise(NumberOf(error), source, description);
}

}  // namespace kwo::kwoinit
