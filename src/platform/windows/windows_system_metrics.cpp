#include "platform/windows/windows_system_metrics.h"

#include <windows.h>

namespace kwo::platform::windows {

// The list of members states the indexes as numbers, since it serves code without the system's headers as well.
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
