#pragma once

#include <string>

#include "source_file.h"

namespace kwo::soak {

/// A script of this folder, such as "forms.vbs".
kwohost::SourceFile Script(const std::wstring& name);

}  // namespace kwo::soak
