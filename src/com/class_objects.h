#pragma once

#include "com/server/class_factory.h"
#include "com/server/class_info.h"

namespace kwo::com {

/// The classes of the component.
/// Each function is defined beside the shell of its class, so that no header has to show a shell.
/// kClasses in dll.cpp lists them; a class that is missing there cannot be created.
ClassEntry RegistryClass();
ClassEntry UtilityClass();
ClassEntry SplitterVClass();
ClassEntry PicBtnClass();
ClassEntry SysParamsClass();
ClassEntry SysTrayClass();
ClassEntry SysMetricsClass();
ClassEntry MonthViewClass();
ClassEntry TimerClass();
/// Empty reference implementations of the callback interfaces; programs may create them.
ClassEntry TimerCallbackClass();
ClassEntry AlarmCallbackClass();

/// What all objects with a callback interface share, also the stand-ins for script objects.
/// May be called on any thread; the result lives as long as the program.
ClassInfo& TimerCallbackInfo();
ClassInfo& AlarmCallbackInfo();

}  // namespace kwo::com
