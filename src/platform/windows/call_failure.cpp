#include "platform/windows/call_failure.h"

#include <wrl/client.h>

#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

namespace {

using Microsoft::WRL::ComPtr;

constexpr std::int32_t kNoNamedArguments = 446;
constexpr std::int32_t kNoSuchArgument = 448;
constexpr std::int32_t kArgumentNotOptional = 449;
constexpr std::int32_t kWrongArguments = 450;

Text SystemText(HRESULT code) {
    wchar_t* buffer = nullptr;
    constexpr DWORD kFlags =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    const DWORD length =
        ::FormatMessageW(kFlags, nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    if (length == 0) return {};
    Text text(buffer, buffer + length);
    ::LocalFree(buffer);
    while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n' || text.back() == u' '))
        text.pop_back();
    return text;
}

Text ToText(BSTR string) {
    return Text(string, string + ::SysStringLen(string));
}

/// A string that a call hands over.
class ReceivedString {
public:
    ReceivedString() = default;
    ReceivedString(const ReceivedString&) = delete;
    ReceivedString& operator=(const ReceivedString&) = delete;
    ~ReceivedString() { ::SysFreeString(mString); }
    BSTR* Out() { return &mString; }
    Text Get() const { return ToText(mString); }

private:
    BSTR mString = nullptr;
};

bool LeavesErrorObjects(IUnknown& object, const IID& interfaceId) {
    ComPtr<ISupportErrorInfo> support;
    return SUCCEEDED(object.QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(support.GetAddressOf()))) &&
           support->InterfaceSupportsErrorInfo(interfaceId) == S_OK;
}

}  // namespace

void RaiseFailure(HRESULT code) {
    switch (code) {
        case DISP_E_UNKNOWNNAME:
        case DISP_E_MEMBERNOTFOUND:
            RaiseRuntime(RuntimeError::NoSuchMember);
        case DISP_E_TYPEMISMATCH:
            RaiseRuntime(RuntimeError::TypeMismatch);
        case DISP_E_OVERFLOW:
            RaiseRuntime(RuntimeError::Overflow);
        case DISP_E_BADPARAMCOUNT:
            Raise(kWrongArguments, {}, u"Wrong number of arguments or invalid property assignment");
        case DISP_E_PARAMNOTOPTIONAL:
            Raise(kArgumentNotOptional, {}, u"Argument not optional");
        case DISP_E_PARAMNOTFOUND:
            Raise(kNoSuchArgument, {}, u"Named argument not found");
        case DISP_E_NONAMEDARGS:
            Raise(kNoNamedArguments, {}, u"Object doesn't support named arguments");
        default:
            Raise(ErrorNumber(code), {}, SystemText(code));
    }
}

void RaiseEarlyBoundFailure(HRESULT code, IUnknown& object, const IID& interfaceId) {
    ComPtr<IErrorInfo> info;
    const bool told = ::GetErrorInfo(0, info.GetAddressOf()) == S_OK;
    if (!told || !LeavesErrorObjects(object, interfaceId)) RaiseFailure(code);
    ReceivedString source;
    ReceivedString description;
    ReceivedString helpFile;
    DWORD helpContext = 0;
    info->GetSource(source.Out());
    info->GetDescription(description.Out());
    info->GetHelpFile(helpFile.Out());
    info->GetHelpContext(&helpContext);
    throw ComponentError{ErrorNumber(code), source.Get(), description.Get(), helpFile.Get(),
                         static_cast<std::int32_t>(helpContext)};
}

ExceptionInfo::~ExceptionInfo() {
    ::SysFreeString(mInfo.bstrSource);
    ::SysFreeString(mInfo.bstrDescription);
    ::SysFreeString(mInfo.bstrHelpFile);
}

void ExceptionInfo::RaiseIt() {
    // Some objects compose their texts only for callers that want them.
    if (mInfo.pfnDeferredFillIn != nullptr) mInfo.pfnDeferredFillIn(&mInfo);
    SCODE code = mInfo.scode != 0 ? mInfo.scode : mInfo.wCode;
    if (code == 0) code = DISP_E_EXCEPTION;
    throw ComponentError{ErrorNumber(code), ToText(mInfo.bstrSource), ToText(mInfo.bstrDescription),
                         ToText(mInfo.bstrHelpFile), static_cast<std::int32_t>(mInfo.dwHelpContext)};
}

}  // namespace kwo::platform::windows
