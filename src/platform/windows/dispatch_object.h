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
    explicit DispatchObject(IDispatch& dispatch) : mDispatch(&dispatch) {}

    IDispatch* Dispatch() const override { return mDispatch.Get(); }

    /// For objects whose identifiers are part of the platform: spares asking for the name, which can be dear.
    void SetKnownId(TextView member, DISPID id) { mIds.insert_or_assign(Text(member), Ids{id}); }

private:
    /// The member's id, followed by those of its arguments.
    using Ids = std::vector<DISPID>;

    Variant DoGet(TextView member, std::span<const Variant> arguments) override;
    void DoLet(TextView member, const Variant& value) override;
    void DoSet(TextView member, const HostObjectRef& value) override;
    Variant DoCall(TextView member, std::span<const Variant> arguments) override;
    /// The arguments go as they are given: values, and references to their types. Script engines' objects write into
    /// references to variants alone and get those. Who refuses the types gets what its type information asks for, and
    /// at last what hosts without such information may want. A failing call leaves the arguments as they were.
    Variant DoNotify(TextView member, std::span<Argument> arguments) override;
    /// References to variants, then to the types of what the arguments hold.
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
