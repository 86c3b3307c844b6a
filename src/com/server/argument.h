#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/dispatch_table.h"

namespace kwo::com {

/// One argument of a late-bound call on its way to a member and back.
///
/// What comes from a variable of the caller's is always copied, and a changed copy is written back after the call: the
/// caller's code may run meanwhile and give the variable another value or another type. Alone an array behind a
/// reference of its own type is used where it stands, for it may be one that cannot be replaced.
///
/// Left uninitialised until Prepare, so that a frame of many costs nothing; Clear ends what Prepare began.
class PassedArgument {
public:
    /// `source` is what the caller sent, null for an argument left out. Returns a standard automation error when it
    /// does not fit `parameter`; nothing needs to be cleared then.
    HRESULT Prepare(const Parameter& parameter, VARIANT* source, LCID locale) noexcept;
    void Clear() noexcept;

    /// What the member is called with.
    void* Value() const { return mPointer; }

    /// After the call: converts a changed value to the type that the caller's variable has now.
    HRESULT ConvertBack(LCID locale) noexcept;
    /// Puts it there. Cannot fail.
    void WriteBack() noexcept;

private:
    HRESULT PrepareMissing(const Parameter& parameter) noexcept;
    HRESULT PrepareArray(const Parameter& parameter, VARIANT& held, VARIANT* source, LCID locale) noexcept;
    HRESULT CopyFor(const Parameter& parameter, VARIANT& held, LCID locale) noexcept;
    HRESULT CopyObject(const Parameter& parameter, VARIANT& held) noexcept;
    HRESULT Remember(VARIANT* source) noexcept;
    void WriteBackAlways(VARIANT* source) noexcept;
    bool HasChanged() const noexcept;

    void* mPointer;
    VARIANT mValue;
    VARIANT mBefore;        ///< the value as it was passed; only with mSource
    VARIANT* mSource;       ///< what leads to the caller's variable; null when there is nothing to write back
    VARTYPE mVariableType;  ///< what the variable held when the value was converted back
    bool mOwnsValue;
    bool mChanged;
};

}  // namespace kwo::com
