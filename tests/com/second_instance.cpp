#include "second_instance.h"

#include <gtest/gtest.h>

#include <string>

#include "com_support/module_path.h"

namespace kwo::com_test {

DWORD ExitCodeOfThisProgram(const char* argument) {
    const std::wstring program = com_support::ModulePath(nullptr);
    const std::string narrow = argument;
    std::wstring line = L"\"" + program + L"\" " + std::wstring(narrow.begin(), narrow.end());
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &started)) {
        ADD_FAILURE() << "this program cannot be started again, error " << GetLastError();
        return 0;
    }
    WaitForSingleObject(started.hProcess, 60'000);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(started.hProcess, &code);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return code;
}

}  // namespace kwo::com_test
