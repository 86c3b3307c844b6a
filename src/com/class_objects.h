#pragma once

#include "com/server/class_factory.h"

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

}  // namespace kwo::com
