#include "platform/windows/call_failure.h"

#include <memory>
#include <new>

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

namespace {

using com_support::Bstr;
using com_support::ToText;

constexpr std::int32_t kNoNamedArguments = 446;
constexpr std::int32_t kNoSuchArgument = 448;
constexpr std::int32_t kArgumentNotOptional = 449;
constexpr std::int32_t kWrongArguments = 450;

struct FreeLocal {
    void operator()(wchar_t* text) const { ::LocalFree(text); }
};

Text SystemText(HRESULT code) {
    wchar_t* buffer = nullptr;
    constexpr DWORD kFlags =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    const DWORD length =
        ::FormatMessageW(kFlags, nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    if (length == 0) return {};
    const std::unique_ptr<wchar_t, FreeLocal> owner(buffer);
    Text text(buffer, buffer + length);
    while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n' || text.back() == u' '))
        text.pop_back();
    return text;
}

bool LeavesErrorObjects(IUnknown& object, const IID& interfaceId) {
    const auto support = com_support::As<ISupportErrorInfo>(&object);
    return support && support->InterfaceSupportsErrorInfo(interfaceId) == S_OK;
}

/// Raises the error for a code of the call itself. Returns if the code is another one.
void RaiseFailureOfTheCall(HRESULT code) {
    switch (code) {
        case DISP_E_UNKNOWNNAME:
        case DISP_E_MEMBERNOTFOUND:
            RaiseRuntime(RuntimeError::NoSuchMember);
        case DISP_E_TYPEMISMATCH:
        case DISP_E_BADVARTYPE:
            RaiseRuntime(RuntimeError::TypeMismatch);
        case DISP_E_OVERFLOW:
            RaiseRuntime(RuntimeError::Overflow);
        case E_OUTOFMEMORY:
            throw std::bad_alloc();
        case DISP_E_BADPARAMCOUNT:
            Raise(kWrongArguments, {}, u"Wrong number of arguments or invalid property assignment");
        case DISP_E_PARAMNOTOPTIONAL:
            Raise(kArgumentNotOptional, {}, u"Argument not optional");
        case DISP_E_PARAMNOTFOUND:
            Raise(kNoSuchArgument, {}, u"Named argument not found");
        case DISP_E_NONAMEDARGS:
            Raise(kNoNamedArguments, {}, u"Object doesn't support named arguments");
        default:
            return;
    }
}

ComponentError Explained(HRESULT code, IErrorInfo& explanation) {
    Bstr source;
    Bstr description;
    Bstr helpFile;
    DWORD helpContext = 0;
    explanation.GetSource(source.Out());
    explanation.GetDescription(description.Out());
    explanation.GetHelpFile(helpFile.Out());
    explanation.GetHelpContext(&helpContext);
    return {ErrorNumber(code), ToText(source.Get()), ToText(description.Get()), ToText(helpFile.Get()),
            static_cast<std::int32_t>(helpContext)};
}

/// The error object stays with the thread: whoever has left it may look whether it was taken.
com_support::ComPtr<IErrorInfo> ErrorObjectOfTheThread() {
    com_support::ComPtr<IErrorInfo> object;
    if (::GetErrorInfo(0, object.Out()) == S_OK) ::SetErrorInfo(0, object.Get());
    return object;
}

}  // namespace

void RaiseFailure(HRESULT code) {
    RaiseFailureOfTheCall(code);
    Raise(ErrorNumber(code), {}, SystemText(code));
}

void RaiseEarlyBoundFailure(HRESULT code, IUnknown& object, const IID& interfaceId) {
    com_support::ComPtr<IErrorInfo> info;
    const bool told = ::GetErrorInfo(0, info.Out()) == S_OK;
    if (!told || code == E_OUTOFMEMORY || !LeavesErrorObjects(object, interfaceId)) RaiseFailure(code);
    throw Explained(code, *info.Get());
}

ScriptObjectFailure::ScriptObjectFailure() : mBefore(ErrorObjectOfTheThread()) {}

void ScriptObjectFailure::Raise(HRESULT code) const {
    RaiseFailureOfTheCall(code);
    const auto left = ErrorObjectOfTheThread();
    if (!left || left.Get() == mBefore.Get()) RaiseFailure(code);
    throw Explained(code, *left.Get());
}

void RaiseException(com_support::ExceptionInfo& exception) {
    // Some objects compose their texts only for callers that want them.
    exception.Complete();
    SCODE code = exception.scode != 0 ? exception.scode : exception.wCode;
    if (code == 0) code = DISP_E_EXCEPTION;
    if (code == E_OUTOFMEMORY) throw std::bad_alloc();
    throw ComponentError{ErrorNumber(code), ToText(exception.bstrSource), ToText(exception.bstrDescription),
                         ToText(exception.bstrHelpFile), static_cast<std::int32_t>(exception.dwHelpContext)};
}

}  // namespace kwo::platform::windows
