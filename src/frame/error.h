#pragma once

#include <cstdint>
#include <span>

#include "frame/call_trace.h"
#include "frame/host_identity.h"
#include "frame/message_box.h"
#include "frame/message_lookup.h"
#include "platform/component_error.h"
#include "platform/host_application.h"
#include "platform/system_errors.h"

namespace kwo::frame {

using platform::ComponentError;

/// The component's own error numbers: automation object errors, a base plus an offset.
inline constexpr std::int32_t kObjectError = static_cast<std::int32_t>(0x80040000u);
inline constexpr std::int32_t kNoErrorSaved = kObjectError + 1010;
inline constexpr std::int32_t kInvalidHexDigit = kObjectError + 1011;
inline constexpr std::int32_t kCantCreateTimer = kObjectError + 30000;

/// What a handler adds to the error it saves; see MKWOError::KWO_SaveError.
struct SaveErrorRequest {
    static constexpr std::int32_t kNoPlatformCode = -1;

    std::int32_t errNumber = 0;  ///< 0 takes the current error's number
    TextView text = {};          ///< the caller's text, put under the current description
    TextView source = {};        ///< empty takes the routine on top of the call trace
    std::int32_t platformCode = kNoPlatformCode;
    bool replace = false;  ///< overwrite the saved error instead of attaching to it
    bool writeTrace = true;
    bool raiseNow = false;
};

/// The one way errors are saved, raised and shown.
///
/// There is one saved error. It stays until it is replaced: what is saved later is attached to it, and the number of
/// the first one wins.
class MKWOError {
public:
    MKWOError(platform::SystemErrors& system, platform::HostApplication& host, HostIdentity& identity, CallTrace& trace,
              MessageBoxes& boxes)
        : mSystem(system), mHost(host), mIdentity(identity), mTrace(trace), mBoxes(boxes) {}

    /// Where translated texts come from once there is a table; null means the built-in texts.
    void SetMessages(MessageLookup* messages) { mMessages = messages; }

    /// Keeps the error that a handler has caught. `current` is that error; one with number 0 stands for none.
    void KWO_SaveError(const ComponentError& current, const SaveErrorRequest& request);
    /// Raises the saved error again.
    [[noreturn]] void KWO_RaiseSavedError();
    /// Raises a platform error: the negated code. Code 0 takes the platform's last-error value; returns only when that
    /// is 0 as well and `raiseIfNoError` is false. `text1` goes before the platform's text, `text2` before both.
    void KWO_RaiseError(std::int32_t code, TextView source, TextView text1 = {}, TextView text2 = {},
                        bool raiseIfNoError = false);
    /// The platform's text on one line; empty for code 0. The platform's last-error value stays as it was.
    Text KWO_SystemErrorText(std::int32_t code);
    /// Shows the application-error box for the saved error. `current` is attached to it first on request, with `text`.
    void KWO_AppError(const ComponentError& current, TextView text, std::int16_t style, bool ideOnly, bool attachError);

    const ComponentError& Saved() const { return mSaved; }
    std::int32_t LastPlatformCode() const { return mLastPlatformCode; }

    /// The text of the message table where it is loaded, else `builtIn`; filled with `values` when there are any.
    Text Message(std::int32_t number, TextView builtIn, std::span<const Text> values = {});

private:
    Text PlatformText(std::int32_t code);
    Text RoutineOr(TextView source) const;

    platform::SystemErrors& mSystem;
    platform::HostApplication& mHost;
    HostIdentity& mIdentity;
    CallTrace& mTrace;
    MessageBoxes& mBoxes;
    MessageLookup* mMessages = nullptr;
    ComponentError mSaved;
    std::int32_t mLastPlatformCode = 0;
};

}  // namespace kwo::frame
