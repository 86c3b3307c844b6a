#include "frame/call_stack.h"

#include "frame/call_trace.h"

namespace kwo::frame {

void CallStack::Create() {
    if (mLevels.empty()) Grow();
}

void CallStack::Push(platform::TextView routine, std::int16_t mode, platform::Milliseconds now) {
    if (mDepth == Capacity()) Grow();
    Level& level = mLevels[static_cast<std::size_t>(mDepth)];
    // A level that was used before has room for a name: no memory is asked for.
    level.routine.assign(routine);
    level.traced = Traced(mode);
    level.entered = now;
    ++mDepth;
}

bool CallStack::Traced(std::int16_t mode) const {
    if (mode != CallTrace::kInherit) return mode != 0;
    return mDepth == 0 || Top().traced;
}

void CallStack::Grow() {
    constexpr std::size_t kLevels = 32;
    mLevels.resize(mLevels.size() + kLevels);
}

}  // namespace kwo::frame
