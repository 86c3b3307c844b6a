#include "kwocheck/windows/object_creation.h"

#include <windows.h>
#include <oleauto.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/exception_info.h"
#include "com_support/owned_variant.h"
#include "kwocheck/windows/known_classes.h"

namespace kwocheck {

namespace {

using kwo::com_support::Bstr;
using kwo::com_support::ComPtr;
using kwo::com_support::ExceptionInfo;
using kwo::com_support::OwnedVariant;

OwnedVariant Whole(LONG number) {
    OwnedVariant value;
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

/// See Trial::arguments.
OwnedVariant ArgumentOf(char letter) {
    OwnedVariant value;
    switch (letter) {
        case 'r':
            // Handles are passed as 32-bit numbers.
            return Whole(static_cast<LONG>(reinterpret_cast<LONG_PTR>(HKEY_CURRENT_USER)));
        case 'n':
            return Whole(0);
        case 's':
            value.bstrVal = Bstr(std::wstring_view()).Detach();
            value.vt = VT_BSTR;
            return value;
        case 'd':
            value.vt = VT_DATE;
            value.date = 0;
            return value;
        default:
            value.vt = VT_DISPATCH;
            value.pdispVal = nullptr;
            return value;
    }
}

Text SystemText(HRESULT code) {
    wchar_t text[512];
    DWORD length = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                    static_cast<DWORD>(code), 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r' || text[length - 1] == L'.'))
        --length;
    return {text, text + length};
}

Creation Failed(Creation::Result result, HRESULT code, Text reason = {}) {
    if (reason.empty()) reason = SystemText(code);
    return {result, static_cast<std::uint32_t>(code), std::move(reason)};
}

Creation CallMember(IDispatch& object, const Trial& trial) {
    auto* name = const_cast<wchar_t*>(trial.member);
    DISPID id = DISPID_UNKNOWN;
    HRESULT status = object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(status)) return Failed(Creation::Result::kNoAnswer, status);

    // The last argument comes first.
    const std::string_view letters = trial.arguments;
    std::vector<OwnedVariant> arguments;
    std::transform(letters.rbegin(), letters.rend(), std::back_inserter(arguments), ArgumentOf);
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    OwnedVariant result;
    ExceptionInfo exception;
    status =
        object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, trial.flags, &parameters, result.Out(), &exception, nullptr);
    if (SUCCEEDED(status)) return {};
    if (status != DISP_E_EXCEPTION) return Failed(Creation::Result::kNoAnswer, status);
    exception.Complete();
    return Failed(Creation::Result::kNoAnswer, exception.scode, kwo::com_support::ToText(exception.bstrDescription));
}

}  // namespace

Creation CreateAndCall(const KnownClass& known) {
    const Trial& trial = TrialOf(known);
    const Text name = known.ProgId();
    CLSID id{};
    HRESULT status = ::CLSIDFromProgID(reinterpret_cast<const wchar_t*>(name.c_str()), &id);
    if (FAILED(status)) return Failed(Creation::Result::kNoName, status);
    ComPtr<IDispatch> object;
    status = ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutVoid());
    if (FAILED(status)) return Failed(Creation::Result::kNoObject, status);
    return CallMember(*object, trial);
}

}  // namespace kwocheck
