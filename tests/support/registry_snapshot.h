#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace kwo::test_support {

/// What is below a key of the real registry: "\path" for each key, and "\path|name" for each value, with its type and
/// its bytes as text. The key itself is "". Two snapshots of one process can be compared. Under Wine what goes with the
/// session is left out.
using RegistrySnapshot = std::map<std::wstring, std::string>;

/// Empty if there is no such key. The view is 0, KEY_WOW64_32KEY or KEY_WOW64_64KEY.
RegistrySnapshot SnapshotOf(HKEY root, const std::wstring& path, REGSAM view = 0);

/// What is gone, changed or new in `after`, for a message that can be read.
std::vector<std::string> Differences(const RegistrySnapshot& before, const RegistrySnapshot& after);

inline const std::vector<std::string> kNoDifference;

}  // namespace kwo::test_support
