#pragma once

#include <windows.h>
#include <oleauto.h>

#include "platform/variant.h"

namespace kwo::platform::windows {

/// A new automation array of the type VT_I2, as a VARIANT that the caller clears:
///
///     OwnedVariant value = OwnedVariant::Adopt(ToArray(numbers));
///
/// The bounds are those of `array`.
/// Raises std::bad_alloc.
VARIANT ToArray(const Int16Array& array);
/// The same for texts (VT_BSTR). An empty text becomes a null string.
VARIANT ToArray(const TextArray& array);

/// The elements of an array of one dimension, if the logic knows their type: VT_I2 or VT_BSTR.
/// They are copied; the caller keeps the array.
/// Null for any other value, and for an array whose own description contradicts the type in the VARIANT: the caller
/// then passes it on as it is.
/// Raises std::bad_alloc, also if the array is locked.
ForeignRef FromArray(const VARIANT& value);

}  // namespace kwo::platform::windows
