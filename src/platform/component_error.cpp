#include "platform/component_error.h"

namespace kwo::platform {

namespace {

TextView DescriptionOf(RuntimeError error) {
    switch (error) {
        case RuntimeError::InvalidProcedureCall:
            return u"Invalid procedure call or argument";
        case RuntimeError::Overflow:
            return u"Overflow";
        case RuntimeError::SubscriptOutOfRange:
            return u"Subscript out of range";
        case RuntimeError::TypeMismatch:
            return u"Type mismatch";
        case RuntimeError::FileNotFound:
            return u"File not found";
        case RuntimeError::NoObjectSet:
            return u"Object variable or With block variable not set";
        case RuntimeError::ObjectRequired:
            return u"Object required";
        case RuntimeError::CannotCreateObject:
            return u"ActiveX component can't create object";
        case RuntimeError::NoSuchMember:
            return u"Object doesn't support this property or method";
    }
    return u"Unknown error.";
}

}  // namespace

void Raise(std::int32_t number, TextView source, TextView description) {
    throw ComponentError{number, Text(source), Text(description), {}, 0};
}

void RaiseRuntime(RuntimeError error, TextView source) {
    Raise(static_cast<std::int32_t>(error), source, DescriptionOf(error));
}

}  // namespace kwo::platform
