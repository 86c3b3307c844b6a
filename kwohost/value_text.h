#pragma once

#include <string>

#include "com_values.h"
#include "source_file.h"

namespace kwohost {

/// What a script's author expects to read: `True` or `true`, and an object by its default member, which may be an
/// object again.
/// Numbers and dates of VBScript are in the user's locale. Numbers of JScript are as the language converts them to
/// text, and dates are month/day/year.
/// Raises 13 for an array and for what else has no text, 91 for `Nothing`, 438 for an object without a default member.
std::wstring ValueText(const VARIANT& value, Language language);

}  // namespace kwohost
