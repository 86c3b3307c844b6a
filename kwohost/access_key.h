#pragma once

#include <windows.h>

#include <string_view>

namespace kwohost {

/// A letter as it is compared with others: in upper case.
inline wchar_t UpperCase(wchar_t letter) {
    return static_cast<wchar_t>(reinterpret_cast<ULONG_PTR>(CharUpperW(reinterpret_cast<LPWSTR>(ULONG_PTR{letter}))));
}

/// The access key of a caption, in upper case: what follows the first single `&`. 0 if there is none.
/// `&&` stands for the character itself.
inline wchar_t AccessKeyOf(std::wstring_view caption) {
    for (std::size_t at = 0; at + 1 < caption.size(); ++at) {
        if (caption[at] != L'&') continue;
        if (caption[++at] != L'&') return UpperCase(caption[at]);
    }
    return 0;
}

}  // namespace kwohost
