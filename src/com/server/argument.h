#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/dispatch_table.h"
#include "com_support/owned_variant.h"

namespace kwo::com {

/// One argument of a late-bound call, on its way to a member and back.
///
///     PassedArgument passed;
///     passed.Prepare(parameter, source, locale);  // then call the member with passed.Value()
///     passed.ConvertBack(locale);                 // for every argument, before
///     passed.WriteBack();                         // any is written; after a failed call, too
///
/// A value in a variable of the caller is always copied, and a changed copy is written back after the call: the
/// caller's code may run meanwhile and give the variable another value or type. A text that the member writes counts as
/// changed even if it reads the same: the variable may hold a number. Only an array behind a reference of its own type
/// is used in place, because it may be one that cannot be replaced.
class PassedArgument {
public:
    PassedArgument() = default;
    PassedArgument(const PassedArgument&) = delete;
    PassedArgument& operator=(const PassedArgument&) = delete;

    /// True for what most calls pass: a number or a text by value, in the type that the member wants.
    /// It needs no PassedArgument: the member is called with a pointer to the value in `value`.
    static bool IsSimple(const Parameter& parameter, const VARIANT& value) {
        if (value.vt != parameter.type || parameter.byReference) return false;
        return (value.vt >= VT_I2 && value.vt <= VT_BSTR) || value.vt == VT_BOOL;
    }

    /// Converts what the caller sent for `parameter`; a null `source` means that the argument was left out.
    /// Call it once. Converting may run code of the caller.
    /// If the value does not fit, returns a standard automation error: DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW,
    /// DISP_E_BADVARTYPE, DISP_E_PARAMNOTOPTIONAL or E_OUTOFMEMORY. `source` must live until WriteBack.
    HRESULT Prepare(const Parameter& parameter, VARIANT* source, LCID locale) noexcept;

    /// The pointer that the member is called with.
    /// Valid after a successful Prepare, as long as this object and `source`.
    void* Value() const { return mPointer; }

    /// False for an array that was converted for the member: whether the member has written into it is not known.
    bool CanCompare() const noexcept;
    /// After the call: converts a changed value to the type that the caller's variable has now.
    /// Does nothing if there is no variable or no change.
    HRESULT ConvertBack(LCID locale) noexcept;
    /// Writes that value into the variable and frees what was there.
    /// Cannot fail: a variable that has changed its type since ConvertBack is left alone, and so is an array that would
    /// have to change its bounds and is in use or of a fixed size.
    void WriteBack() noexcept;

private:
    /// For an argument that was left out. DISP_E_PARAMNOTOPTIONAL if it is needed.
    HRESULT PrepareMissing(const Parameter& parameter) noexcept;
    /// For an array, which is converted only between variants and the member's own type.
    HRESULT PrepareArray(const Parameter& parameter, VARIANT& held, VARIANT* source, LCID locale) noexcept;
    /// Sets mValue to what the member accepts.
    HRESULT CopyFor(const Parameter& parameter, VARIANT& held, LCID locale) noexcept;
    /// Sets mValue to the object, as the interface that the member wants if there is one.
    HRESULT CopyObject(const Parameter& parameter, VARIANT& held) noexcept;
    /// Writes changes after this back to the caller's variable.
    HRESULT Remember(VARIANT* source) noexcept;
    /// For a copy that cannot be compared.
    void WriteBackAlways(VARIANT* source) noexcept;
    /// Whether the member has written into the copy.
    bool HasChanged() const noexcept;

    void* mPointer = nullptr;
    /// The value as it was passed; only with mSource.
    com_support::OwnedVariant mBefore;
    /// A text as it was passed, to tell whether the member has put another in its place. Never read.
    BSTR mTextBefore = nullptr;
    /// The copy that is passed; empty when the caller's own value is.
    com_support::OwnedVariant mValue;
    /// What leads to the caller's variable; null when there is nothing to write back.
    VARIANT* mSource = nullptr;
    /// What the variable held when the value was converted back.
    VARTYPE mVariableType = VT_EMPTY;
    bool mChanged = false;
};

}  // namespace kwo::com
