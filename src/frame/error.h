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

/// The component's own error numbers: the base for automation objects, plus an offset. The base itself stands for a
/// Windows call that failed without an error code.
inline constexpr std::int32_t kObjectError = static_cast<std::int32_t>(0x80040000u);
inline constexpr std::int32_t kNoErrorSaved = kObjectError + 1010;  ///< raised again, but no error is saved
inline constexpr std::int32_t kInvalidHexDigit = kObjectError + 1011;
inline constexpr std::int32_t kCantCreateTimer = kObjectError + 30000;  ///< published; no member raises it

/// What an error handler adds to the error that it saves; see MKWOError::KWO_SaveError.
struct SaveErrorRequest {
    static constexpr std::int32_t kNoPlatformCode = -1;  ///< the error has no platform code

    std::int32_t errNumber = 0;                   ///< 0 takes the number of the current error
    TextView text = {};                           ///< added to the current description on a line of its own
    TextView source = {};                         ///< empty takes the routine on top of the call trace
    std::int32_t platformCode = kNoPlatformCode;  ///< becomes the platform's last error, without its sign
    bool replace = false;                         ///< replace the saved error instead of attaching to it
    bool writeTrace = true;                       ///< write a line to the trace
    bool raiseNow = false;                        ///< raise the saved error at the end
};

/// The one way in which errors are saved, raised and shown.
///
/// There is one saved error for each component. It stays until another one replaces it. Errors that are saved later are
/// attached: their descriptions become further sentences, their sources follow after a semicolon, until the text has
/// 8,192 characters. The number of the first error stays.
class MKWOError {
public:
    /// Keeps references to all of these; they must outlive it.
    MKWOError(platform::SystemErrors& system, platform::HostApplication& host, HostIdentity& identity, CallTrace& trace,
              MessageBoxes& boxes)
        : mSystem(system), mHost(host), mIdentity(identity), mTrace(trace), mBoxes(boxes) {}

    /// Sets where translated texts come from; null means the built-in English texts. The caller keeps the ownership.
    void SetMessages(MessageLookup* messages) { mMessages = messages; }

    /// Saves the error that a handler has caught. `current` is that error; the number 0 means that there is none, and
    /// the error comes from `request` alone. Without a number, the negated platform code becomes the number and the
    /// system's text is added to the description. Raises only with `raiseNow`.
    void KWO_SaveError(const ComponentError& current, const SaveErrorRequest& request);
    /// Raises the saved error again, with its help file and help context. Raises kNoErrorSaved if there is none.
    [[noreturn]] void KWO_RaiseSavedError();
    /// Raises a platform error. Its number is the negated code: -5 for 5 as well as for -5. Code 0 takes the platform's
    /// last-error value. If that is 0 too, the call returns, or raises kObjectError with `raiseIfNoError`.
    ///
    /// The description is `text2`, `text1` and the system's text for the code, or "Unknown error." if all are empty. An
    /// empty `source` takes the routine on top of the call trace, then the name of the host's executable.
    void KWO_RaiseError(std::int32_t code, TextView source, TextView text1 = {}, TextView text2 = {},
                        bool raiseIfNoError = false);
    /// The system's text for an error code, on one line and without blanks around it. Empty for code 0 and for a code
    /// without a text. The platform's last-error value stays as it was. Raises nothing.
    Text KWO_SystemErrorText(std::int32_t code);
    /// Shows the application-error box with the saved error. Messages are processed until the user closes it.
    /// `attachError` first attaches `current` to the saved error, with `text`. `style` is the icon: 0, 16, 48 or 64;
    /// any other value becomes 16. With `ideOnly` the box is shown only inside a development environment.
    void KWO_AppError(const ComponentError& current, TextView text, std::int16_t style, bool ideOnly, bool attachError);

    /// The saved error; its number is 0 if there is none.
    const ComponentError& Saved() const { return mSaved; }
    /// The platform's code of the saved error or of the last error raised with code 0; 0 if there was none.
    std::int32_t LastPlatformCode() const { return mLastPlatformCode; }

    /// The text of `number` in the user's language if a message table is loaded, else `builtIn`. The placeholders in it
    /// are filled with `values`.
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
