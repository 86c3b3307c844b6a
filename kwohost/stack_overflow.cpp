#include "stack_overflow.h"

#include <windows.h>

#include "output.h"

namespace kwohost {

namespace {

/// Enough to write one line.
constexpr ULONG kReservedBytes = 64 * 1024;

/// Global, because an exception handler has no other way to its data.
struct Guard {
    std::wstring report;
    Output errors{STD_ERROR_HANDLE};
    UINT exitCode = 0;
};
Guard* guard = nullptr;

LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers) {
    if (pointers->ExceptionRecord->ExceptionCode != EXCEPTION_STACK_OVERFLOW) return EXCEPTION_CONTINUE_SEARCH;
    // The engine's calls cannot be unwound from here, and code that runs when an object is released has no stack left.
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
