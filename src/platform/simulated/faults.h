#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace kwo::platform::simulated {

/// Counts the desktop's calls by the system's name for them (without the A or W at its end) and lets chosen ones fail.
/// How a failure shows depends on the call: a failure result and the last-error value, a status, or a raised error if
/// the call has nothing else.
class Faults {
public:
    /// The `nth` call of `name` from now (1 is the next one) fails with `code`. Several may be planned; a name that no
    /// part of the desktop has throws std::invalid_argument, as does an `nth` below 1.
    void FailCall(std::string_view name, int nth, std::int32_t code);
    /// Forgets every planned failure.
    void Clear();
    /// How many calls of `name` were made, failed ones included.
    int Calls(std::string_view name) const;

    /// For the parts of the desktop: names the calls that they have.
    void Declare(std::initializer_list<std::string_view> names);
    /// For the parts of the desktop: counts one call of `name`; returns the code to fail with, if it must fail.
    std::optional<std::int32_t> Enter(std::string_view name);

private:
    struct Call {
        int made = 0;
        std::map<int, std::int32_t> failures;  ///< by the count of the call that fails
    };
    const Call& Known(std::string_view name) const;
    Call& Known(std::string_view name);

    std::map<std::string, Call, std::less<>> mCalls;
};

}  // namespace kwo::platform::simulated
