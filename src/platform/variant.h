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

/// An argument the caller left out. Not the same as Empty.
struct Missing {
    friend constexpr bool operator==(Missing, Missing) = default;
};
struct Empty {
    friend constexpr bool operator==(Empty, Empty) = default;
};
struct Null {
    friend constexpr bool operator==(Null, Null) = default;
};
/// An error as a value: a number that is passed on, not raised.
struct ErrorValue {
    std::int32_t number = 0;
    friend constexpr bool operator==(ErrorValue, ErrorValue) = default;
};

/// A value of a kind that the logic has no use for (a decimal, an array ...). It is carried from where it came to
/// where it goes; only the shell that made one knows what it is.
class ForeignValue {
public:
    virtual ~ForeignValue() = default;
};
using ForeignRef = std::shared_ptr<const ForeignValue>;

/// Arrays of the kinds that the logic hands to other components. They travel as foreign values do.
struct Int16Array final : ForeignValue {
    std::int32_t lowerBound = 0;
    std::vector<std::int16_t> items;
};
struct TextArray final : ForeignValue {
    std::int32_t lowerBound = 0;
    std::vector<Text> items;
};

/// A tagged value. A null `HostObjectRef` is the null object.
using Variant = std::variant<Empty, Missing, Null, std::int16_t, std::int32_t, float, double, Currency, Date, Text,
                             bool, std::uint8_t, ErrorValue, HostObjectRef, ForeignRef>;

inline bool IsMissing(const Variant& value) {
    return std::holds_alternative<Missing>(value);
}

/// True for a value that holds an object; the null object is none.
inline bool IsObject(const Variant& value) {
    const auto* object = std::get_if<HostObjectRef>(&value);
    return object != nullptr && *object != nullptr;
}

/// An argument that a callee is offered by reference, as a rule of the call says, or only as a value.
struct Argument {
    Variant value;
    bool byReference = true;
};

/// A caller's object (form, control, font, picture, component), reached by member name.
///
/// Every call raises what the object raised, with the object's own number, source and description; a member it does
/// not have is NoSuchMember.
///
/// Whatever is asked of it, the object may first call the component again, which then may let go of it. So every use
/// holds the object until it is over; who keeps one in a field needs no reference of its own for the call.
class HostObject : public std::enable_shared_from_this<HostObject> {
public:
    HostObject() = default;
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;
    virtual ~HostObject() = default;

    Variant Get(TextView member, std::span<const Variant> arguments = {}) {
        const auto held = Held();
        return DoGet(member, arguments);
    }
    void Let(TextView member, const Variant& value) {
        const auto held = Held();
        DoLet(member, value);
    }
    void Set(TextView member, HostObjectRef value) {
        const auto held = Held();
        DoSet(member, value);
    }
    /// A method of a control, with its arguments by value.
    Variant Call(TextView member, std::span<const Variant> arguments = {}) {
        const auto held = Held();
        return DoCall(member, arguments);
    }
    /// What may be written to is no value: such arguments go to Notify.
    Variant Call(TextView member, std::span<Variant> arguments) = delete;
    /// A procedure that a caller wrote to be asked: it may write into the arguments by reference. Whatever types it has
    /// given its parameters, it runs once if they can take the arguments at all.
    Variant Notify(TextView member, std::span<Argument> arguments) {
        const auto held = Held();
        return DoNotify(member, arguments);
    }
    /// A method with its arguments named, in the order of `names`. All go by reference.
    Variant CallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) {
        const auto held = Held();
        return DoCallNamed(member, names, arguments);
    }

    /// True when both are the same object, by identity.
    bool IsSameAs(const HostObject& other) const {
        const auto held = Held();
        const auto heldOther = other.Held();
        return DoIsSameAs(other);
    }
    /// Whether it has a member of that name.
    bool Knows(TextView member) {
        const auto held = Held();
        return DoKnows(member);
    }
    /// The name of the object's type, empty when it has no type information.
    Text TypeName() const {
        const auto held = Held();
        return DoTypeName();
    }

private:
    /// Null for an object that is not shared, whose end nobody can cause by letting go.
    std::shared_ptr<const HostObject> Held() const { return weak_from_this().lock(); }

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
