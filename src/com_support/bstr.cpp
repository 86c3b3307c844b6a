#include "com_support/bstr.h"

#include <algorithm>
#include <new>

namespace kwo::com_support {

namespace {

template <class Character>
BSTR Copied(std::basic_string_view<Character> text) {
    const BSTR string = ::SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
    if (string == nullptr) throw std::bad_alloc();
    std::ranges::copy(text, string);
    return string;
}

}  // namespace

BSTR NewString(std::wstring_view text) {
    return Copied(text);
}

BSTR NewString(std::u16string_view text) {
    return Copied(text);
}

void Replace(BSTR& string, std::u16string_view text) {
    ::SysFreeString(std::exchange(string, NewString(text)));
}

}  // namespace kwo::com_support
