#include "script_folder.h"

#include <algorithm>

namespace kwo::soak {

kwohost::SourceFile Script(const std::wstring& name) {
    const std::string folder = KWO_SOAK_SCRIPTS;
    // A path of the system that Wine runs on is below its drive Z.
    std::wstring path = L"Z:" + std::wstring(folder.begin(), folder.end()) + L"/" + name;
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return kwohost::ReadSource(path);
}

}  // namespace kwo::soak
