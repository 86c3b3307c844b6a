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

/// The component's own error numbers: the base for automation objects, plus an offset.
/// The base itself stands for a platform call that failed without an error code.
inline constexpr std::int32_t kObjectError = static_cast<std::int32_t>(0x80040000u);
/// KWO_RaiseSavedError was called, but no error is saved.
inline constexpr std::int32_t kNoErrorSaved = kObjectError + 1010;
/// A text of hexadecimal digits contains another character.
inline constexpr std::int32_t kInvalidHexDigit = kObjectError + 1011;
/// Published for callers; no member raises it.
inline constexpr std::int32_t kCantCreateTimer = kObjectError + 30000;

/// What an error handler adds to the error that it saves; see MKWOError::KWO_SaveError.
/// The texts must live until the call returns.
struct SaveErrorRequest {
    /// The error has no platform code.
    static constexpr std::int32_t kNoPlatformCode = -1;

    /// The number to save; 0 takes that of the current error.
    std::int32_t errNumber = 0;
    /// Added to the current description on a line of its own, unless the description contains it already.
    TextView text = {};
    /// Class and member; empty takes the routine on top of the call trace.
    TextView source = {};
    /// Becomes the platform's last error, without its sign.
    std::int32_t platformCode = kNoPlatformCode;
    /// Replace the saved error instead of attaching to it.
    bool replace = false;
    /// Write a line to the trace.
    bool writeTrace = true;
    /// Raise the saved error at the end.
    bool raiseNow = false;
};

/// The one way in which errors are saved, raised and shown.
///
///     } catch (const ComponentError& error) {
///         mError.KWO_SaveError(error, {.source = u"KWOTimer.AddAlarm", .raiseNow = true});
///     }
///
/// There is one saved error for each component. It stays until another one replaces it; a call that succeeds does not
/// clear it.
/// Errors that are saved later are attached: their descriptions become further sentences, their sources follow after a
/// semicolon, until the text has 8,192 characters. The number of the first error stays. The help file and help context
/// that come first stay too, each on its own, even if the saved error is replaced.
class MKWOError {
public:
    /// Keeps references to all of these; they must outlive it. They need not be constructed yet.
    MKWOError(platform::SystemErrors& system, platform::HostApplication& host, HostIdentity& identity, CallTrace& trace,
              MessageBoxes& boxes)
        : mSystem(system), mHost(host), mIdentity(identity), mTrace(trace), mBoxes(boxes) {}

    /// Sets where translated texts come from; null means the built-in English texts.
    /// The caller keeps the ownership: `messages` must live as long as members are called.
    void SetMessages(MessageLookup* messages) { mMessages = messages; }

    /// Saves the error that a handler has caught.
    /// `current` is that error; the number 0 means that there is none, and the error comes from `request` alone.
    ///
    /// Without a number, the negated platform code becomes the number and the system's text is added to the
    /// description. An empty description becomes the system's text for the negated number. The description "automation
    /// error" gets the system's text for the number.
    /// Raises nothing unless `raiseNow` is set; then the saved error.
    void KWO_SaveError(const ComponentError& current, const SaveErrorRequest& request);
    /// Raises the saved error again, with its help file and help context, and writes a line to the trace.
    /// The error stays saved.
    /// If none is saved, kNoErrorSaved becomes the saved number and is raised.
    [[noreturn]] void KWO_RaiseSavedError();
    /// Raises a platform error.
    /// Its number is the negated code: -5 for 5 as well as for -5. Only the low 16 bits of the code count.
    /// Code 0 takes the platform's last-error value. If that is 0 too, the call returns, or raises kObjectError with
    /// `raiseIfNoError`.
    ///
    /// The description is `text2`, `text1` and the system's text for the code, or "Unknown error." if all are empty.
    /// An empty `source` takes the routine on top of the call trace, then the name of the host's executable.
    /// The error is not saved: the handler that catches it does so.
    void KWO_RaiseError(std::int32_t code, TextView source, TextView text1 = {}, TextView text2 = {},
                        bool raiseIfNoError = false);
    /// The system's text for an error code, on one line and without blanks around it.
    /// Codes 12000 to 12999 are those of the internet library, 1208 is the network's own text.
    /// Empty for code 0 and for a code without a text. The platform's last-error value stays as it was.
    Text KWO_SystemErrorText(std::int32_t code);
    /// Shows the application-error box with the saved error.
    /// Messages are processed until the user closes it. The text of the box is also written to the trace.
    /// `attachError` first attaches `current` to the saved error, with `text`. `style` is the icon: 0 none, 16 stop,
    /// 48 exclamation mark or 64 information; any other value becomes 16.
    /// With `ideOnly` the box is shown, and the error attached, only inside a development environment.
    void KWO_AppError(const ComponentError& current, TextView text, std::int16_t style, bool ideOnly, bool attachError);

    /// The saved error; its number is 0 if there is none.
    const ComponentError& Saved() const { return mSaved; }
    /// The platform's code of the saved error or of the last error raised with code 0; 0 if there was none.
    /// An attached error changes it only while it is 0.
    std::int32_t LastPlatformCode() const { return mLastPlatformCode; }

    /// The text of `number` in the user's language if a message table is loaded, else `builtIn`.
    /// Loads no table.
    /// The placeholders in it are filled with `values`; see KWO_FillTemplate for those of `builtIn`.
    Text Message(std::int32_t number, TextView builtIn, std::span<const Text> values = {});

private:
    /// The text as the system wrote it. Asks the library that the code belongs to.
    Text PlatformText(std::int32_t code);
    /// `source` or, if that is empty, the routine on top of the call trace.
    Text RoutineOr(TextView source) const;

    platform::SystemErrors& mSystem;
    platform::HostApplication& mHost;
    HostIdentity& mIdentity;
    CallTrace& mTrace;
    MessageBoxes& mBoxes;
    /// Null until the component has a message table.
    MessageLookup* mMessages = nullptr;
    /// Its number is 0 while no error is saved.
    ComponentError mSaved;
    std::int32_t mLastPlatformCode = 0;
};

}  // namespace kwo::frame
