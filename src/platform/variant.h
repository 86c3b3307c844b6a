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
/// A share in an object of the host. Null is the null object. Used by one thread only, as the object itself.
using HostObjectRef = std::shared_ptr<HostObject>;

/// An argument that the caller left out.
/// It is not the same as Empty.
/// As an argument of a call it is passed on as left out.
struct Missing {
    friend constexpr bool operator==(Missing, Missing) = default;
};
/// A variable that has never been assigned.
struct Empty {
    Empty() = default;
    // Not trivial, on purpose. Where the library believes that a variant always holds a value, a copy that runs out of
    // memory jumps through a wild pointer (GCC 12). It does not believe so if one of the alternatives is not trivial.
    Empty(const Empty&) noexcept {}
    Empty& operator=(const Empty&) noexcept { return *this; }
    friend constexpr bool operator==(const Empty&, const Empty&) { return true; }
};
/// The value that says there is no value, as in a database field. Nothing but a variant can hold it.
struct Null {
    friend constexpr bool operator==(Null, Null) = default;
};
/// An error number as a value: it is passed on, not raised.
/// A run-time error is its small number, any other an HRESULT.
struct ErrorValue {
    std::int32_t number = 0;
    friend constexpr bool operator==(ErrorValue, ErrorValue) = default;
};

/// A value of a kind that the logic has no use for (a decimal, an array ...).
/// The logic passes it on; only the shell that made it knows what it is. It never changes.
class ForeignValue {
public:
    virtual ~ForeignValue() = default;
};
using ForeignRef = std::shared_ptr<const ForeignValue>;

/// An array of 16-bit numbers for another component. `lowerBound` is the index of its first item.
struct Int16Array final : ForeignValue {
    std::int32_t lowerBound = 0;
    std::vector<std::int16_t> items;
};
/// An array of texts for another component. `lowerBound` is the index of its first item.
struct TextArray final : ForeignValue {
    std::int32_t lowerBound = 0;
    std::vector<Text> items;
};

/// A value with its type, as automation passes it.
/// It owns what it holds; objects are shared, not copied. A null HostObjectRef is the null object. It is Empty at
/// first.
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

/// An argument of HostObject::Notify.
struct Argument {
    /// What the callee gets; after the call, what it has written, if it could.
    Variant value;
    /// Whether the callee may change it, or is offered only its value.
    bool byReference = true;
};

/// An object of the host (form, control, font, picture) or of another component, reached by the names of its members.
/// The object decides whether upper and lower case differ; most ignore it.
///
///     form->Let(u"Caption", Text(u"Ready"));
///     const Variant left = form->Get(u"Left");
///     form->Call(u"Refresh");
///
/// Each call raises what the object raises, with the object's own number, source and description. A member that the
/// object lacks raises NoSuchMember (438). Lack of memory, also the object's own, is std::bad_alloc.
///
/// A call may run any code of the host, which may call this component again and release objects. So each call holds
/// the object until it returns. Read fields again after a call.
///
/// Use an object only on the thread that it came to. The platform makes objects; the logic only keeps references.
class HostObject : public std::enable_shared_from_this<HostObject> {
public:
    /// An object is shared by HostObjectRef and never copied: its identity counts.
    HostObject() = default;
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;
    virtual ~HostObject() = default;

    /// Reads a property, with `arguments` if it is an indexed one.
    /// A method without arguments may be called in the same way.
    Variant Get(TextView member, std::span<const Variant> arguments = {}) {
        const auto held = Held();
        return DoGet(member, arguments);
    }
    /// Assigns a value to a property. Assign objects with Set.
    void Let(TextView member, const Variant& value) {
        const auto held = Held();
        DoLet(member, value);
    }
    /// Assigns an object to a property; null is the null object.
    /// A property that only takes values gets the object as one.
    void Set(TextView member, HostObjectRef value) {
        const auto held = Held();
        DoSet(member, value);
    }
    /// Calls a method with its arguments by value, the first one first. Returns its result, Empty if it has none.
    Variant Call(TextView member, std::span<const Variant> arguments = {}) {
        const auto held = Held();
        return DoCall(member, arguments);
    }
    /// Use Notify for arguments that the callee may change.
    Variant Call(TextView member, std::span<Variant> arguments) = delete;
    /// Calls a procedure that the host's author wrote, for example OnChangeDate.
    ///
    ///     Argument arguments[] = {{box}, {date}, {false}};
    ///     form->Notify(u"OnChangeDate", arguments);
    ///     const bool refused = conversions.ToBoolean(arguments[2].value);
    ///
    /// The procedure may write into the arguments by reference, even if it then fails.
    /// It runs once, whatever types it gives its parameters, as long as the values fit them. If it accepts none of the
    /// types that can be offered, an error is raised and it has not run.
    /// If it writes a value that does not fit the type of the argument, TypeMismatch or Overflow is raised and the
    /// arguments stay as they were.
    Variant Notify(TextView member, std::span<Argument> arguments) {
        const auto held = Held();
        return DoNotify(member, arguments);
    }
    /// Calls a method with named arguments, all by reference.
    /// `names` and `arguments` stand in the same order and are equally many; else error 450 is raised. A name that the
    /// method lacks raises 448, an object that takes no names 446.
    /// What the method writes is in `arguments` after a call that succeeds.
    Variant CallNamed(TextView member, std::span<const TextView> names, std::span<Variant> arguments) {
        const auto held = Held();
        return DoCallNamed(member, names, arguments);
    }

    /// True if both are the same object, by identity: two references that come from different interfaces of one object
    /// are the same.
    bool IsSameAs(const HostObject& other) const {
        const auto held = Held();
        const auto heldOther = other.Held();
        return DoIsSameAs(other);
    }
    /// Whether the object has a member of that name, property or method.
    /// False also if the object cannot tell. Does not use the member.
    bool Knows(TextView member) {
        const auto held = Held();
        return DoKnows(member);
    }
    /// The name of the object's type, such as "PictureBox"; empty if it has no type information.
    /// Raises nothing of the object's.
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
