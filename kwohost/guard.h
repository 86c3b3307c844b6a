#pragma once

#include <new>
#include <utility>

#include "com_values.h"

namespace kwohost {

/// Runs the body of a function that the system, an engine or a component calls. This is the one place where an
/// exception ends: `onFailure` gets it as a ScriptFailure and returns the result in its stead. It must not throw.
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

/// For functions that return their failure as a code alone.
template <class Body>
HRESULT Guarded(Body&& body) noexcept {
    return Guarded(std::forward<Body>(body), [](const ScriptFailure& failure) { return failure.code; });
}

}  // namespace kwohost
