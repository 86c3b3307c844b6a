#pragma once

#include <functional>
#include <map>
#include <set>
#include <optional>
#include <vector>

#include "platform/component_error.h"
#include "platform/simulated/log.h"
#include "platform/variant.h"

namespace kwo::platform::simulated {

/// A caller's object of named properties and scripted methods, members found without regard to case. What is let, set
/// and called stands in the log, as `Let Left 1500` or, with a label, `Let pane.Left 1500`.
class SimulatedObject final : public HostObject {
public:
    using Method = std::function<Variant(std::span<Variant>)>;

    explicit SimulatedObject(Log& log, Text typeName = {}, std::string label = {});

    /// Makes the property or changes it, unseen by the log.
    void SetProperty(TextView name, Variant value);
    /// From now on the property keeps its value, whatever it is let.
    void FixProperty(TextView name);
    /// The property's value, unseen by the log; nothing when there is none.
    std::optional<Variant> Property(TextView name) const;
    /// Makes a method; changes that it makes to arguments by reference reach the caller. With named arguments it gets
    /// as many as `parameters` has, in that order, Missing where the caller gave none. A property with arguments is a
    /// method.
    void SetMethod(TextView name, Method method, std::vector<Text> parameters = {});
    /// From now on every use of the member raises `error`, whether there is such a member or not.
    void FailMember(TextView name, ComponentError error);
    void MendMember(TextView name);

    /// Reads are too many to be in every test's way.
    bool logsReads = false;
    /// Runs at the beginning of every use, questions for names and types included: a host's own code may do anything
    /// before it answers, also let go of this object.
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
    void Used() const;
    void Record(std::string_view verb, TextView member, const std::string& rest);
    void RaiseIfFailing(TextView member) const;
    Method MethodNamed(TextView member) const;

    Log& mLog;
    Text mTypeName;
    std::string mLabel;
    std::map<Text, Variant> mProperties;
    std::set<Text> mFixed;
    std::map<Text, Scripted> mMethods;
    std::map<Text, ComponentError> mFailures;
};

}  // namespace kwo::platform::simulated
