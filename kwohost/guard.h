#pragma once

#include <new>
#include <utility>

#include "com_values.h"

namespace kwohost {

/// Runs the body of a function that the system, an engine or a component calls.
/// This is the one place where an exception ends.
///
///     return Guarded([&] { return InvokeMember(id); }, [&](const ScriptFailure& failure) { return failure.code; });
///
/// Returns what the body returns. `onFailure` gets the exception as a ScriptFailure and returns the result in its
/// stead; it must not throw. Lack of memory is E_OUTOFMEMORY, an unknown exception E_UNEXPECTED.
template <class Body, class OnFailure>
auto Guarded(Body&& body, OnFailure&& onFailure) noexcept -> decltype(body()) {
    try {
        return std::forward<Body>(body)();
    } catch (const ScriptFailure& failure) {
        return onFailure(failure);
    } catch (const std::bad_alloc&) {
        return onFailure(ScriptFailure{E_OUTOFMEMORY});
    } catch (...) {
        return onFailure(ScriptFailure{E_UNEXPECTED});
    }
}

/// For functions that return their failure as a code alone: the description is lost.
template <class Body>
HRESULT Guarded(Body&& body) noexcept {
    return Guarded(std::forward<Body>(body), [](const ScriptFailure& failure) { return failure.code; });
}

}  // namespace kwohost
