#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "platform/text.h"

namespace kwo::frame {

/// The numbered, translated texts as the frame asks for them; the message table implements it.
class MessageLookup {
public:
    virtual ~MessageLookup() = default;

    /// The text with its placeholders filled; nothing while no table is loaded.
    virtual std::optional<platform::Text> LoadedMessage(std::int32_t number,
                                                        std::span<const platform::Text> values = {}) = 0;
};

}  // namespace kwo::frame
