#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "platform/text.h"

namespace kwo::frame {

/// The numbered, translated texts, as the frame asks for them.
/// MessageTable, which stands above the frame, implements it.
class MessageLookup {
public:
    virtual ~MessageLookup() = default;

    /// The text of `number` with its placeholders filled with `values`: "%1" is the first.
    /// Nothing while no table is loaded, so that the caller can use its own text. Loads nothing itself. A number that
    /// a loaded table lacks gives "Undefined Message".
    virtual std::optional<platform::Text> LoadedMessage(std::int32_t number,
                                                        std::span<const platform::Text> values = {}) = 0;
};

}  // namespace kwo::frame
