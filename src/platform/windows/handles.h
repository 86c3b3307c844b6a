#pragma once

#include <windows.h>

#include "platform/values.h"

namespace kwo::platform::windows {

/// A 32-bit handle as the system's own, sign-extended as Windows guarantees for handles that cross bitnesses:
///
///     ::IsWindow(ToNative<HWND>(window));
template <class Native>
Native ToNative(Handle handle) {
    return reinterpret_cast<Native>(static_cast<INT_PTR>(handle));
}

/// The low 32 bits of the system's own handle, which are all that a handle of a window, key, context or process has:
///
///     return FromNative(::GetActiveWindow());
///
/// Null becomes 0.
template <class Native>
Handle FromNative(Native handle) {
    return static_cast<Handle>(reinterpret_cast<INT_PTR>(handle));
}

}  // namespace kwo::platform::windows
