#include "com/server/com_text.h"

#include <algorithm>
#include <new>

namespace kwo::com {

BSTR NewString(TextView text) {
    const BSTR string = ::SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
    if (string == nullptr) throw std::bad_alloc();
    std::copy(text.begin(), text.end(), string);
    return string;
}

void Replace(BSTR& string, TextView text) {
    const BSTR fresh = NewString(text);
    ::SysFreeString(string);
    string = fresh;
}

}  // namespace kwo::com
