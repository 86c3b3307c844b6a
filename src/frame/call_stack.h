#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::frame {

/// The routines entered and not left yet, the outermost at depth 1.
class CallStack {
public:
    struct Level {
        platform::Text routine;
        bool traced = false;
        platform::Milliseconds entered;
    };

    /// Room for the first levels; nothing when there is room already.
    void Create();
    /// Whether a level that is added with this mode is traced. `mode` is CallTrace's: inherited, 0 for not traced,
    /// anything else for traced.
    bool Traced(std::int16_t mode) const;
    void Push(platform::TextView routine, std::int16_t mode, platform::Milliseconds now);
    /// Drops the levels above `depth`.
    void ReturnTo(std::int32_t depth) { mDepth = depth; }

    std::int32_t Depth() const { return mDepth; }
    std::int32_t Capacity() const { return static_cast<std::int32_t>(mLevels.size()); }
    /// Levels are counted from 1; there is one up to the depth.
    const Level& At(std::int32_t depth) const { return mLevels[static_cast<std::size_t>(depth - 1)]; }
    const Level& Top() const { return At(mDepth); }

private:
    void Grow();

    std::vector<Level> mLevels;
    std::int32_t mDepth = 0;
};

}  // namespace kwo::frame
