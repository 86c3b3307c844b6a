#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// The one kind of failure inside the component, thrown as an exception. It never crosses an interface: the automation
/// shell turns it into an HRESULT and an error object.
struct ComponentError {
    std::int32_t number = 0;  ///< as in docs/errors.md; never 0 when thrown
    Text source;              ///< class and member, "KWOTimer.AddAlarm"; empty takes the member that was called
    Text description;
    Text helpFile;  ///< empty and 0 if there is no help
    std::int32_t helpContext = 0;
};

/// The numbers that automation clients know as the errors of the language's own run-time.
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

/// Throws a ComponentError.
[[noreturn]] void Raise(std::int32_t number, TextView source, TextView description);

/// Throws a ComponentError with the usual English description of `error`.
[[noreturn]] void RaiseRuntime(RuntimeError error, TextView source = {});

}  // namespace kwo::platform
