#pragma once

#include <windows.h>
#include <oleauto.h>

namespace kwo::com_support {

/// Converts `value`, which may be a reference, to `type` by the rules of automation, in `locale`.
/// Booleans become "True" and "False" where a text is wanted. An object is asked for its default value, which may run
/// code of it.
/// The caller owns `converted`, which is empty or `value` itself before the call.
/// Returns DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW, E_OUTOFMEMORY or what else the system says. A value that is not a
/// number overflows where a whole number, a date or a currency is wanted.
[[nodiscard]] HRESULT Convert(VARIANT& converted, const VARIANT& value, VARTYPE type, LCID locale);

/// A handle of a window, a device context or a picture, or a colour: the bits of any whole number that 32 bits hold,
/// with or without a sign.
/// A host may pass it as any numeric type; a handle as wide as a pointer repeats its highest bit, whether its type has
/// a sign or not.
/// Returns DISP_E_OVERFLOW for a number that 32 bits do not hold, DISP_E_TYPEMISMATCH for the null object, else as
/// Convert does; `bits` is unchanged then.
[[nodiscard]] HRESULT To32Bits(LONG& bits, const VARIANT& value, LCID locale);

}  // namespace kwo::com_support
