#include "platform/simulated/faults.h"

#include <stdexcept>

namespace kwo::platform::simulated {

void Faults::FailCall(std::string_view name, int nth, std::int32_t code) {
    if (nth < 1) throw std::invalid_argument("calls are counted from 1");
    Call& call = Known(name);
    call.failures[call.made + nth] = code;
}

void Faults::Clear() {
    for (auto& [name, call] : mCalls)
        call.failures.clear();
}

int Faults::Calls(std::string_view name) const {
    return Known(name).made;
}

void Faults::Declare(std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names)
        mCalls.try_emplace(std::string(name));
}

std::optional<std::int32_t> Faults::Enter(std::string_view name) {
    Call& call = Known(name);
    ++call.made;
    const auto planned = call.failures.find(call.made);
    if (planned == call.failures.end()) return std::nullopt;
    const std::int32_t code = planned->second;
    call.failures.erase(planned);
    return code;
}

const Faults::Call& Faults::Known(std::string_view name) const {
    const auto found = mCalls.find(name);
    if (found == mCalls.end()) throw std::invalid_argument("the desktop has no call " + std::string(name));
    return found->second;
}

Faults::Call& Faults::Known(std::string_view name) {
    return const_cast<Call&>(static_cast<const Faults&>(*this).Known(name));
}

}  // namespace kwo::platform::simulated
