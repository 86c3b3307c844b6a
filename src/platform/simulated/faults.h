#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kwo::platform::simulated {

/// Counts the desktop's calls by the system's name for them (without the A or W at its end) and lets chosen ones fail.
///
///     desktop.faults.FailCall("RegOpenKeyEx", 2, 5);  // the second one from now is denied
///     EXPECT_EQ(desktop.faults.Calls("RegOpenKeyEx"), 2);
///
/// How a failure shows depends on the call: a failure result and the last-error value, a status, or a raised error if
/// the call has nothing else.
/// A call that fails does nothing else, unless its service says so; many leave their line in the log all the same.
class Faults {
public:
    using Codes = std::vector<std::int32_t>;

    /// The code of a call that fails because the platform has no memory for it: the call throws std::bad_alloc.
    static constexpr std::int32_t kNoMemory = static_cast<std::int32_t>(0x8007000E);
    /// The code of an object of the host that refuses.
    static constexpr std::int32_t kRefusedByObject = 380;

    /// A call and the codes that the system documents for it. A call that cannot fail has none.
    struct Kind {
        std::string_view name;
        Codes codes;
    };
    /// A call that has failed.
    struct Failure {
        std::string call;
        std::int32_t code = 0;
    };

    /// The `nth` call of `name` from now (1 is the next one) fails with `code`.
    /// Several may be planned; a name that no part of the desktop has throws std::invalid_argument, as does an `nth`
    /// below 1.
    void FailCall(std::string_view name, int nth, std::int32_t code);
    /// The `nth` of all calls that can fail, from now, fails with its own code number `way` (from 0; they go round).
    /// With `lasting` all later ones fail too. An `nth` of 0 lets none fail but forgets what Made and Failed tell.
    void FailAnyCall(int nth, std::size_t way = 0, bool lasting = false);
    /// Forgets every planned failure.
    void Clear();

    /// Whether FailAnyCall was called, and Clear not since.
    bool Listens() const { return mListens; }
    /// How many calls of `name` were made since the desktop came into being, failed ones included.
    /// A name that no part of the desktop has throws std::invalid_argument.
    int Calls(std::string_view name) const;
    /// The calls that could fail since FailAnyCall, in their order.
    const std::vector<std::string>& Made() const { return mMade; }
    /// Those that FailAnyCall has let fail.
    const std::vector<Failure>& Failed() const { return mFailed; }
    /// The names of the calls that can fail, in their alphabetical order.
    std::vector<std::string> CanFail() const;
    /// In how many ways a call can fail.
    std::size_t WaysOf(std::string_view name) const { return Known(name).codes.size(); }

    /// For the parts of the desktop: names the calls that they have.
    void Declare(std::vector<Kind> kinds);
    /// For the parts of the desktop: counts one call of `name`; returns the code to fail with, if it must fail.
    /// Throws std::bad_alloc if that is kNoMemory.
    std::optional<std::int32_t> Enter(std::string_view name);
    /// For objects of the host, whose members have any names: the same for a call that nobody has declared. To be
    /// called only while somebody listens.
    std::optional<std::int32_t> EnterObject(const std::string& name);

private:
    struct Call {
        Codes codes;
        int made = 0;
        std::map<int, std::int32_t> failures;  ///< by the count of the call that fails
    };
    const Call& Known(std::string_view name) const;
    Call& Known(std::string_view name);
    std::optional<std::int32_t> PlannedFor(std::string_view name, Call& call);

    std::map<std::string, Call, std::less<>> mCalls;
    bool mListens = false;
    int mFailing = 0;
    std::size_t mWay = 0;
    bool mLasting = false;
    std::vector<std::string> mMade;
    std::vector<Failure> mFailed;
};

}  // namespace kwo::platform::simulated
