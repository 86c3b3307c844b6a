#pragma once

#include <string>
#include <vector>

#include "com_values.h"

namespace kwohost {

/// An enumeration over texts, for `For Each` and JScript's `Enumerator`.
ComPtr<IUnknown> EnumerateTexts(const std::vector<std::wstring>& texts);

}  // namespace kwohost
