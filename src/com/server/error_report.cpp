#include "com/server/error_report.h"

#include "com/server/com_values.h"

namespace kwo::com {

namespace {

constexpr std::uint32_t kRuntimeErrors = 0x800A0000;

/// Null for an empty text, and if there is no memory.
Bstr StringOrNull(TextView text) noexcept {
    try {
        return text.empty() ? Bstr() : Bstr(text);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

/// Sets the thread's error object. False if it is not there with all its parts.
bool SetErrorObject(const platform::ComponentError& error, TextView source, const IID& interfaceId) noexcept {
    ComPtr<ICreateErrorInfo> made;
    if (FAILED(::CreateErrorInfo(made.Out()))) return false;
    made->SetGUID(interfaceId);
    made->SetSource(StringOrNull(source).Get());
    made->SetDescription(StringOrNull(error.description).Get());
    made->SetHelpFile(StringOrNull(error.helpFile).Get());
    made->SetHelpContext(static_cast<DWORD>(error.helpContext));
    const auto info = made.As<IErrorInfo>();
    return info && SUCCEEDED(::SetErrorInfo(0, info.Get()));
}

}  // namespace

HRESULT ToHresult(std::int32_t number) {
    constexpr std::int32_t kLargestRuntimeError = 0xFFFF;
    if (number < 0) return number;
    if (number == 0 || number > kLargestRuntimeError) return E_UNEXPECTED;
    return static_cast<HRESULT>(kRuntimeErrors + static_cast<std::uint32_t>(number));
}

HRESULT ReportToCaller(const platform::ComponentError& error, const MemberName& member) noexcept {
    try {
        const Text source = error.source.empty() ? Text(member.className) + Text(member.member) : error.source;
        if (!SetErrorObject(error, source, *member.interfaceId)) ::SetErrorInfo(0, nullptr);
    } catch (const std::bad_alloc&) {
        ::SetErrorInfo(0, nullptr);
    }
    return ToHresult(error.number);
}

HRESULT ReportToCaller(HRESULT failure, TextView description, const MemberName& member) noexcept {
    try {
        return ReportToCaller(platform::ComponentError{failure, {}, Text(description), {}, 0}, member);
    } catch (const std::bad_alloc&) {
        ::SetErrorInfo(0, nullptr);
        return failure;
    }
}

void FillExceptionInfo(HRESULT failure, EXCEPINFO& info) noexcept {
    info = {};
    info.scode = failure;
    ComPtr<IErrorInfo> error;
    if (::GetErrorInfo(0, error.Out()) != S_OK) return;
    error->GetSource(&info.bstrSource);
    error->GetDescription(&info.bstrDescription);
    error->GetHelpFile(&info.bstrHelpFile);
    error->GetHelpContext(&info.dwHelpContext);
}

}  // namespace kwo::com
