#pragma once

#include "com/server/class_factory.h"
#include "com/server/class_info.h"

namespace kwo::com {

ClassEntry RegistryClass();
ClassEntry UtilityClass();
ClassEntry SplitterVClass();
ClassEntry PicBtnClass();
ClassEntry SysParamsClass();
ClassEntry SysTrayClass();
ClassEntry SysMetricsClass();
ClassEntry MonthViewClass();
ClassEntry TimerClass();
ClassEntry TimerCallbackClass();
ClassEntry AlarmCallbackClass();

/// What all objects with a callback interface share.
ClassInfo& TimerCallbackInfo();
ClassInfo& AlarmCallbackInfo();

}  // namespace kwo::com
