// The loader's entry into each of our DLLs. Code called from here runs under the loader's lock: it must not wait and
// must leave nothing behind in the host.

#include <windows.h>

#include "com/server/class_info.h"
#include "com/server/module.h"
#include "com/server/runtime.h"

namespace kwo::com {

namespace {

void Unload() {
    OnUnload();
    ClassInfo::ForgetTables();
    GiveBackRuntime();
}

}  // namespace

}  // namespace kwo::com

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* processEnds) {
    if (reason == DLL_THREAD_DETACH) kwo::com::OnThreadEnd();
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) kwo::com::Unload();
    return TRUE;
}
