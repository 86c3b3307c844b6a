#pragma once

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <utility>

#include "com/server/com_values.h"
#include "platform/component_error.h"

namespace kwo::com {

/// Where a failure is reported from: "KWOTimer" and ".AddAlarm".
struct MemberName {
    TextView className;
    TextView member;
    const IID* interfaceId;
};

/// The HRESULT that automation clients show as `number`: small positive numbers are the run-time's own.
HRESULT ToHresult(std::int32_t number);

/// Leaves `error` in the thread's error object and returns its HRESULT. An error without a source gets the member's.
HRESULT ReportToCaller(const platform::ComponentError& error, const MemberName& member) noexcept;
HRESULT ReportToCaller(HRESULT failure, TextView description, const MemberName& member) noexcept;

/// Moves the thread's error object into what late-bound callers receive.
void FillExceptionInfo(HRESULT failure, EXCEPINFO& info) noexcept;

/// Runs a member's body: the one place where exceptions become what a caller of an interface sees. `name` makes the
/// MemberName, which only a failure needs.
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

/// Raises E_POINTER when an early-bound caller passed null where a value is read or written.
template <class Type>
Type& Required(Type* pointer) {
    if (pointer == nullptr) platform::Raise(E_POINTER, {}, u"A pointer that is needed is null");
    return *pointer;
}

}  // namespace kwo::com
