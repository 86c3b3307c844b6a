#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

namespace kwo::com_support {

/// What an object reports about its failure: the last argument but one of IDispatch::Invoke.
/// Owns the texts in it.
///
///     ExceptionInfo exception;
///     const HRESULT code = object->Invoke(id, IID_NULL, locale, flags, &parameters, &result, &exception, nullptr);
///     if (code == DISP_E_EXCEPTION) exception.Complete();
class ExceptionInfo : public EXCEPINFO {
public:
    /// Begins with no code and no texts.
    ExceptionInfo() noexcept : EXCEPINFO{} {}
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    /// Frees the texts, whoever put them there.
    ~ExceptionInfo() {
        ::SysFreeString(bstrSource);
        ::SysFreeString(bstrDescription);
        ::SysFreeString(bstrHelpFile);
    }

    /// Asks the object for the texts if it composes them only on request.
    /// Call it before you read them; a second call does nothing. It runs code of the object.
    void Complete() {
        if (const auto compose = std::exchange(pfnDeferredFillIn, nullptr)) compose(this);
    }
};

}  // namespace kwo::com_support
