#include "platform/windows/windows_component_factory.h"

#include <windows.h>
#include <objbase.h>

#include <new>

#include "com_support/com_ptr.h"
#include "platform/component_error.h"
#include "platform/windows/ansi.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

HostObjectRef WindowsComponentFactory::Create(TextView programmaticId) {
    CLSID classId;
    com_support::ComPtr<IDispatch> object;
    HRESULT status = ::CLSIDFromProgID(ToWide(programmaticId).c_str(), &classId);
    if (SUCCEEDED(status)) {
        status = ::CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutVoid());
        // Asked for both kinds at once, the system tells of the second kind when the first is out of memory.
        if (FAILED(status) && status != E_OUTOFMEMORY) {
            constexpr DWORD kElsewhere = CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;
            status = ::CoCreateInstance(classId, nullptr, kElsewhere, IID_IDispatch, object.OutVoid());
        }
    }
    if (status == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(status) || !object) RaiseRuntime(RuntimeError::CannotCreateObject);
    return MakeHostObject(object.Get());
}

}  // namespace kwo::platform::windows
