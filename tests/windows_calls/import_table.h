#pragma once

#include <windows.h>

#include <functional>

namespace kwo::windows_calls {

/// Calls `see` with the name of each function that `module` imports, and with the place of its address. Functions that
/// are imported by number have no name and are left out.
void ForEachImport(HMODULE module, const std::function<void(const char* name, void** place)>& see);

/// Where `module` keeps the address of the imported function; null if it imports none of that name.
void** PlaceOf(HMODULE module, const char* name);

/// Puts `function` there and returns what was there.
void* Exchange(void** place, void* function);

}  // namespace kwo::windows_calls
