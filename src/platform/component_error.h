#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// The one kind of failure inside the component, thrown as an exception.
///
/// It never crosses an interface. The automation shell turns it into an HRESULT and an error object, see
/// com/server/error_report.h. Lack of memory is not a ComponentError: it stays std::bad_alloc and becomes
/// E_OUTOFMEMORY there.
struct ComponentError {
    /// What the caller's error handler sees: a run-time error of the enumeration below, a negated platform code, or a
    /// number of the component. docs/errors.md lists them.
    /// Never 0 when thrown.
    std::int32_t number = 0;
    /// Class and member, "KWOTimer.AddAlarm". Empty means that the shell names the member that was called.
    Text source;
    /// For the user, in the user's language where there is a translation.
    Text description;
    /// The path of a help file and a topic in it; empty and 0 if there is no help.
    Text helpFile;
    /// The number of the topic in the help file.
    std::int32_t helpContext = 0;
};

/// The numbers that automation clients know as the errors of the language's own run-time.
/// The shell reports number n as the HRESULT 0x800A0000 + n.
enum class RuntimeError : std::int32_t {
    InvalidProcedureCall = 5,  ///< an argument outside of what the call accepts
    Overflow = 6,              ///< a number that does not fit its type
    SubscriptOutOfRange = 9,   ///< an index outside its array
    TypeMismatch = 13,         ///< a value of the wrong kind
    FileNotFound = 53,         ///< no such file, or no such program
    NoObjectSet = 91,          ///< a call on the null object
    ObjectRequired = 424,      ///< a value where an object is needed
    CannotCreateObject = 429,  ///< no class of that name, or it cannot create one
    NoSuchMember = 438,        ///< the object lacks the property or method
};

/// Throws a ComponentError without help. `number` must not be 0.
[[noreturn]] void Raise(std::int32_t number, TextView source, TextView description);

/// Throws a ComponentError with the number of `error` and its usual English description.
/// An empty `source` means that the shell names the member that was called.
[[noreturn]] void RaiseRuntime(RuntimeError error, TextView source = {});

}  // namespace kwo::platform
