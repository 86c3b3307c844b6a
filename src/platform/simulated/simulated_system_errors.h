#pragma once

#include <map>

#include "platform/simulated/world.h"
#include "platform/system_errors.h"

namespace kwo::platform::simulated {

/// The last-error value and the system's texts for it; all texts can be set.
/// The value is that of all services of the desktop.
/// Calls that can fail: FormatMessage, GetModuleHandle, InternetGetLastResponseInfo and WNetGetLastError. They leave
/// no line in the log.
class SimulatedSystemErrors final : public SystemErrors {
public:
    using Texts = std::map<std::int32_t, Text>;

    explicit SimulatedSystemErrors(World& world);

    std::int32_t Last() override { return mWorld.lastError; }
    void SetLast(std::int32_t code) override { mWorld.lastError = code; }
    Text SystemText(std::int32_t code) override;
    Text ModuleText(TextView module, std::int32_t code) override;
    InternetResponse LastInternetResponse(std::uint32_t capacity) override;
    NetworkError LastNetworkError() override;

    /// As the system writes them, with the line break at the end.
    Texts system;
    /// By the name of the module in lower case. A module that is not in the map is not loaded.
    std::map<Text, Texts> modules;
    /// What LastInternetResponse and LastNetworkError answer.
    Text internetResponse;
    NetworkError networkError;

private:
    Text Formatted(const Texts& texts, std::int32_t code);

    World& mWorld;
};

}  // namespace kwo::platform::simulated
