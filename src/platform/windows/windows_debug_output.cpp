#include "platform/windows/windows_debug_output.h"

#include <windows.h>

#include "platform/windows/ansi.h"

namespace kwo::platform::windows {

void WindowsDebugOutput::Write(TextView line) {
    ::OutputDebugStringA(ToAnsi(line).c_str());
}

}  // namespace kwo::platform::windows
