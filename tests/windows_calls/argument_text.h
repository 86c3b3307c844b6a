#pragma once

#include <windows.h>
#include <oleauto.h>
#include <olectl.h>
#include <shellapi.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace kwo::windows_calls {

/// How an argument is written in the record of a call. Numbers are decimal, texts stand in quotation marks, handles
/// after a number sign, and the fields of records in braces. What the callee only writes is "out".
std::string TextOf(const char* text);
std::string TextOf(const wchar_t* text);
std::string TextOf(const RECT* area);
std::string TextOf(const POINT* point);
std::string TextOf(const GUID& id);
std::string TextOf(const SECURITY_ATTRIBUTES* security);
std::string TextOf(const STARTUPINFOW* start);
std::string TextOf(const NOTIFYICONDATAA* record);
std::string TextOf(const FONTDESC* font);
std::string TextOf(const OSVERSIONINFOA* version);
std::string TextOf(const INPUT* input);
std::string TextOf(const FILETIME* time);
std::string TextOf(const SYSTEMTIME* time);
/// What a buffer size or another number is when the callee gets it.
std::string TextOf(const DWORD* number);
std::string TextOfHandle(const void* handle);
std::string TextOfBytes(const void* bytes, std::size_t size);

/// Stands for any value of an argument where records are compared.
struct Any {};
/// Stands for a pointer to what the callee writes.
struct Out {};
/// What the data of a call must be.
struct Bytes {
    std::string bytes;
};
inline std::string TextOf(const Bytes& expected) {
    return TextOfBytes(expected.bytes.data(), expected.bytes.size());
}
inline std::string TextOf(Any) {
    return "*";
}
inline std::string TextOf(Out) {
    return "out";
}

template <class Value>
std::string Written(const Value& value);

template <class Value>
constexpr bool kIsHandle =
    std::is_same_v<Value, HWND> || std::is_same_v<Value, HDC> || std::is_same_v<Value, HKEY> ||
    std::is_same_v<Value, HBRUSH> || std::is_same_v<Value, HPEN> || std::is_same_v<Value, HANDLE> ||
    std::is_same_v<Value, const void*> || std::is_same_v<Value, HICON> || std::is_same_v<Value, HMENU> ||
    std::is_same_v<Value, HMODULE>;

template <class Value>
constexpr bool kIsDescribed =
    std::is_same_v<Value, RECT> || std::is_same_v<Value, POINT> || std::is_same_v<Value, SECURITY_ATTRIBUTES> ||
    std::is_same_v<Value, STARTUPINFOW> || std::is_same_v<Value, NOTIFYICONDATAA> || std::is_same_v<Value, FONTDESC> ||
    std::is_same_v<Value, OSVERSIONINFOA> || std::is_same_v<Value, INPUT> || std::is_same_v<Value, FILETIME> ||
    std::is_same_v<Value, SYSTEMTIME> || std::is_same_v<Value, DWORD>;

template <class Value>
std::string Written(const Value& value) {
    using Type = std::decay_t<Value>;
    if constexpr (std::is_array_v<Value>) {  // a text as it stands in the source
        return TextOf(static_cast<const std::remove_extent_t<Value>*>(value));
    } else if constexpr (std::is_same_v<Type, Any> || std::is_same_v<Type, Out> || std::is_same_v<Type, Bytes> ||
                         std::is_same_v<Type, GUID>) {
        return TextOf(value);
    } else if constexpr (std::is_same_v<Type, const char*> || std::is_same_v<Type, const wchar_t*>) {
        return TextOf(static_cast<Type>(value));
    } else if constexpr (std::is_same_v<Type, std::nullptr_t>) {
        return "null";
    } else if constexpr (std::is_same_v<Type, std::string>) {
        return TextOf(value.c_str());
    } else if constexpr (std::is_integral_v<Type> || std::is_enum_v<Type>) {
        return std::to_string(static_cast<std::int64_t>(value));
    } else if constexpr (std::is_floating_point_v<Type>) {
        return std::to_string(value);
    } else if constexpr (kIsHandle<Type>) {
        return TextOfHandle(value);
    } else if constexpr (std::is_pointer_v<Type>) {
        using Pointed = std::remove_cv_t<std::remove_pointer_t<Type>>;
        if constexpr (std::is_function_v<Pointed>) {
            return value == nullptr ? "null" : "function";
        } else if constexpr (kIsDescribed<Pointed>) {
            return value == nullptr ? "null" : TextOf(static_cast<const Pointed*>(value));
        } else {
            return value == nullptr ? "null" : "out";
        }
    } else {
        return "value";
    }
}

}  // namespace kwo::windows_calls
