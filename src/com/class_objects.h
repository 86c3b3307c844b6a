#pragma once

#include <windows.h>
#include <unknwn.h>

#include <new>

#include "com/com_ptr.h"
#include "com/error_report.h"
#include "platform/component_error.h"

namespace kwo::com {

/// A creatable class: its identifier and what makes an object of it.
struct ClassEntry {
    const CLSID& classId;
    HRESULT (*make)(REFIID interfaceId, void** object) noexcept;
};

/// A new object, as the interface asked for.
template <class Object>
HRESULT Make(REFIID interfaceId, void** object) noexcept {
    try {
        Object* const made = new Object();
        const HRESULT result = made->QueryInterface(interfaceId, object);
        made->Release();
        return result;
    } catch (const platform::ComponentError& error) {
        return ToHresult(error.number);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

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
