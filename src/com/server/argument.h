#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/dispatch_table.h"

namespace kwo::com {

/// One argument of a late-bound call on its way to a member and back: a place that holds a value of the member's type,
/// which is the caller's own variable where that has the right type, else a converted copy.
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

    /// After the call: converts a changed value to the type of the caller's variable.
    HRESULT ConvertBack(LCID locale) noexcept;
    /// Puts it there. Cannot fail.
    void WriteBack() noexcept;

private:
    HRESULT PrepareMissing(const Parameter& parameter) noexcept;
    HRESULT PrepareVariant(const Parameter& parameter, VARIANT* held, bool fromVariable) noexcept;
    HRESULT PrepareArray(const Parameter& parameter, VARIANT* held, bool fromVariable, LCID locale) noexcept;
    HRESULT PrepareArrayOfVariants(const Parameter& parameter, VARIANT* held, bool fromVariable, LCID locale) noexcept;
    HRESULT PrepareObject(const Parameter& parameter, VARIANT* held, bool fromVariable) noexcept;
    HRESULT PrepareConverted(const Parameter& parameter, VARIANT* held, bool fromVariable, LCID locale) noexcept;
    HRESULT Remember(VARIANT* held, bool fromVariable) noexcept;
    bool HasChanged() const noexcept;

    void* mPointer;
    VARIANT mValue;
    VARIANT mBefore;   ///< the value as it was passed; only with mTarget
    VARIANT* mTarget;  ///< the caller's variable; null when there is nothing to write back
    bool mOwnsValue;
    bool mChanged;
};

}  // namespace kwo::com
