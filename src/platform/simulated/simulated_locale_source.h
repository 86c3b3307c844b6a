#pragma once

#include <map>

#include "platform/locale_source.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The user's settings by the platform's numbers for them; those of the United States unless changed.
/// The log shows `GetLocaleInfo 14 2` (the number and the capacity) and `GetTimeZoneInformation`; both can fail.
class SimulatedLocaleSource final : public LocaleSource {
public:
    explicit SimulatedLocaleSource(World& world);

    std::optional<Text> Setting(std::uint32_t type, std::uint32_t capacity) override;
    std::uint32_t QueryTimeZone(TimeZone& zone) override;

    /// The settings by LCTYPE. One that is not here fails.
    std::map<std::uint32_t, Text> settings;
    /// What QueryTimeZone fills in.
    TimeZone zone;
    /// What QueryTimeZone returns.
    std::uint32_t zoneId = 1;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
