#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/component_error.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/log.h"
#include "platform/simulated/text_codec.h"
#include "platform/simulated/uncounted_memory.h"

namespace kwo::platform::simulated {

#define SERVICE(Interface, member) class Simulated##Interface;
#include "platform/services.def"
#undef SERVICE

/// The services of one desktop.
struct SimulatedServices {
#define SERVICE(Interface, member) Simulated##Interface& member;
#include "platform/services.def"
#undef SERVICE
};

/// What the services of one desktop share.
struct World {
    SimulatedServices services;
    Log log{};
    Faults faults{};
    /// The last-error value of the desktop; 0 at first.
    std::int32_t lastError = 0;
    /// Of the registry's values and of conversions.
    CodePage codePage = CodePage::Windows1252;
};

/// One call into a part of the desktop, from its first line to its last: every call that the component makes begins
/// with one.
///
///     const Call call(mWorld, "DeleteFile");
///     if (call.Fails()) return false;
///
/// It counts the call and tells whether it has to fail. What the desktop allocates meanwhile is not the component's.
class Call {
public:
    /// Throws std::bad_alloc if the call has to fail for lack of memory, and std::invalid_argument for a name that was
    /// not declared.
    Call(World& world, std::string_view name) : mWorld(world), mCode(world.faults.Enter(name)) {}
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    /// For calls whose failures show in the last-error value: sets it, and returns true, if the call has to fail.
    bool Fails() const {
        if (mCode) mWorld.lastError = *mCode;
        return mCode.has_value();
    }
    /// For calls that return a status: the one to fail with.
    const std::optional<std::int32_t>& Status() const { return mCode; }
    /// For calls that have nothing but a raised error to show a failure with.
    void RaiseIfPlanned() const {
        if (mCode) Raise(*mCode, u"", u"Planned failure.");
    }

private:
    UncountedMemory mMemory;
    World& mWorld;
    std::optional<std::int32_t> mCode;
};

}  // namespace kwo::platform::simulated
