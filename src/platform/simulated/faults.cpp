#include "platform/simulated/faults.h"

#include <new>
#include <stdexcept>

namespace kwo::platform::simulated {

namespace {

/// More than any member makes: a member that makes more never ends.
constexpr std::size_t kTooMany = 100'000;

}  // namespace

void Faults::FailCall(std::string_view name, int nth, std::int32_t code) {
    if (nth < 1) throw std::invalid_argument("calls are counted from 1");
    Call& call = Known(name);
    call.failures[call.made + nth] = code;
}

void Faults::FailAnyCall(int nth, std::size_t way, bool lasting) {
    mListens = true;
    mFailing = nth;
    mWay = way;
    mLasting = lasting;
    mMade.clear();
    mFailed.clear();
}

void Faults::Clear() {
    for (auto& [name, call] : mCalls)
        call.failures.clear();
    mListens = false;
    mFailing = 0;
}

int Faults::Calls(std::string_view name) const {
    return Known(name).made;
}

std::vector<std::string> Faults::CanFail() const {
    std::vector<std::string> names;
    for (const auto& [name, call] : mCalls) {
        if (!call.codes.empty()) names.push_back(name);
    }
    return names;
}

void Faults::Declare(std::vector<Kind> kinds) {
    for (Kind& kind : kinds)
        mCalls[std::string(kind.name)].codes = std::move(kind.codes);
}

std::optional<std::int32_t> Faults::Enter(std::string_view name) {
    const auto code = PlannedFor(name, Known(name));
    if (code == kNoMemory) throw std::bad_alloc();
    return code;
}

std::optional<std::int32_t> Faults::EnterObject(const std::string& name) {
    mCalls.try_emplace(name, Call{{kRefusedByObject, kNoMemory}, 0, {}});
    return Enter(name);
}

std::optional<std::int32_t> Faults::PlannedFor(std::string_view name, Call& call) {
    ++call.made;
    if (const auto planned = call.failures.find(call.made); planned != call.failures.end()) {
        const std::int32_t code = planned->second;
        call.failures.erase(planned);
        return code;
    }
    if (!mListens || call.codes.empty()) return std::nullopt;
    mMade.emplace_back(name);
    if (mMade.size() > kTooMany) throw std::logic_error("a member that never ends");
    const auto count = static_cast<int>(mMade.size());
    const bool fails = mFailing != 0 && (count == mFailing || (mLasting && count > mFailing));
    if (!fails) return std::nullopt;
    mFailed.push_back({std::string(name), call.codes[mWay % call.codes.size()]});
    return mFailed.back().code;
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
