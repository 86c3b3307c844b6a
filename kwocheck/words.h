#pragma once

#include <cstdint>
#include <string>

#include "kwocheck/facts.h"

namespace kwocheck {

inline Text Decimal(std::int64_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

/// At least so many digits, in capital letters.
inline Text Hexadecimal(std::uint32_t number, int digits) {
    Text text;
    for (; number != 0 || digits > 0; number >>= 4, --digits)
        text.insert(text.begin(), u"0123456789ABCDEF"[number & 0xF]);
    return text;
}

inline Text Bits(Bitness bitness) {
    return bitness == Bitness::k64 ? u"64-bit" : u"32-bit";
}

inline Text For(Scope scope) {
    return scope == Scope::kUser ? u"for you" : u"for everybody";
}

}  // namespace kwocheck
