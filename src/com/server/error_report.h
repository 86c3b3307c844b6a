#pragma once

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <utility>

#include "com/server/com_values.h"
#include "platform/component_error.h"

namespace kwo::com {

/// The member that reports a failure: "KWOTimer" and ".AddAlarm".
struct MemberName {
    TextView className;
    TextView member;
    const IID* interfaceId;
};

/// The HRESULT that automation clients show as this number. Small positive numbers are errors of the language's
/// run-time.
HRESULT ToHresult(std::int32_t number);

/// Stores `error` as the thread's error object and returns its HRESULT. An error without a source gets the member as
/// source.
HRESULT ReportToCaller(const platform::ComponentError& error, const MemberName& member) noexcept;
/// The same for a failure that has no number of its own.
HRESULT ReportToCaller(HRESULT failure, TextView description, const MemberName& member) noexcept;

/// Moves the thread's error object into the EXCEPINFO of a late-bound caller.
void FillExceptionInfo(HRESULT failure, EXCEPINFO& info) noexcept;

/// Runs the body of a member. This is the one place where exceptions become an HRESULT and an error object. `name`
/// returns the MemberName and is called only after a failure.
template <class Name, class Body>
HRESULT Guarded(Name&& name, Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (const platform::ComponentError& error) {
        return ReportToCaller(error, name());
    } catch (const std::bad_alloc&) {
        return ReportToCaller(E_OUTOFMEMORY, u"Out of memory", name());
    } catch (...) {
        return ReportToCaller(E_UNEXPECTED, u"Unexpected failure", name());
    }
}

/// The value behind a pointer. Raises E_POINTER if an early-bound caller passed null.
template <class Type>
Type& Required(Type* pointer) {
    if (pointer == nullptr) platform::Raise(E_POINTER, {}, u"A pointer that is needed is null");
    return *pointer;
}

}  // namespace kwo::com
