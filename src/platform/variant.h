#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <variant>
#include <vector>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

class HostObject;
using HostObjectRef = std::shared_ptr<HostObject>;

/// An argument that the caller left out. It is not the same as Empty.
struct Missing {
    friend constexpr bool operator==(Missing, Missing) = default;
};
/// A variable that has never been assigned.
struct Empty {
    friend constexpr bool operator==(Empty, Empty) = default;
};
/// The value that says there is no value.
struct Null {
    friend constexpr bool operator==(Null, Null) = default;
};
/// An error number as a value: it is passed on, not raised.
struct ErrorValue {
    std::int32_t number = 0;
    friend constexpr bool operator==(ErrorValue, ErrorValue) = default;
};

/// A value of a kind that the logic has no use for (a decimal, an array ...). The logic passes it on; only the shell
/// that made it knows what it is.
class ForeignValue {
public:
    virtual ~ForeignValue() = default;
};
using ForeignRef = std::shared_ptr<const ForeignValue>;

/// An array of 16-bit numbers for another component.
struct Int16Array final : ForeignValue {
    std::int32_t lowerBound = 0;
    std::vector<std::int16_t> items;
};
/// An array of texts for another component.
struct TextArray final : ForeignValue {
    std::int32_t lowerBound = 0;
    std::vector<Text> items;
};

/// A value with its type. A null HostObjectRef is the null object.
using Variant = std::variant<Empty, Missing, Null, std::int16_t, std::int32_t, float, double, Currency, Date, Text,
                             bool, std::uint8_t, ErrorValue, HostObjectRef, ForeignRef>;

/// True for an argument that the caller left out.
inline bool IsMissing(const Variant& value) {
    return std::holds_alternative<Missing>(value);
}

/// True if the value holds an object; false for the null object.
inline bool IsObject(const Variant& value) {
    const auto* object = std::get_if<HostObjectRef>(&value);
    return object != nullptr && *object != nullptr;
}

/// An argument of HostObject::Notify: the callee may change it, or is offered only its value.
struct Argument {
    Variant value;
    bool byReference = true;
};

/// An object of the host (form, control, font, picture) or of another component, reached by the names of its members.
///
/// Each call raises what the object raises, with the object's own number, source and description. A member that the
/// object lacks raises NoSuchMember.
///
/// A call may run any code of the host, which may call this component again and release objects. So each call holds the
/// object until it returns. Read fields again after a call.
class HostObject : public std::enable_shared_from_this<HostObject> {
public:
    HostObject() = default;
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;
    virtual ~HostObject() = default;

    /// Reads a property.
    Variant Get(TextView member, std::span<const Variant> arguments = {}) {
        const auto held = Held();
        return DoGet(member, arguments);
    }
    /// Assigns a value to a property.
    void Let(TextView member, const Variant& value) {
        const auto held = Held();
        DoLet(member, value);
    }
    /// Assigns an object to a property; null is the null object.
    void Set(TextView member, HostObjectRef value) {
        const auto held = Held();
        DoSet(member, value);
    }
    /// Calls a method with its arguments by value.
    Variant Call(TextView member, std::span<const Variant> arguments = {}) {
        const auto held = Held();
        return DoCall(member, arguments);
    }
    /// Use Notify for arguments that the callee may change.
    Variant Call(TextView member, std::span<Variant> arguments) = delete;
    /// Calls a procedure that the host's author wrote, for example OnChangeDate. It may write into the arguments by
    /// reference, even if it then fails. It runs once, whatever types it gives its parameters, as long as they fit.
    Variant Notify(TextView member, std::span<Argument> arguments) {
        const auto held = Held();
        return DoNotify(member, arguments);
    }
    /// Calls a method with named arguments, all by reference. `names` and `arguments` stand in the same order.
    Variant CallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) {
        const auto held = Held();
        return DoCallNamed(member, names, arguments);
    }

    /// True if both are the same object, by identity.
    bool IsSameAs(const HostObject& other) const {
        const auto held = Held();
        const auto heldOther = other.Held();
        return DoIsSameAs(other);
    }
    /// Whether the object has a member of that name.
    bool Knows(TextView member) {
        const auto held = Held();
        return DoKnows(member);
    }
    /// The name of the object's type; empty if it has no type information.
    Text TypeName() const {
        const auto held = Held();
        return DoTypeName();
    }

private:
    /// A reference for the length of a call. Null for an object that nobody shares, which no release can end.
    std::shared_ptr<const HostObject> Held() const { return weak_from_this().lock(); }

    /// What the platforms implement. The public call of the same name holds the object meanwhile.
    virtual Variant DoGet(TextView member, std::span<const Variant> arguments) = 0;
    virtual void DoLet(TextView member, const Variant& value) = 0;
    virtual void DoSet(TextView member, const HostObjectRef& value) = 0;
    virtual Variant DoCall(TextView member, std::span<const Variant> arguments) = 0;
    virtual Variant DoNotify(TextView member, std::span<Argument> arguments) = 0;
    virtual Variant DoCallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) = 0;
    virtual bool DoIsSameAs(const HostObject& other) const = 0;
    virtual bool DoKnows(TextView member) = 0;
    virtual Text DoTypeName() const = 0;
};

}  // namespace kwo::platform
