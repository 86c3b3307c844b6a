#pragma once

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <utility>

#include "com/server/com_values.h"
#include "platform/component_error.h"

namespace kwo::com {

/// The member that reports a failure. The texts must live until the report is made.
struct MemberName {
    /// "KWOTimer".
    TextView className;
    /// ".AddAlarm"; the two together are the source of an error that names none.
    TextView member;
    /// The interface that the member belongs to; the error object names it.
    const IID* interfaceId;
};

/// The HRESULT that automation clients show as this number: 0x800A0000 + number for 1 to 65,535, the errors of the
/// language's run-time; a negative number is an HRESULT already.
/// E_UNEXPECTED for 0 and for any larger number.
HRESULT ToHresult(std::int32_t number);

/// Stores `error` as the thread's error object, with its texts and help, and returns its HRESULT.
/// An error without a source gets the member as source.
/// Without memory there is no error object, and never an old one; the HRESULT is the same.
HRESULT ReportToCaller(const platform::ComponentError& error, const MemberName& member) noexcept;
/// The same for a failure that has no number of its own. Returns `failure`.
HRESULT ReportToCaller(HRESULT failure, TextView description, const MemberName& member) noexcept;

/// Moves the thread's error object into the EXCEPINFO of a late-bound caller, with `failure` as its code.
/// The texts are empty if there is no error object.
/// The caller frees them.
void FillExceptionInfo(HRESULT failure, EXCEPINFO& info) noexcept;

/// Runs the body of a member.
/// This is the one place where exceptions become an HRESULT and an error object.
///
///     return Guarded([&] { return MemberName{...}; }, [&] { mTimer.SetEnabled(value); });
///
/// Returns S_OK if the body returns. ComponentError becomes its number, std::bad_alloc E_OUTOFMEMORY, everything else
/// E_UNEXPECTED. `name` returns the MemberName and is called only after a failure; it must not raise.
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

/// The value behind a pointer that an early-bound caller passed.
/// Raises E_POINTER for null. Check all pointers of a member before it changes anything.
template <class Type>
Type& Required(Type* pointer) {
    if (pointer == nullptr) platform::Raise(E_POINTER, {}, u"A pointer that is needed is null");
    return *pointer;
}

}  // namespace kwo::com
