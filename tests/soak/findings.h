#pragma once

#include <string>

namespace kwo::soak {

/// Notes that something is wrong, with the second of the run; any thread may call it. The first ones are printed.
void Found(const std::string& what);
/// How often something was wrong, and what came first.
long FoundCount();
std::string FirstFound();

}  // namespace kwo::soak
