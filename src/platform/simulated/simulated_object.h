#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "platform/component_error.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/log.h"
#include "platform/simulated/uncounted_memory.h"
#include "platform/variant.h"

namespace kwo::platform::simulated {

/// An object of the caller with named properties and scripted methods; upper and lower case of names are the same.
///
///     const auto form = desktop.MakeObject(u"Form");
///     form->SetProperty(u"Left", 1500.0f);
///     form->SetMethod(u"OnChangeDate", [](std::span<Variant> arguments) { arguments[2] = true; return Variant(); });
///
/// The log shows what is let, set and called, as `Let Left 1500` or, with a label, `Let pane.Left 1500`. Each use
/// counts as a call, `PictureBox.Get hDC`, that may be let fail: the object raises 380, or has no memory.
/// A property must have been set before it can be let; otherwise the use raises NoSuchMember.
class SimulatedObject final : public HostObject {
public:
    /// What a method does with its arguments, the first one first.
    /// It may raise ComponentError, as code of a host does.
    using Method = std::function<Variant(std::span<Variant>)>;

    /// An object without members.
    /// With an empty `typeName` it has no type information. `label` names it in the log, which must outlive the
    /// object, as must `faults`.
    SimulatedObject(Log& log, Faults& faults, Text typeName = {}, std::string label = {});

    /// Adds or changes a property, without a line in the log.
    void SetProperty(TextView name, Variant value);
    /// The property keeps its value from now on, whatever is assigned.
    void FixProperty(TextView name);
    /// The value of a property, without a line in the log; nothing if there is none.
    std::optional<Variant> Property(TextView name) const;
    /// Adds a method.
    /// Changes that it makes to by-reference arguments reach the caller. With named arguments it gets as many as
    /// `parameters` has, in that order; Missing for those that the caller left out. A property with arguments is a
    /// method.
    void SetMethod(TextView name, Method method, std::vector<Text> parameters = {});
    /// Every use of the member raises `error` from now on, even if there is no such member.
    void FailMember(TextView name, ComponentError error);
    /// Ends FailMember.
    void MendMember(TextView name);

    /// Whether reads are in the log; there are too many of them for most tests.
    bool logsReads = false;
    /// Runs at the beginning of every use, even of a question for a name or type: code of a host may do anything
    /// before it answers, even release this object.
    std::function<void()> whenUsed;

private:
    struct Scripted {
        Method method;
        std::vector<Text> parameters;
    };

    Variant DoGet(TextView member, std::span<const Variant> arguments) override;
    void DoLet(TextView member, const Variant& value) override;
    void DoSet(TextView member, const HostObjectRef& value) override;
    Variant DoCall(TextView member, std::span<const Variant> arguments) override;
    Variant DoNotify(TextView member, std::span<Argument> arguments) override;
    Variant DoCallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) override;
    bool DoIsSameAs(const HostObject& other) const override;
    bool DoKnows(TextView member) override;
    Text DoTypeName() const override;

    Variant CallMethod(TextView member, std::span<Variant> arguments);
    class Use;

    void Record(std::string_view verb, TextView member, const std::string& rest);
    void RaiseIfFailing(TextView member) const;
    Method MethodNamed(TextView member) const;

    Log& mLog;
    Faults& mFaults;
    Text mTypeName;
    std::string mLabel;
    std::map<Text, Variant> mProperties;
    std::set<Text> mFixed;
    std::map<Text, Scripted> mMethods;
    std::map<Text, ComponentError> mFailures;
};

}  // namespace kwo::platform::simulated
