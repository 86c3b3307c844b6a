#include "platform/simulated/simulated_system_errors.h"

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kInsufficientBuffer = 122;
constexpr std::int32_t kModuleNotFound = 126;
constexpr std::int32_t kNoSuchMessage = 317;
constexpr std::size_t kFormatBuffer = 255;  // with the terminating zero

}  // namespace

SimulatedSystemErrors::SimulatedSystemErrors(World& world) : mWorld(world) {
    world.faults.Declare({{"FormatMessage", {kNoSuchMessage, Faults::kNoMemory}},
                          {"GetModuleHandle", {kModuleNotFound, Faults::kNoMemory}},
                          {"InternetGetLastResponseInfo", {kModuleNotFound, Faults::kNoMemory}},
                          {"WNetGetLastError", {kModuleNotFound, Faults::kNoMemory}}});
    system = {
        {2, u"The file cannot be found.\r\n"},
        {5, u"Access is denied.\r\n"},
        {6, u"The handle is invalid.\r\n"},
        {122, u"The buffer is too small.\r\n"},
        {144, u"The folder is no subfolder of the root.\r\n"},
        {234, u"More data is available.\r\n"},
        {1208, u"An extended error has occurred.\r\n"},
    };
}

Text SimulatedSystemErrors::SystemText(std::int32_t code) {
    return Formatted(system, code);
}

Text SimulatedSystemErrors::ModuleText(TextView module, std::int32_t code) {
    const Call call(mWorld, "GetModuleHandle");
    if (call.Fails()) return {};
    const auto found = modules.find(Folded(UpToZero(module)));
    if (found == modules.end()) {
        mWorld.lastError = kModuleNotFound;
        return {};
    }
    return Formatted(found->second, code);
}

SystemErrors::InternetResponse SimulatedSystemErrors::LastInternetResponse(std::uint32_t capacity) {
    const Call call(mWorld, "InternetGetLastResponseInfo");
    InternetResponse response;
    if (call.Fails()) return response;
    const std::string bytes = ToAnsi(internetResponse);
    response.length = static_cast<std::uint32_t>(bytes.size());
    response.succeeded = bytes.size() < capacity;
    if (response.succeeded) {
        response.text = FromAnsi(bytes);
    } else {
        mWorld.lastError = kInsufficientBuffer;
    }
    return response;
}

SystemErrors::NetworkError SimulatedSystemErrors::LastNetworkError() {
    const Call call(mWorld, "WNetGetLastError");
    if (call.Fails()) return {};
    return {FromAnsi(ToAnsi(networkError.text)), FromAnsi(ToAnsi(networkError.provider))};
}

Text SimulatedSystemErrors::Formatted(const Texts& texts, std::int32_t code) {
    const Call call(mWorld, "FormatMessage");
    if (call.Fails()) return {};
    const auto found = texts.find(code);
    if (found == texts.end()) {
        mWorld.lastError = kNoSuchMessage;
        return {};
    }
    const std::string bytes = ToAnsi(found->second);
    if (bytes.size() >= kFormatBuffer) {
        mWorld.lastError = kInsufficientBuffer;
        return {};
    }
    return FromAnsi(bytes);
}

}  // namespace kwo::platform::simulated
