#pragma once

#include <windows.h>

#include <cwchar>

namespace kwo::test_support {

/// Whether the user of this machine has the language, the formats and the ANSI code page of the United States, in which
/// some tests write what they expect. They are skipped for others.
inline bool HasAmericanFormats() {
    constexpr LCID kEnglishOfTheUnitedStates = 0x0409;
    constexpr struct {
        LCTYPE what;
        const wchar_t* text;
    } kFormats[] = {{LOCALE_SDECIMAL, L"."},
                    {LOCALE_STHOUSAND, L","},
                    {LOCALE_SNEGATIVESIGN, L"-"},
                    {LOCALE_SSHORTDATE, L"M/d/yyyy"},
                    {LOCALE_SLONGDATE, L"dddd, MMMM d, yyyy"},
                    {LOCALE_STIMEFORMAT, L"h:mm:ss tt"},
                    {LOCALE_IFIRSTDAYOFWEEK, L"6"}};
    for (const auto& [what, text] : kFormats) {
        wchar_t own[80];
        if (GetLocaleInfoW(LOCALE_USER_DEFAULT, what, own, 80) == 0 || std::wcscmp(own, text) != 0) return false;
    }
    return GetUserDefaultLCID() == kEnglishOfTheUnitedStates && GetACP() == 1252;
}

}  // namespace kwo::test_support
