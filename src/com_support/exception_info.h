#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

namespace kwo::com_support {

/// What a called object tells about its failure. Owns the texts in it.
class ExceptionInfo : public EXCEPINFO {
public:
    ExceptionInfo() noexcept : EXCEPINFO{} {}
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo() {
        ::SysFreeString(bstrSource);
        ::SysFreeString(bstrDescription);
        ::SysFreeString(bstrHelpFile);
    }

    /// Asks the object for the texts where it composes them only for callers that want them.
    void Complete() {
        if (const auto compose = std::exchange(pfnDeferredFillIn, nullptr)) compose(this);
    }
};

}  // namespace kwo::com_support
