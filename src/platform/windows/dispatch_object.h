#pragma once

#include <windows.h>
#include <oleauto.h>

#include <map>
#include <vector>

#include "com_support/com_ptr.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

/// A caller's automation object, reached through IDispatch.
/// MakeHostObject makes one. It remembers the ids of the members it was asked for, never a value.
///
/// Raises what the object raised: its own number where it filled the exception in; 438 for a member it does not have;
/// 13, 6 and 450 for what it refuses of the arguments; 446, 448 and 449 for what it refuses of their names; any other
/// failure with the code as its number and the system's text, or the texts that a script's object leaves on the thread.
///
/// Reads ask for a method and a property at once, so an object may answer either. Names are asked for in the user's
/// locale; script objects that know names only by their extended interface (IDispatchEx) are asked there.
class DispatchObject final : public DispatchReference {
public:
    /// Adds a reference to `dispatch`. The last share in this object releases it, on the thread that lets go.
    explicit DispatchObject(IDispatch& dispatch) : mDispatch(&dispatch) {}

    /// The object. The caller gets no reference of its own.
    IDispatch* Dispatch() const override { return mDispatch.Get(); }

    /// Sets the id of a member in advance.
    /// For objects whose identifiers the system fixes: asking for the name can take long.
    void SetKnownId(TextView member, DISPID id) { mIds.insert_or_assign(Text(member), Ids{id}); }

private:
    /// The member's id, followed by those of its arguments.
    using Ids = std::vector<DISPID>;

    Variant DoGet(TextView member, std::span<const Variant> arguments) override;
    void DoLet(TextView member, const Variant& value) override;
    void DoSet(TextView member, const HostObjectRef& value) override;
    /// As DoGet: a method and a property are asked for at once.
    Variant DoCall(TextView member, std::span<const Variant> arguments) override;
    /// Passes the arguments as they are given: values, and references to their types.
    /// Objects of script engines get references to variants, because they write into no others. An object that refuses
    /// the types gets those of its type information, and at last those that hosts without such information may expect.
    /// If none are accepted, the arguments stay as they were; a procedure that has run and failed may have written into
    /// them.
    Variant DoNotify(TextView member, std::span<Argument> arguments) override;
    /// Passes references to variants and, if those are refused, references to the types of the values.
    Variant DoCallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) override;
    /// By COM's rule: two references are one object if IUnknown is the same.
    bool DoIsSameAs(const HostObject& other) const override;
    bool DoKnows(TextView member) override;
    /// From the object's type information; empty if it gives none.
    Text DoTypeName() const override;

    /// The ids of a member and its arguments, asked for once. Raises what GetIDsOfNames reports.
    Ids IdsOf(TextView member, std::span<const TextView> names = {});
    /// Asks the object, by IDispatch or else by IDispatchEx. Runs code of it.
    Ids AskForIds(TextView member, std::span<const TextView> names) const;
    /// Released with this object.
    com_support::ComPtr<IDispatch> mDispatch;
    /// By member and argument names as they were asked for, separated by zero characters.
    std::map<Text, Ids, std::less<>> mIds;
};

}  // namespace kwo::platform::windows
