#pragma once

#include <vector>

#include "kwocheck/facts.h"
#include "kwocheck/system.h"

namespace kwocheck {

/// Gathers the facts about `libraries` here. Judges nothing.
/// Creates every class of this program's bitness whose file is ours: nobody else's code runs.
Facts Survey(System& system, const std::vector<KnownLibrary>& libraries);

}  // namespace kwocheck
