// What the system asks of the DLL as a whole.

#include <array>

#include "com/apartment.h"
#include "com/class_objects.h"

namespace kwo::com {

std::span<const ClassEntry> Classes() {
    static const std::array classes = {
        RegistryClass(),  UtilityClass(),       SplitterVClass(),     PicBtnClass(),
        SysParamsClass(), SysTrayClass(),       SysMetricsClass(),    MonthViewClass(),
        TimerClass(),     TimerCallbackClass(), AlarmCallbackClass(),
    };
    return classes;
}

}  // namespace kwo::com

using kwo::com::Apartments;

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* processEnds) {
    Apartments& apartments = Apartments::Instance();
    if (reason == DLL_PROCESS_ATTACH) apartments.Attach();
    if (reason == DLL_THREAD_DETACH) apartments.ThreadEnded();
    // When the process ends its other threads are gone already, whatever they held.
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) apartments.Detach();
    return TRUE;
}
