#include "platform/simulated/simulated_object.h"

#include <algorithm>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kNoSuchArgument = 448;
constexpr std::int32_t kWrongArguments = 450;

std::string List(std::span<const Variant> values) {
    std::string list;
    for (const Variant& value : values)
        list += (list.empty() ? "" : ",") + Shown(value);
    return list;
}

}  // namespace

/// One use of the object from outside: a call into the desktop.
class SimulatedObject::Use {
public:
    /// A use that cannot fail.
    explicit Use(const SimulatedObject& object) { Run(object.whenUsed); }
    /// One that can, by its name: "Get" and "hDC".
    Use(const SimulatedObject& object, std::string_view verb, TextView member) {
        Faults& faults = object.mFaults;
        if (faults.Listens()) {
            mFails = faults.EnterObject(ToUtf8(object.mTypeName) + '.' + std::string(verb) + ' ' + ToUtf8(member))
                         .has_value();
        }
        Run(object.whenUsed);
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    bool Fails() const { return mFails; }
    void RaiseIfPlanned() const {
        if (mFails) Raise(Faults::kRefusedByObject, u"Host", u"Refused.");
    }

private:
    static void Run(const std::function<void()>& whenUsed) {
        if (!whenUsed) return;
        // It may end the object, and itself with it.
        const std::function<void()> use = whenUsed;
        use();
    }

    UncountedMemory mMemory;
    bool mFails = false;
};

SimulatedObject::SimulatedObject(Log& log, Faults& faults, Text typeName, std::string label)
    : mLog(log), mFaults(faults), mTypeName(std::move(typeName)), mLabel(std::move(label)) {}

void SimulatedObject::SetProperty(TextView name, Variant value) {
    mProperties[Folded(name)] = std::move(value);
}

void SimulatedObject::FixProperty(TextView name) {
    mFixed.insert(Folded(name));
}

std::optional<Variant> SimulatedObject::Property(TextView name) const {
    const auto found = mProperties.find(Folded(name));
    if (found == mProperties.end()) return std::nullopt;
    return found->second;
}

void SimulatedObject::SetMethod(TextView name, Method method, std::vector<Text> parameters) {
    mMethods[Folded(name)] = {std::move(method), std::move(parameters)};
}

void SimulatedObject::FailMember(TextView name, ComponentError error) {
    mFailures[Folded(name)] = std::move(error);
}

void SimulatedObject::MendMember(TextView name) {
    mFailures.erase(Folded(name));
}

Variant SimulatedObject::DoGet(TextView member, std::span<const Variant> arguments) {
    const Use use(*this, "Get", member);
    use.RaiseIfPlanned();
    if (logsReads) Record("Get", member, arguments.empty() ? "" : "(" + List(arguments) + ")");
    RaiseIfFailing(member);
    if (const auto value = Property(member); value && arguments.empty()) return *value;
    std::vector<Variant> copies(arguments.begin(), arguments.end());
    return MethodNamed(member)(copies);
}

void SimulatedObject::DoLet(TextView member, const Variant& value) {
    const Use use(*this, "Let", member);
    use.RaiseIfPlanned();
    Record("Let", member, " " + Shown(value));
    RaiseIfFailing(member);
    const auto found = mProperties.find(Folded(member));
    if (found == mProperties.end()) RaiseRuntime(RuntimeError::NoSuchMember);
    if (!mFixed.contains(found->first)) found->second = value;
}

void SimulatedObject::DoSet(TextView member, const HostObjectRef& value) {
    const Use use(*this, "Set", member);
    use.RaiseIfPlanned();
    Record("Set", member, " " + Shown(Variant(value)));
    RaiseIfFailing(member);
    const auto found = mProperties.find(Folded(member));
    if (found == mProperties.end()) RaiseRuntime(RuntimeError::NoSuchMember);
    found->second = value;
}

Variant SimulatedObject::DoCall(TextView member, std::span<const Variant> arguments) {
    const UncountedMemory memory;
    std::vector<Variant> copies(arguments.begin(), arguments.end());
    return CallMethod(member, copies);
}

Variant SimulatedObject::DoNotify(TextView member, std::span<Argument> arguments) {
    const UncountedMemory memory;
    std::vector<Variant> copies;
    for (const Argument& argument : arguments)
        copies.push_back(argument.value);
    const auto writeBack = [&] {
        for (std::size_t at = 0; at < copies.size(); ++at) {
            const bool isVariable = arguments[at].byReference && !IsMissing(arguments[at].value);
            if (isVariable) arguments[at].value = copies[at];
        }
    };
    try {
        Variant result = CallMethod(member, copies);
        writeBack();
        return result;
    } catch (const ComponentError&) {
        // A procedure that fails may have written into its arguments.
        writeBack();
        throw;
    }
}

Variant SimulatedObject::CallMethod(TextView member, std::span<Variant> arguments) {
    const Use use(*this, "Call", member);
    use.RaiseIfPlanned();
    Record("Call", member, arguments.empty() ? "" : " " + List(arguments));
    RaiseIfFailing(member);
    // A method may replace itself while it runs.
    const Method method = MethodNamed(member);
    return method(arguments);
}

Variant SimulatedObject::DoCallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) {
    const Use use(*this, "Call", member);
    use.RaiseIfPlanned();
    if (names.size() != arguments.size()) {
        Raise(kWrongArguments, {}, u"Wrong number of arguments or invalid property assignment");
    }
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list += (i == 0 ? " " : ",") + ToUtf8(names[i]) + ":=" + Shown(arguments[i]);
    }
    Record("Call", member, list);
    RaiseIfFailing(member);
    const Method method = MethodNamed(member);
    const std::vector<Text> parameters = mMethods.at(Folded(member)).parameters;
    std::vector<std::size_t> places;
    for (const TextView name : names) {
        const auto found = std::find_if(parameters.begin(), parameters.end(),
                                        [name](const Text& parameter) { return Folded(parameter) == Folded(name); });
        if (found == parameters.end()) Raise(kNoSuchArgument, {}, u"Named argument not found");
        places.push_back(static_cast<std::size_t>(found - parameters.begin()));
    }
    std::vector<Variant> inOrder(parameters.size(), Missing{});
    for (std::size_t i = 0; i < places.size(); ++i)
        inOrder[places[i]] = arguments[i];
    Variant result = method(inOrder);
    for (std::size_t i = 0; i < places.size(); ++i)
        arguments[i] = inOrder[places[i]];
    return result;
}

bool SimulatedObject::DoIsSameAs(const HostObject& other) const {
    const Use use(*this);
    return this == &other;
}

bool SimulatedObject::DoKnows(TextView member) {
    const Use use(*this, "Knows", member);
    return !use.Fails() && (Property(member).has_value() || mMethods.contains(Folded(member)));
}

Text SimulatedObject::DoTypeName() const {
    const Use use(*this, "TypeName", {});
    return use.Fails() ? Text() : mTypeName;
}

void SimulatedObject::Record(std::string_view verb, TextView member, const std::string& rest) {
    mLog.Add(std::string(verb) + " " + (mLabel.empty() ? "" : mLabel + ".") + ToUtf8(member) + rest);
}

void SimulatedObject::RaiseIfFailing(TextView member) const {
    const auto found = mFailures.find(Folded(member));
    if (found != mFailures.end()) throw ComponentError(found->second);
}

SimulatedObject::Method SimulatedObject::MethodNamed(TextView member) const {
    const auto found = mMethods.find(Folded(member));
    if (found == mMethods.end()) RaiseRuntime(RuntimeError::NoSuchMember);
    return found->second.method;
}

}  // namespace kwo::platform::simulated
