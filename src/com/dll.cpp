// The classes of this DLL, and what it does when a thread ends or the DLL is unloaded.

#include "com/apartment.h"
#include "com/class_objects.h"
#include "com/server/module.h"

namespace kwo::com {

namespace {

constexpr ClassSource kClasses[] = {
    RegistryClass,   UtilityClass,   SplitterVClass, PicBtnClass,        SysParamsClass,     SysTrayClass,
    SysMetricsClass, MonthViewClass, TimerClass,     TimerCallbackClass, AlarmCallbackClass,
};

}  // namespace

std::span<const ClassSource> Classes() {
    return kClasses;
}

void OnThreadEnd() noexcept {
    Apartments::Instance().ThreadEnded();
}

void OnUnload() noexcept {
    Apartments::Instance().EndAll();
}

}  // namespace kwo::com
