#pragma once

#include <string>
#include <vector>

#include "com_values.h"

namespace kwohost {

/// An enumeration over a copy of texts (IEnumVARIANT), for `For Each` and JScript's `Enumerator`.
/// It may outlive the object that made it.
/// Raises std::bad_alloc.
ComPtr<IUnknown> EnumerateTexts(const std::vector<std::wstring>& texts);

}  // namespace kwohost
