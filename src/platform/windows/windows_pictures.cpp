#include "platform/windows/windows_pictures.h"

#include <windows.h>
#include <ocidl.h>
#include <olectl.h>
#include <wrl/client.h>

#include "platform/component_error.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

namespace {

using Microsoft::WRL::ComPtr;

ComPtr<IDispatch> DispatchOf(HostObject& picture) {
    const auto* const reference = dynamic_cast<const DispatchReference*>(&picture);
    if (reference == nullptr) RaiseRuntime(RuntimeError::ObjectRequired);
    return reference->Dispatch();
}

ComPtr<IPicture> EarlyBound(const ComPtr<IDispatch>& dispatch) {
    ComPtr<IPicture> picture;
    dispatch->QueryInterface(IID_IPicture, reinterpret_cast<void**>(picture.GetAddressOf()));
    return picture;
}

/// Handles come as 32-bit numbers, by some objects as wider ones: the low 32 bits count.
std::int32_t WholeNumber(OwnedVariant& value) {
    OwnedVariant wide;
    const HRESULT code = ::VariantChangeTypeEx(wide.Out(), &value.Get(), LOCALE_USER_DEFAULT, 0, VT_I8);
    if (FAILED(code)) RaiseFailure(code);
    return static_cast<std::int32_t>(wide.Get().llVal);
}

std::int32_t PropertyOf(const ComPtr<IDispatch>& picture, DISPID id) {
    DISPPARAMS none = {};
    ExceptionInfo exception;
    OwnedVariant value;
    const HRESULT code = picture->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.Out(),
                                         exception.Out(), nullptr);
    if (code == DISP_E_EXCEPTION) exception.RaiseIt();
    if (FAILED(code)) RaiseFailure(code);
    return WholeNumber(value);
}

}  // namespace

std::int32_t WindowsPictures::Type(HostObject& picture) {
    // The picture may let go of its holder's reference while it is asked.
    const ComPtr<IDispatch> dispatch = DispatchOf(picture);
    const ComPtr<IPicture> early = EarlyBound(dispatch);
    SHORT type = PICTYPE_UNINITIALIZED;
    if (early.Get() == nullptr) return PropertyOf(dispatch, DISPID_PICT_TYPE);
    const HRESULT code = early->get_Type(&type);
    if (FAILED(code)) RaiseEarlyBoundFailure(code, *early.Get(), IID_IPicture);
    return type;
}

Handle WindowsPictures::NativeHandle(HostObject& picture) {
    const ComPtr<IDispatch> dispatch = DispatchOf(picture);
    const ComPtr<IPicture> early = EarlyBound(dispatch);
    OLE_HANDLE handle = 0;
    if (early.Get() == nullptr) return PropertyOf(dispatch, DISPID_PICT_HANDLE);
    const HRESULT code = early->get_Handle(&handle);
    if (FAILED(code)) RaiseEarlyBoundFailure(code, *early.Get(), IID_IPicture);
    return static_cast<Handle>(handle);
}

}  // namespace kwo::platform::windows
