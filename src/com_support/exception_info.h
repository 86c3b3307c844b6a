#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

namespace kwo::com_support {

/// What an object reports about its failure. Owns the texts in it.
class ExceptionInfo : public EXCEPINFO {
public:
    /// Begins with no code and no texts.
    ExceptionInfo() noexcept : EXCEPINFO{} {}
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo() {
        ::SysFreeString(bstrSource);
        ::SysFreeString(bstrDescription);
        ::SysFreeString(bstrHelpFile);
    }

    /// Asks the object for the texts if it composes them only on request.
    void Complete() {
        if (const auto compose = std::exchange(pfnDeferredFillIn, nullptr)) compose(this);
    }
};

}  // namespace kwo::com_support
