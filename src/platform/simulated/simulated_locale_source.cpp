#include "platform/simulated/simulated_locale_source.h"

#include <string>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kBufferTooSmall = 122;
constexpr std::int32_t kInvalidFlags = 1004;

std::map<std::uint32_t, Text> UnitedStates() {
    return {{1, u"0409"}, {14, u"."},   {15, u","},   {17, u"2"},   {18, u"1"},   {25, u"2"},
            {28, u"0"},   {30, u":"},   {35, u"0"},   {49, u"Mon"}, {50, u"Tue"}, {51, u"Wed"},
            {52, u"Thu"}, {53, u"Fri"}, {54, u"Sat"}, {55, u"Sun"}, {4108, u"6"}, {4112, u"1"}};
}

}  // namespace

SimulatedLocaleSource::SimulatedLocaleSource(World& world) : settings(UnitedStates()), mWorld(world) {
    world.faults.Declare({{"GetLocaleInfo", {87, Faults::kNoMemory}}, {"GetTimeZoneInformation", {87}}});
    zone.bias = 300;
    zone.standardName = u"Eastern Standard Time";
    zone.standardDate = {0, 11, 0, 1, 2, 0};
    zone.daylightName = u"Eastern Daylight Time";
    zone.daylightDate = {0, 3, 0, 2, 2, 0};
    zone.daylightBias = -60;
}

std::optional<Text> SimulatedLocaleSource::Setting(std::uint32_t type, std::uint32_t capacity) {
    const Call call(mWorld, "GetLocaleInfo");
    mWorld.log.Add("GetLocaleInfo " + std::to_string(type) + " " + std::to_string(capacity));
    if (call.Fails()) return std::nullopt;
    const auto found = settings.find(type);
    if (found == settings.end() || capacity <= found->second.size()) {
        mWorld.lastError = found == settings.end() ? kInvalidFlags : kBufferTooSmall;
        return std::nullopt;
    }
    return ThroughAnsi(found->second);
}

std::uint32_t SimulatedLocaleSource::QueryTimeZone(TimeZone& result) {
    const Call call(mWorld, "GetTimeZoneInformation");
    mWorld.log.Add("GetTimeZoneInformation");
    if (call.Fails()) return 0xFFFFFFFF;
    result = zone;
    return zoneId;
}

}  // namespace kwo::platform::simulated
