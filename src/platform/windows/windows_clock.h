#pragma once

#include "platform/clock.h"

namespace kwo::platform::windows {

class WindowsClock final : public Clock {
public:
    std::optional<std::int64_t> CounterFrequency() override;
    std::int64_t Counter() override;
    std::uint32_t TickCount() override;
    Date Now() override;
};

}  // namespace kwo::platform::windows
