#include "error_report.h"

#include <cstdio>
#include <iterator>

namespace kwohost {

namespace {

/// A run-time error of a script language is passed as 0x800A0000 + number; authors know it by the number.
long ShownNumber(HRESULT code) {
    return FAILED(code) && HRESULT_FACILITY(code) == FACILITY_CONTROL ? HRESULT_CODE(code) : code;
}

std::wstring Hexadecimal(HRESULT code) {
    wchar_t text[16];
    std::swprintf(text, std::size(text), L"0x%08lX", static_cast<unsigned long>(code));
    return text;
}

/// Codes that members of automation objects return. Not every system has texts for them.
struct AutomationText {
    HRESULT code;
    const wchar_t* text;
};
constexpr AutomationText kAutomationTexts[] = {
    {DISP_E_MEMBERNOTFOUND, L"Member not found"},
    {DISP_E_UNKNOWNNAME, L"Unknown name"},
    {DISP_E_NONAMEDARGS, L"Named arguments are not supported"},
    {DISP_E_TYPEMISMATCH, L"Type mismatch"},
    {DISP_E_OVERFLOW, L"Out of range"},
    {DISP_E_BADPARAMCOUNT, L"Wrong number of arguments"},
    {DISP_E_PARAMNOTOPTIONAL, L"An argument is missing"},
};

/// Run-time errors of the script languages. Components return some of them without a text, and not every engine has
/// texts for them.
struct RuntimeText {
    long number;
    const wchar_t* text;
};
constexpr RuntimeText kRuntimeTexts[] = {
    {5, L"Invalid procedure call or argument"},
    {6, L"Overflow"},
    {7, L"Out of memory"},
    {9, L"Subscript out of range"},
    {13, L"Type mismatch"},
    {52, L"Bad file name or number"},
    {53, L"File not found"},
    {54, L"Bad file mode"},
    {55, L"File already open"},
    {57, L"Device I/O error"},
    {58, L"File already exists"},
    {61, L"Disk full"},
    {62, L"Input past end of file"},
    {67, L"Too many files"},
    {68, L"Device unavailable"},
    {70, L"Permission denied"},
    {71, L"Disk not ready"},
    {75, L"Path or file access error"},
    {76, L"Path not found"},
    {91, L"No object is set"},
    {94, L"Invalid use of Null"},
    {424, L"Object required"},
    {429, L"The object cannot be created"},
    {438, L"The object has no such member"},
    {450, L"Wrong number of arguments"},
    {457, L"The key is there already"},
    {32811, L"Element not found"},
};

std::wstring TextFor(HRESULT code) {
    for (const AutomationText& known : kAutomationTexts)
        if (known.code == code) return known.text;
    if (HRESULT_FACILITY(code) == FACILITY_CONTROL)
        for (const RuntimeText& known : kRuntimeTexts)
            if (known.number == ShownNumber(code)) return known.text;
    const std::wstring text = SystemText(static_cast<DWORD>(code));
    return text.empty() ? L"Unknown error" : text;
}

}  // namespace

std::wstring Format(const ErrorReport& report) {
    std::wstring text = report.file;
    if (report.line > 0) {
        text += L"(" + std::to_wstring(report.line);
        if (report.column > 0) text += L", " + std::to_wstring(report.column);
        text += L")";
    }
    text += L": " + std::to_wstring(ShownNumber(report.code));
    if (FAILED(report.code)) text += L" (" + Hexadecimal(report.code) + L")";
    if (!report.source.empty()) text += L" " + report.source;
    return text + L": " + (report.description.empty() ? TextFor(report.code) : report.description);
}

std::wstring SystemText(DWORD code) {
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                  static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r'))
        --length;
    return std::wstring(text, length);
}

}  // namespace kwohost
