#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kwo::invoke_fuzz {

/// Decisions that follow from a seed alone, the same on every machine.
class Random {
public:
    explicit Random(std::uint64_t seed) : mState(seed) {}

    std::uint64_t Bits() {
        mState += 0x9E3779B97F4A7C15ULL;
        std::uint64_t bits = mState;
        bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9ULL;
        bits = (bits ^ bits >> 27) * 0x94D049BB133111EBULL;
        return bits ^ bits >> 31;
    }
    /// A number below `limit`, which is above 0.
    int Below(int limit) { return static_cast<int>(Bits() % static_cast<unsigned>(limit)); }
    /// One of so many places, counted from 0; there is at least one.
    std::size_t Place(std::size_t count) { return static_cast<std::size_t>(Bits() % count); }
    bool Once(int chances) { return Below(chances) == 0; }
    bool Flag() { return (Bits() & 1) != 0; }
    template <class Item, std::size_t Count>
    const Item& Of(const Item (&items)[Count]) {
        return items[Place(Count)];
    }
    template <class Item>
    Item& Of(std::vector<Item>& items) {
        return items[Place(items.size())];
    }
    template <class Item>
    const Item& Of(const std::vector<Item>& items) {
        return items[Place(items.size())];
    }

private:
    std::uint64_t mState;
};

}  // namespace kwo::invoke_fuzz
