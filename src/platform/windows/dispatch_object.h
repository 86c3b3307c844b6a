#pragma once

#include <windows.h>
#include <oleauto.h>

#include <map>
#include <vector>

#include "com_support/com_ptr.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

/// A caller's automation object, reached through IDispatch. Remembers the ids of the members it was asked for, never a
/// value. `MakeHostObject` makes one.
///
/// Raises what the object raised: its own number where it filled the exception in; 438 for a member it does not have,
/// 13, 6 and 450 for what it refuses of the arguments, 446, 448 and 449 for what it refuses of their names; any other
/// failure with the code as its number and the system's text.
class DispatchObject final : public DispatchReference {
public:
    /// Adds a reference to `dispatch`.
    explicit DispatchObject(IDispatch& dispatch) : mDispatch(&dispatch) {}

    IDispatch* Dispatch() const override { return mDispatch.Get(); }

    /// For objects whose identifiers the system fixes: asking for the name can take long.
    void SetKnownId(TextView member, DISPID id) { mIds.insert_or_assign(Text(member), Ids{id}); }

private:
    /// The member's id, followed by those of its arguments.
    using Ids = std::vector<DISPID>;

    Variant DoGet(TextView member, std::span<const Variant> arguments) override;
    void DoLet(TextView member, const Variant& value) override;
    void DoSet(TextView member, const HostObjectRef& value) override;
    Variant DoCall(TextView member, std::span<const Variant> arguments) override;
    /// Passes the arguments as they are given: values, and references to their types. Objects of script engines get
    /// references to variants, because they write into no others. An object that refuses the types gets those of its
    /// type information, and at last those that hosts without such information may expect. If none are accepted,
    /// the arguments stay as they were; a procedure that has run and failed may have written into them.
    Variant DoNotify(TextView member, std::span<Argument> arguments) override;
    /// Passes references to variants and, if those are refused, references to the types of the values.
    Variant DoCallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) override;
    bool DoIsSameAs(const HostObject& other) const override;
    bool DoKnows(TextView member) override;
    Text DoTypeName() const override;

    Ids IdsOf(TextView member, std::span<const TextView> names = {});
    Ids AskForIds(TextView member, std::span<const TextView> names) const;
    com_support::ComPtr<IDispatch> mDispatch;
    std::map<Text, Ids, std::less<>> mIds;
};

}  // namespace kwo::platform::windows
