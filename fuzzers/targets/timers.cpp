// The registry of the timers against the rules taken literally, while both the counter and the time of day jump.

#include "target.h"
#include "timers/naive_timers_fixture.h"

namespace kwo::timers {
namespace {

void Jump(TestClock& clock, int kind, std::int32_t by) {
    switch (kind) {
        case 0:
            clock.setAheadDays += by % 100'000 / 1000.0;
            break;
        case 1:
            clock.setAheadDays = 0;
            break;
        case 2:
            clock.now += std::int64_t{by & 0x7FFFFFFF} * 100;
            break;
        default:
            clock.now += by & 0xFFFF;
            break;
    }
}

KWO_FUZZ_TARGET(timers) {
    constexpr int kMostSteps = 400;
    RegistrySide registry;
    LiteralSide literal;
    for (int step = 0; step < kMostSteps && !input.IsEmpty(); ++step) {
        if (input.Once(8)) {
            const int kind = input.Below(4);
            const auto by = input.Bits<std::int32_t>();
            Jump(registry.clock, kind, by);
            Jump(literal.clock, kind, by);
        }
        // Each step has its own seed, so that the steps after a changed one stay what they were.
        const std::uint64_t seed = input.Bits<std::uint16_t>() * 0x9E3779B97F4A7C15ULL | 1;
        Step(registry, seed);
        Step(literal, seed);
        KWO_HOLDS(Summary(registry) == Summary(literal));
        const auto contents = registry.Contents();
        KWO_HOLDS(contents == literal.Contents());
        KWO_HOLDS(registry.References() == contents[0]);
    }
}

}  // namespace
}  // namespace kwo::timers
