#pragma once

#include <windows.h>

#include "platform/values.h"

namespace kwo::platform::windows {

/// A 32-bit handle as the system's own, sign-extended as Windows guarantees for handles that cross bitnesses.
template <class Native>
Native ToNative(Handle handle) {
    return reinterpret_cast<Native>(static_cast<INT_PTR>(handle));
}

template <class Native>
Handle FromNative(Native handle) {
    return static_cast<Handle>(reinterpret_cast<INT_PTR>(handle));
}

}  // namespace kwo::platform::windows
