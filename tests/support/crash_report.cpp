// Linked into every program of tests for Windows: when it crashes or ends by abort, it prints where, before it ends.
//
// Each frame is printed as MODULE+0xOFFSET. tools/name_frames.sh finds functions and lines in the build folder.

#include <windows.h>
// after <windows.h>
#include <dbghelp.h>

#include <csignal>
#include <cstdio>
#include <cstring>

namespace kwo::test_support {
namespace {

constexpr int kMostFrames = 64;

#ifdef _WIN64
constexpr DWORD kMachine = IMAGE_FILE_MACHINE_AMD64;
#else
constexpr DWORD kMachine = IMAGE_FILE_MACHINE_I386;
#endif

/// The system's library that walks stacks; loaded when it is needed.
struct StackWalker {
    decltype(&::SymInitialize) initialize = nullptr;
    decltype(&::StackWalk64) walk = nullptr;
    decltype(&::SymFunctionTableAccess64) functionTable = nullptr;
    decltype(&::SymGetModuleBase64) moduleBase = nullptr;

    bool Load() {
        HMODULE library = LoadLibraryW(L"dbghelp.dll");
        return Find(library, "SymInitialize", initialize) && Find(library, "StackWalk64", walk) &&
               Find(library, "SymFunctionTableAccess64", functionTable) &&
               Find(library, "SymGetModuleBase64", moduleBase) && initialize(GetCurrentProcess(), nullptr, TRUE);
    }

private:
    template <class Function>
    static bool Find(HMODULE library, const char* name, Function& function) {
        function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
        return function != nullptr;
    }
};

void PrintFrame(DWORD64 address) {
    HMODULE module = nullptr;
    char path[MAX_PATH] = "";
    constexpr DWORD kByAddress = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    const auto place = reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(address));
    if (!GetModuleHandleExA(kByAddress, place, &module) || GetModuleFileNameA(module, path, MAX_PATH) == 0) {
        std::fprintf(stderr, "    at 0x%llx\n", address);
        return;
    }
    const char* const slash = std::strrchr(path, '\\');
    std::fprintf(stderr, "    at %s+0x%llx\n", slash != nullptr ? slash + 1 : path,
                 address - reinterpret_cast<ULONG_PTR>(module));
}

/// After a call through a null pointer: the caller's state.
void LeaveNullFunction(CONTEXT& context) {
#ifdef _WIN64
    if (context.Rip != 0) return;
    context.Rip = *reinterpret_cast<DWORD64*>(context.Rsp);
    context.Rsp += sizeof(DWORD64);
#else
    if (context.Eip != 0) return;
    context.Eip = *reinterpret_cast<DWORD*>(context.Esp);
    context.Esp += sizeof(DWORD);
#endif
}

/// Prints the frames from `context` outwards. A return address is printed as one byte before it: that is in the call.
void PrintStack(CONTEXT context) {
    StackWalker system;
    if (!system.Load()) return;
    LeaveNullFunction(context);
    STACKFRAME64 frame = {};
    frame.AddrPC.Mode = frame.AddrFrame.Mode = frame.AddrStack.Mode = AddrModeFlat;
#ifdef _WIN64
    frame.AddrPC.Offset = context.Rip;
    frame.AddrFrame.Offset = context.Rbp;
    frame.AddrStack.Offset = context.Rsp;
#else
    frame.AddrPC.Offset = context.Eip;
    frame.AddrFrame.Offset = context.Ebp;
    frame.AddrStack.Offset = context.Esp;
#endif
    for (int index = 0; index < kMostFrames; ++index) {
        if (!system.walk(kMachine, GetCurrentProcess(), GetCurrentThread(), &frame, &context, nullptr,
                         system.functionTable, system.moduleBase, nullptr) ||
            frame.AddrPC.Offset == 0) {
            break;
        }
        PrintFrame(frame.AddrPC.Offset - (index == 0 ? 0 : 1));
    }
    std::fflush(stderr);
}

LONG CALLBACK OnCrash(EXCEPTION_POINTERS* exception) {
    std::fprintf(stderr, "Crash: exception 0x%08lx at %p on thread %lu (%d-bit)\n",
                 exception->ExceptionRecord->ExceptionCode, exception->ExceptionRecord->ExceptionAddress,
                 GetCurrentThreadId(), static_cast<int>(sizeof(void*) * 8));
    PrintStack(*exception->ContextRecord);
    return EXCEPTION_CONTINUE_SEARCH;
}

void OnAbort(int) {
    std::fprintf(stderr, "Crash: abort on thread %lu (%d-bit)\n", GetCurrentThreadId(),
                 static_cast<int>(sizeof(void*) * 8));
    CONTEXT here = {};
    here.ContextFlags = CONTEXT_FULL;
    RtlCaptureContext(&here);
    PrintStack(here);
    TerminateProcess(GetCurrentProcess(), 3);  // the exit code of abort
}

const bool gWatching = [] {
    SetUnhandledExceptionFilter(OnCrash);
    std::signal(SIGABRT, OnAbort);
    return true;
}();

}  // namespace
}  // namespace kwo::test_support
