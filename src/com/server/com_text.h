#pragma once

#include <windows.h>
#include <oleauto.h>

#include "platform/text.h"

namespace kwo::com {

using platform::Text;
using platform::TextView;

/// The characters of an automation string, zero characters included; a null string is empty.
inline Text ToText(BSTR string) {
    return Text(string, string + ::SysStringLen(string));
}

/// A new automation string that the caller owns. Raises std::bad_alloc.
BSTR NewString(TextView text);

/// Puts `text` where `string` points, in place of what was there.
void Replace(BSTR& string, TextView text);

}  // namespace kwo::com
