#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "error_report.h"
#include "fault_guard.h"
#include "narrator.h"
#include "output.h"
#include "run_script.h"
#include "script_object.h"
#include "source_file.h"
#include "stack_overflow.h"

namespace {

using namespace kwohost;

constexpr int kScriptFailed = 1;
constexpr int kCannotStart = 2;
constexpr int kFault = 3;
constexpr wchar_t kUsage[] =
    L"usage: kwohost [--read] script.vbs|script.js [arguments...]\r\n"
    L"Runs a VBScript or JScript file. The exit code is the script's (WScript.Quit), 1 after an error in the "
    L"script,\r\n"
    L"2 when there is no script that can be read, 3 after a fault of the engine or a component.\r\n"
    L"--read also writes what screen readers are told.\r\n";

}  // namespace

int wmain(int count, wchar_t** words) {
    Output errors(STD_ERROR_HANDLE);
    Output output(STD_OUTPUT_HANDLE);
    const bool reads = count > 1 && std::wstring_view(words[1]) == L"--read";
    if (reads) {
        --count;
        ++words;
    }
    if (count < 2) {
        errors.Write(kUsage);
        return kCannotStart;
    }
    try {
        SourceFile source = ReadSource(words[1]);
        if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) throw std::bad_alloc();
        GuardStack(Format({source.path, 0, 0, ToResult(RuntimeError::OutOfStackSpace), kErrorSource,
                           L"Out of stack space: a procedure calls itself without end"}) +
                       L"\r\n",
                   kScriptFailed);
        GuardAgainstFaults(source, kFault);
        std::optional<Narrator> narrator;
        if (reads) narrator.emplace(output);
        const int exitCode = RunScript(std::move(source), {words + 2, words + count});
        narrator.reset();
        CoUninitialize();
        return exitCode;
    } catch (const UnreadableSource& reason) {
        errors.Write(L"kwohost: " + reason.message + L"\r\n");
    } catch (const std::bad_alloc&) {
        errors.Write(L"kwohost: out of memory\r\n");
    }
    return kCannotStart;
}
