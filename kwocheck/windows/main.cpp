#include <windows.h>
#include <objbase.h>

#include <new>
#include <string_view>

#include "kwocheck/findings.h"
#include "kwocheck/message_file_check.h"
#include "kwocheck/report.h"
#include "kwocheck/survey.h"
#include "kwocheck/windows/known_classes.h"
#include "kwocheck/windows/kwocheck_version.h"
#include "kwocheck/windows/windows_system.h"
#include "kwohost/output.h"

namespace {

using namespace kwocheck;

constexpr wchar_t kUsage[] =
    L"usage: kwocheck                      checks how KWOUtil is installed, and creates each class\r\n"
    L"       kwocheck message-file PATH    checks a message file\r\n"
    L"The exit code is 0 if there is no problem, 1 if there are problems, and 2 if nothing could be checked.\r\n";

void Write(TextView text) {
    kwohost::Output(STD_OUTPUT_HANDLE).Write({reinterpret_cast<const wchar_t*>(text.data()), text.size()});
}

/// A double click gives the program a console of its own, which closes when the program ends.
void LetTheReaderRead() {
    DWORD processes[2];
    DWORD mode = 0;
    const HANDLE keyboard = ::GetStdHandle(STD_INPUT_HANDLE);
    const bool isSeen = ::GetConsoleMode(keyboard, &mode) != FALSE &&
                        ::GetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), &mode) != FALSE;
    if (!isSeen || ::GetConsoleProcessList(processes, 2) != 1) return;
    Write(u"\r\nPress Enter to close this window.");
    wchar_t key = 0;
    DWORD read = 0;
    ::ReadConsoleW(keyboard, &key, 1, &read, nullptr);
}

ExitCode CheckInstallation() {
    WindowsSystem system(KWOCHECK_VERSION);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const Facts facts = Survey(system, KnownLibraries());
    CoUninitialize();
    const std::vector<Finding> findings = FindingsOf(facts);
    Write(ReportOf(facts, findings));
    return ExitCodeOf(findings);
}

ExitCode CheckFile(std::wstring_view path) {
    WindowsSystem system(KWOCHECK_VERSION);
    const MessageFileFacts file = CheckMessageFile(system, {path.begin(), path.end()});
    Write(ReportOf(file));
    return ExitCodeOf(file);
}

ExitCode Run(int count, wchar_t** words) {
    if (count == 1) {
        const ExitCode code = CheckInstallation();
        LetTheReaderRead();
        return code;
    }
    if (count == 3 && words[1] == std::wstring_view(L"message-file")) return CheckFile(words[2]);
    kwohost::Output(STD_ERROR_HANDLE).Write(kUsage);
    return ExitCode::kCannotCheck;
}

}  // namespace

int wmain(int count, wchar_t** words) {
    // No box about a drive without a disk or a DLL that is missing: the report tells.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    try {
        return static_cast<int>(Run(count, words));
    } catch (const std::bad_alloc&) {
        kwohost::Output(STD_ERROR_HANDLE).Write(L"kwocheck: out of memory\r\n");
        return static_cast<int>(ExitCode::kCannotCheck);
    }
}
