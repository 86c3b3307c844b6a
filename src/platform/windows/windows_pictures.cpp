#include "platform/windows/windows_pictures.h"

#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include "com_support/com_ptr.h"
#include "com_support/exception_info.h"
#include "com_support/variant_conversion.h"
#include "platform/component_error.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

namespace {

using com_support::ComPtr;

ComPtr<IDispatch> DispatchOf(HostObject& picture) {
    const auto* const reference = dynamic_cast<const DispatchReference*>(&picture);
    if (reference == nullptr) RaiseRuntime(RuntimeError::ObjectRequired);
    return ComPtr<IDispatch>(reference->Dispatch());
}

std::int32_t PropertyOf(const ComPtr<IDispatch>& picture, DISPID id) {
    DISPPARAMS none = {};
    com_support::ExceptionInfo exception;
    com_support::OwnedVariant value;
    HRESULT code =
        picture->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, &exception, nullptr);
    if (code == DISP_E_EXCEPTION) RaiseException(exception);
    LONG number = 0;
    if (SUCCEEDED(code)) code = com_support::To32Bits(number, value, LOCALE_USER_DEFAULT);
    if (FAILED(code)) RaiseFailure(code);
    return number;
}

}  // namespace

std::int32_t WindowsPictures::Type(HostObject& picture) {
    // The picture may release its holder's reference during the call.
    const ComPtr<IDispatch> dispatch = DispatchOf(picture);
    const auto early = dispatch.As<IPicture>();
    SHORT type = PICTYPE_UNINITIALIZED;
    if (!early) return PropertyOf(dispatch, DISPID_PICT_TYPE);
    const HRESULT code = early->get_Type(&type);
    if (FAILED(code)) RaiseEarlyBoundFailure(code, *early, IID_IPicture);
    return type;
}

Handle WindowsPictures::NativeHandle(HostObject& picture) {
    const ComPtr<IDispatch> dispatch = DispatchOf(picture);
    const auto early = dispatch.As<IPicture>();
    OLE_HANDLE handle = 0;
    if (!early) return PropertyOf(dispatch, DISPID_PICT_HANDLE);
    const HRESULT code = early->get_Handle(&handle);
    if (FAILED(code)) RaiseEarlyBoundFailure(code, *early, IID_IPicture);
    return static_cast<Handle>(handle);
}

}  // namespace kwo::platform::windows
