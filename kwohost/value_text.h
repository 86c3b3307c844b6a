#pragma once

#include <string>

#include "com_values.h"
#include "source_file.h"

namespace kwohost {

/// What a script's author expects to read: `True` or `true`, and an object by its default member. Numbers and dates of
/// VBScript are in the user's locale. Numbers of JScript are as the language converts them to text, and dates are
/// month/day/year. Raises 13 for an array and for what else has no text, 91 for `Nothing`.
std::wstring ValueText(const VARIANT& value, Language language);

}  // namespace kwohost
