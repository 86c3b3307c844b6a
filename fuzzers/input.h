#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>

#include "platform/text.h"

namespace kwo::fuzz {

/// The bytes of one run, read from the front as decisions. When they are used up, every answer is 0, the harmless
/// choice of every question.
class Input {
public:
    explicit Input(std::span<const std::uint8_t> bytes) : mBytes(bytes) {}

    bool IsEmpty() const { return mBytes.empty(); }

    std::uint8_t Byte() {
        if (mBytes.empty()) return 0;
        const std::uint8_t byte = mBytes.front();
        mBytes = mBytes.subspan(1);
        return byte;
    }
    /// A number below `limit`, which is at most 256.
    int Below(int limit) { return Byte() % limit; }
    /// True once in `chances`, which is at most 256; false when the bytes are used up.
    bool Once(int chances) { return Below(chances) == chances - 1; }
    bool Flag() { return (Byte() & 1) != 0; }

    /// All the bits of a number.
    template <class Number>
    Number Bits() {
        std::array<std::uint8_t, sizeof(Number)> bytes{};
        for (std::uint8_t& byte : bytes)
            byte = Byte();
        Number number;
        std::memcpy(&number, bytes.data(), bytes.size());
        return number;
    }
    /// A whole number: small, near a limit of its type, or any.
    template <class Number>
    Number Whole() {
        using Limits = std::numeric_limits<Number>;
        switch (Below(4)) {
            case 0:
                return static_cast<Number>(Byte());
            case 1:
                return static_cast<Number>(Limits::max() - static_cast<Number>(Below(4)));
            case 2:
                return static_cast<Number>(Limits::min() + static_cast<Number>(Below(4)));
            default:
                return Bits<Number>();
        }
    }
    /// A number with a fraction: small, whole, huge, not a number, or any.
    double Real() {
        switch (Below(6)) {
            case 0:
                return Byte();
            case 1:
                return static_cast<double>(Bits<std::int32_t>()) / 4096;
            case 2:
                return static_cast<double>(Bits<std::int32_t>());
            case 3:
                return std::numeric_limits<double>::infinity() * (Flag() ? 1 : -1);
            case 4:
                return std::numeric_limits<double>::quiet_NaN();
            default:
                return Bits<double>();
        }
    }
    /// One of `choices`.
    template <class Choice, std::size_t Count>
    const Choice& Of(const Choice (&choices)[Count]) {
        static_assert(Count <= 256);
        return choices[static_cast<std::size_t>(Below(static_cast<int>(Count)))];
    }
    /// As many bytes as the next one says, fewer at the end of the input.
    std::string_view Bytes() {
        const std::size_t length = Byte();
        return Take(length);
    }
    /// Bytes() as text, each byte one character; now and then all characters are wide.
    platform::Text Text() {
        const bool wide = Once(8);
        const std::string_view bytes = Bytes();
        platform::Text text;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            unsigned unit = static_cast<unsigned char>(bytes[at]);
            if (wide && at + 1 < bytes.size()) unit = unit << 8 | static_cast<unsigned char>(bytes[++at]);
            text += static_cast<char16_t>(unit);
        }
        return text;
    }
    /// All that is left.
    std::string_view Rest() { return Take(mBytes.size()); }

private:
    std::string_view Take(std::size_t length) {
        length = length < mBytes.size() ? length : mBytes.size();
        const std::string_view taken(reinterpret_cast<const char*>(mBytes.data()), length);
        mBytes = mBytes.subspan(length);
        return taken;
    }

    std::span<const std::uint8_t> mBytes;
};

}  // namespace kwo::fuzz
