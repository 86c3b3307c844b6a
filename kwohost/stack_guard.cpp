#include "stack_guard.h"

#include <windows.h>

#include "output.h"

namespace kwohost {

namespace {

/// Enough to write one line.
constexpr ULONG kReservedBytes = 64 * 1024;

/// An exception handler has no other way to its data.
struct Guard {
    std::wstring report;
    Output errors{STD_ERROR_HANDLE};
    UINT exitCode = 0;
};
Guard* guard = nullptr;

LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers) {
    if (pointers->ExceptionRecord->ExceptionCode != EXCEPTION_STACK_OVERFLOW) return EXCEPTION_CONTINUE_SEARCH;
    // The engine's calls cannot be unwound from here, and nothing that an object does on its release has a stack.
    guard->errors.Write(guard->report);
    TerminateProcess(GetCurrentProcess(), guard->exitCode);
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void GuardStack(std::wstring report, int exitCode) {
    static Guard held;
    held.report = std::move(report);
    held.exitCode = static_cast<UINT>(exitCode);
    guard = &held;
    ULONG reserved = kReservedBytes;
    SetThreadStackGuarantee(&reserved);
    AddVectoredExceptionHandler(TRUE, OnException);
}

}  // namespace kwohost
