#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/dispatch_table.h"
#include "com_support/owned_variant.h"

namespace kwo::com {

/// One argument of a late-bound call, on its way to a member and back.
///
/// A value in a variable of the caller is always copied, and a changed copy is written back after the call: the
/// caller's code may run meanwhile and give the variable another value or type. Only an array behind a reference of its
/// own type is used in place, because it may be one that cannot be replaced.
class PassedArgument {
public:
    PassedArgument() = default;
    PassedArgument(const PassedArgument&) = delete;
    PassedArgument& operator=(const PassedArgument&) = delete;

    /// Converts what the caller sent for `parameter`; a null `source` means that the argument was left out. If it does
    /// not fit, returns a standard automation error.
    HRESULT Prepare(const Parameter& parameter, VARIANT* source, LCID locale) noexcept;

    /// The pointer that the member is called with.
    void* Value() const { return mPointer; }

    /// After the call: converts a changed value to the type that the caller's variable has now.
    HRESULT ConvertBack(LCID locale) noexcept;
    /// Writes that value into the variable. Cannot fail.
    void WriteBack() noexcept;

private:
    HRESULT PrepareMissing(const Parameter& parameter) noexcept;
    HRESULT PrepareArray(const Parameter& parameter, VARIANT& held, VARIANT* source, LCID locale) noexcept;
    HRESULT CopyFor(const Parameter& parameter, VARIANT& held, LCID locale) noexcept;
    HRESULT CopyObject(const Parameter& parameter, VARIANT& held) noexcept;
    HRESULT Remember(VARIANT* source) noexcept;
    void WriteBackAlways(VARIANT* source) noexcept;
    bool HasChanged() const noexcept;

    void* mPointer = nullptr;
    com_support::OwnedVariant mBefore;  ///< the value as it was passed; only with mSource
    com_support::OwnedVariant mValue;   ///< the copy that is passed; empty when the caller's own value is
    VARIANT* mSource = nullptr;  ///< what leads to the caller's variable; null when there is nothing to write back
    VARTYPE mVariableType = VT_EMPTY;  ///< what the variable held when the value was converted back
    bool mChanged = false;
};

}  // namespace kwo::com
