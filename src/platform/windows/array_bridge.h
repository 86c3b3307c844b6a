#pragma once

#include <windows.h>
#include <oleauto.h>

#include "platform/variant.h"

namespace kwo::platform::windows {

/// A new automation array for the caller. Raises std::bad_alloc.
VARIANT ToArray(const Int16Array& array);
/// The same for texts.
VARIANT ToArray(const TextArray& array);

/// The elements of an array of one dimension, if the logic knows their type; null for any other array.
ForeignRef FromArray(const VARIANT& value);

}  // namespace kwo::platform::windows
