#include "platform/windows/windows_system_metrics.h"

#include <windows.h>

namespace kwo::platform::windows {

// The list of members gives the indexes as numbers, because code without the system's headers uses it too.
#define DIMENSION(order, member, index, constant, axis) static_assert((constant) == (index));
#define FLAG(order, member, index, constant) static_assert((constant) == (index));
#define NUMBER(order, type, member, index, constant) static_assert((constant) == (index));
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER

std::int32_t WindowsSystemMetrics::Metric(std::int32_t index) {
    return ::GetSystemMetrics(index);
}

}  // namespace kwo::platform::windows
