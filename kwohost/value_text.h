#pragma once

#include <string>

#include "com_values.h"
#include "source_file.h"

namespace kwohost {

/// What a script's author expects to read: `True` or `true`, numbers and dates as the language itself would show them
/// (VBScript: in the user's locale), an object by its default member. Raises 13 for an array and for what else has no
/// text, 91 for `Nothing`.
std::wstring ValueText(const VARIANT& value, Language language);

}  // namespace kwohost
