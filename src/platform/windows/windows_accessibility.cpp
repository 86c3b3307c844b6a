#include "platform/windows/windows_accessibility.h"

#include <objbase.h>

#include <iterator>

#include "platform/windows/ansi.h"
#include "platform/windows/handles.h"

namespace kwo::platform::windows {

namespace {

using com_support::ComPtr;

constexpr CLSID kService = {0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr IID kServiceInterface = {0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};

/// In the order of Property: PROPID_ACC_ROLE, STATE, NAME, VALUE, DESCRIPTION, KEYBOARDSHORTCUT, DEFAULTACTION.
constexpr MSAAPROPID kProperties[] = {
    {0xCB905FF2, 0x7BD1, 0x4C05, {0xB3, 0xC8, 0xE6, 0xC2, 0x41, 0x36, 0x4D, 0x70}},
    {0xA8D4D5B0, 0x0A21, 0x42D0, {0xA5, 0xC0, 0x51, 0x4E, 0x98, 0x4F, 0x45, 0x7B}},
    {0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}},
    {0x123FE443, 0x211A, 0x4615, {0x95, 0x27, 0xC4, 0x5A, 0x7E, 0x93, 0x71, 0x7A}},
    {0x4D48DFE4, 0xBD3F, 0x491F, {0xA6, 0x48, 0x49, 0x2D, 0x6F, 0x20, 0xC5, 0x88}},
    {0x7D9BCEEE, 0x7D1E, 0x4979, {0x93, 0x82, 0x51, 0x80, 0xF4, 0x17, 0x2C, 0x34}},
    {0x180C072B, 0xC27F, 0x43C7, {0x99, 0x22, 0xF6, 0x35, 0x62, 0xA4, 0x63, 0x2B}},
};

const MSAAPROPID& IdOf(Accessibility::Property property) {
    return kProperties[static_cast<std::size_t>(property)];
}

constexpr DWORD kClient = static_cast<DWORD>(OBJID_CLIENT);

}  // namespace

bool WindowsAccessibility::Begin(Handle window, std::int32_t role) {
    if (mIsMissing) return false;
    if (!mService) {
        ::CoCreateInstance(kService, nullptr, CLSCTX_INPROC_SERVER, kServiceInterface, mService.OutVoid());
        mIsMissing = !mService;
        if (mIsMissing) return false;
    }
    ++mAnnotated;
    if (SetNumber(window, Property::Role, role)) return true;
    End(window);
    return false;
}

bool WindowsAccessibility::SetNumber(Handle window, Property property, std::int32_t number) {
    VARIANT value = {};
    value.vt = VT_I4;
    value.lVal = number;
    const HRESULT set = mService->SetHwndProp(ToNative<HWND>(window), kClient, CHILDID_SELF, IdOf(property), value);
    if (set == E_NOTIMPL) mIsMissing = true;
    return SUCCEEDED(set);
}

bool WindowsAccessibility::SetText(Handle window, Property property, TextView text) {
    return SUCCEEDED(
        mService->SetHwndPropStr(ToNative<HWND>(window), kClient, CHILDID_SELF, IdOf(property), ToWide(text).c_str()));
}

void WindowsAccessibility::End(Handle window) noexcept {
    // The service may be in use further up the stack.
    const ComPtr<IAccPropServices> service = mService;
    service->ClearHwndProps(ToNative<HWND>(window), kClient, CHILDID_SELF, kProperties, std::size(kProperties));
    if (--mAnnotated == 0) mService.Reset();
}

void WindowsAccessibility::Notify(Handle window, std::uint32_t event) {
    ::NotifyWinEvent(event, ToNative<HWND>(window), OBJID_CLIENT, CHILDID_SELF);
}

}  // namespace kwo::platform::windows
