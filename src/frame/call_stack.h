#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::frame {

/// The routines that were entered and not yet left.
/// Depth 1 is the outermost routine, depth 0 means none.
/// The trace owns the one stack of a component and writes the lines; the stack itself writes nothing.
class CallStack {
public:
    /// One routine on the stack.
    struct Level {
        /// Class and member, "KWOTimer.AddAlarm".
        platform::Text routine;
        /// Whether its entry and exit are in the log.
        bool traced = false;
        /// When it was entered, on the millisecond clock.
        platform::Milliseconds entered;
    };

    /// Makes room for 32 levels.
    /// Does nothing if there is room already.
    /// Call it before the first Push.
    /// Raises nothing but lack of memory.
    void Create();
    /// Whether a level that is pushed now with `mode` would be traced. kInherit takes the mode of the level on top,
    /// and true on an empty stack; 0 means no, any other value yes.
    bool Traced(std::int16_t mode) const;
    /// Puts a routine on top, entered at `now`.
    /// Grows by 32 levels when there is no more room; if there is no memory for that, nothing changes.
    void Push(platform::TextView routine, std::int16_t mode, platform::Milliseconds now);
    /// Drops the levels above `depth`, which must be between 0 and Depth().
    void ReturnTo(std::int32_t depth) { mDepth = depth; }

    /// The number of routines on the stack.
    std::int32_t Depth() const { return mDepth; }
    /// How many levels there is room for. It never shrinks.
    std::int32_t Capacity() const { return static_cast<std::int32_t>(mLevels.size()); }
    /// The level at `depth`, which must be between 1 and Depth(). Valid until the next Push.
    const Level& At(std::int32_t depth) const { return mLevels[static_cast<std::size_t>(depth - 1)]; }
    /// The innermost routine. The stack must not be empty. Valid until the next Push.
    const Level& Top() const { return At(mDepth); }

private:
    /// Adds 32 levels, or nothing if there is no memory for them.
    void Grow();

    /// More than are in use: a level keeps its memory for the next routine.
    std::vector<Level> mLevels;
    std::int32_t mDepth = 0;
};

}  // namespace kwo::frame
