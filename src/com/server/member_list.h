#pragma once

#include <windows.h>
#include <oleauto.h>

#include <array>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace kwo::com {

/// One member of a class as dispatch calls it.
/// A list of them stands in the order of the IDL file:
///
///     constexpr MemberThunk kMembers[] = {Member<&_KWOTimer::get_Enabled>, Member<&_KWOTimer::put_Enabled>};
struct MemberThunk {
    /// Each argument is passed as a pointer to its value, the result last.
    HRESULT (*call)(void* interfacePointer, void* const* arguments);
    /// The result included.
    std::uint8_t argumentCount;
    /// Bit n says that argument n is a handle or a colour of the system, which callers pass as any 32-bit number,
    /// signed or unsigned.
    std::uint8_t handleArguments;
};

namespace detail {

template <class Type>
struct IsInterfacePointer : std::false_type {};
template <class Type>
struct IsInterfacePointer<Type*> : std::is_base_of<IUnknown, Type> {};

/// A by-reference argument is the pointer itself; a by-value one is read through it.
template <class Type>
Type Argument(void* value) {
    static_assert(!std::is_same_v<Type, SAFEARRAY*>, "an array is passed by reference");
    if constexpr (std::is_pointer_v<Type> && !IsInterfacePointer<Type>::value && !std::is_same_v<Type, BSTR>) {
        return static_cast<Type>(value);
    } else {
        return *static_cast<Type*>(value);
    }
}

/// The call of a member from pointers to its arguments.
template <auto Method>
struct Thunk;

template <class Interface, class... Arguments, HRESULT (STDMETHODCALLTYPE Interface::*Method)(Arguments...)>
struct Thunk<Method> {
    static constexpr std::uint8_t kCount = sizeof...(Arguments);

    static HRESULT Call(void* interfacePointer, void* const* arguments) {
        return CallWith(static_cast<Interface*>(interfacePointer), arguments, std::index_sequence_for<Arguments...>());
    }

private:
    template <std::size_t... At>
    static HRESULT CallWith(Interface* object, [[maybe_unused]] void* const* arguments, std::index_sequence<At...>) {
        return (object->*Method)(Argument<Arguments>(arguments[At])...);
    }
};

}  // namespace detail

/// The entry of a member list for one member of an interface. `HandleArguments` is as in MemberThunk.
template <auto Method, std::uint8_t HandleArguments = 0>
inline constexpr MemberThunk Member = {&detail::Thunk<Method>::Call, detail::Thunk<Method>::kCount, HandleArguments};

}  // namespace kwo::com
