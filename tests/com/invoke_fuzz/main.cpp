// Calls the component as a hostile and careless client does, in sequences that follow from a seed alone.
//     invoke_fuzz SEED COUNT [SECONDS]
// runs the sequences SEED, SEED + 1 ... and stops at the first that breaks something, after COUNT of them, or when the
// time is up. The exit code is 0 if nothing broke. KWO_DIST names the folder of KWOUtil.dll.

#include <windows.h>
#include <oleauto.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>

#include "box_answerer.h"
#include "world.h"

namespace kwo::invoke_fuzz {
namespace {

constexpr DWORD kLongestMs = 20'000;
constexpr int kBroken = 1;
constexpr int kCrashed = 3;
constexpr int kHangs = 4;
constexpr wchar_t kKey[] = L"Software\\KWOUtilInvokeFuzz";

// The message of a crash or hang needs them when nothing else can be relied on.
volatile unsigned long long theSeed = 0;
volatile DWORD theStart = 0;
const char* volatile theAction = "";
wchar_t theName[64] = L"";
World* theWorld = nullptr;

void Tell(const char* what, const std::wstring& name) {
    theAction = what;
    std::wcsncpy(theName, name.c_str(), std::size(theName) - 1);
}

void Print(const char* what) {
    std::printf("seed %llu: %s: %s %ls\n", static_cast<unsigned long long>(theSeed), what, theAction, theName);
    std::fflush(stdout);
}

[[noreturn]] void End(int code) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::abort();
}

void Fail(const char* what) {
    std::printf("seed %llu: does not hold: %s: %s %ls\n", static_cast<unsigned long long>(theSeed), what, theAction,
                theName);
    std::fflush(stdout);
    End(kBroken);
}

LONG CALLBACK OnCrash(EXCEPTION_POINTERS* exception) {
    std::printf("exception 0x%08lX at %p\n", exception->ExceptionRecord->ExceptionCode,
                exception->ExceptionRecord->ExceptionAddress);
    Print("crash");
    End(kCrashed);
}

DWORD WINAPI Watch(void*) {
    constexpr DWORD kLookMs = 500;
    for (;;) {
        Sleep(kLookMs);
        if (GetTickCount() - theStart < kLongestMs) continue;
        Print("hangs");
        End(kHangs);
    }
}

/// The user's finger does not stay on an arrow for ever.
void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (theWorld != nullptr) theWorld->ReleaseArrows();
}

/// What cannot be had ends the program.
void Need(bool condition, const char* what) {
    if (condition) return;
    std::printf("invoke_fuzz: %s\n", what);
    std::fflush(stdout);
    End(2);
}

void Prepare(Surroundings& surroundings) {
    constexpr UINT kFingerMs = 40;
    Need(static_cast<bool>(surroundings.library), "KWO_DIST names no folder with KWOUtil.dll");
    surroundings.classes = ReadClasses(com_test::DllPath());
    Need(surroundings.classes.size() == 11, "the type library does not describe the eleven classes");
    HKEY keeper = nullptr;
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    Need(RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &surroundings.key, nullptr) ==
             ERROR_SUCCESS,
         "there is no registry key");
    // A key below keeps the key itself from being deleted under an empty name.
    RegCreateKeyExW(surroundings.key, L"keeper", 0, nullptr, 0, KEY_READ, nullptr, &keeper, nullptr);
    RegCloseKey(keeper);
    // A window with this title counts as a running program, so that none is started.
    surroundings.window = CreateWindowExW(0, L"STATIC", L"probe", WS_POPUP | WS_VISIBLE, 0, 0, 133, 200, nullptr,
                                          nullptr, GetModuleHandleW(nullptr), nullptr);
    surroundings.context = CreateCompatibleDC(nullptr);
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    now.wHour = now.wMinute = now.wSecond = now.wMilliseconds = 0;
    SystemTimeToVariantTime(&now, &surroundings.today);
    surroundings.tell = Tell;
    surroundings.fail = Fail;
    SetTimer(nullptr, 0, kFingerMs, OnTimer);
}

void Run(unsigned long long seed, unsigned long long count, DWORD seconds) {
    Surroundings surroundings;
    Prepare(surroundings);
    const com_test::BoxAnswerer boxes;
    const DWORD begun = GetTickCount();
    unsigned long long sequences = 0;
    unsigned long long calls = 0;
    while (sequences < count && (seconds == 0 || GetTickCount() - begun < seconds * 1'000)) {
        theSeed = seed + sequences;
        theStart = GetTickCount();
        World world(surroundings, theSeed);
        theWorld = &world;
        calls += static_cast<unsigned long long>(world.Run());
        theWorld = nullptr;
        ++sequences;
    }
    RegCloseKey(surroundings.key);
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    std::printf("%llu sequences from seed %llu, %llu calls, %lu ms: nothing found\n", sequences, seed, calls,
                GetTickCount() - begun);
    std::fflush(stdout);
}

}  // namespace
}  // namespace kwo::invoke_fuzz

int main(int count, char** words) {
    using namespace kwo::invoke_fuzz;
    if (count < 3) {
        std::printf("usage: invoke_fuzz SEED COUNT [SECONDS]\n");
        return 2;
    }
    SetProcessDPIAware();
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    SetUnhandledExceptionFilter(OnCrash);
    theStart = GetTickCount();
    CloseHandle(CreateThread(nullptr, 0, Watch, nullptr, 0, nullptr));
    CoInitialize(nullptr);
    Run(std::strtoull(words[1], nullptr, 10), std::strtoull(words[2], nullptr, 10),
        count > 3 ? std::strtoul(words[3], nullptr, 10) : 0);
    // Whatever the component has left running ends with the process.
    End(0);
}
