#include "fault_guard.h"

#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <utility>
#include <vector>

#include "com_support/module_path.h"
#include "error_report.h"
#include "output.h"

namespace kwohost {

namespace {

/// Global, because an exception filter has no other way to its data.
struct Guard {
    std::wstring path;
    long line = 0;
    Output errors{STD_ERROR_HANDLE};
    UINT exitCode = 0;
};
Guard* guard = nullptr;
/// Null while the host calls none.
const std::wstring* runningProcedure = nullptr;

/// `vbscript.dll+0x2933`, as the tools that name frames read it.
std::wstring PlaceOf(const void* address) {
    HMODULE module = nullptr;
    constexpr DWORD kFlags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(kFlags, static_cast<LPCWSTR>(address), &module)) return L"unknown code";
    const std::wstring path = kwo::com_support::ModulePath(module);
    wchar_t offset[32];
    wsprintfW(offset, L"+0x%x", static_cast<UINT>(static_cast<const char*>(address) - reinterpret_cast<char*>(module)));
    return path.substr(path.find_last_of(L'\\') + 1) + offset;
}

LONG WINAPI OnFault(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& fault = *pointers->ExceptionRecord;
    std::wstring text = L"The script engine or a component has failed";
    if (runningProcedure) text += L" in " + *runningProcedure;
    if (guard->line > 0) text += L"; ReDim of an array declared with empty parentheses can be the cause";
    guard->errors.Write(Format({guard->path, guard->line, 0, static_cast<HRESULT>(fault.ExceptionCode),
                                PlaceOf(fault.ExceptionAddress), text}) +
                        L"\r\n");
    TerminateProcess(GetCurrentProcess(), guard->exitCode);
    return EXCEPTION_CONTINUE_SEARCH;
}

std::wstring Lower(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), [](wchar_t c) { return std::towlower(c); });
    return text;
}

bool IsOfAWord(wchar_t c) {
    return std::iswalnum(c) || c == L'_';
}

/// The statements of a line in lower case, without comments and texts. Blanks are left between words, one each.
std::vector<std::wstring> StatementsOf(const std::wstring& line) {
    std::vector<std::wstring> statements(1);
    bool isText = false;
    bool isAfterBlank = false;
    for (const wchar_t c : line) {
        if (c == L'"') isText = !isText;
        if (isText || c == L'"') continue;
        if (c == L'\'') break;
        std::wstring& statement = statements.back();
        if (c == L':') {
            statements.emplace_back();
        } else if (!std::iswspace(c)) {
            if (isAfterBlank && !statement.empty() && IsOfAWord(statement.back()) && IsOfAWord(c)) statement += L' ';
            statement += c;
        }
        isAfterBlank = std::iswspace(c);
    }
    for (std::wstring& statement : statements)
        statement = Lower(statement);
    return statements;
}

/// Takes a word and the blank behind it away from the beginning of the text. False if it is not there.
bool Take(std::wstring& text, const std::wstring& word) {
    if (!text.starts_with(word + L' ')) return false;
    text.erase(0, word.size() + 1);
    return true;
}

/// The names in front of empty parentheses.
void AddEmptyArrays(const std::wstring& declaration, std::vector<std::wstring>& names) {
    for (std::size_t at = declaration.find(L"()"); at != std::wstring::npos; at = declaration.find(L"()", at + 1)) {
        const std::size_t before = declaration.find_last_of(L", ", at);
        const std::size_t begin = before == std::wstring::npos ? 0 : before + 1;
        names.push_back(declaration.substr(begin, at - begin));
    }
}

}  // namespace

long LineThatEndsTheEngine(const SourceFile& source) {
    if (source.language != Language::VBScript) return 0;
    std::vector<std::wstring> names;
    long number = 0;
    for (std::size_t at = 0; at < source.text.size();) {
        const std::size_t end = std::min(source.text.find(L'\n', at), source.text.size());
        ++number;
        for (std::wstring& statement : StatementsOf(source.text.substr(at, end - at))) {
            if (Take(statement, L"dim") || Take(statement, L"private") || Take(statement, L"public"))
                AddEmptyArrays(statement, names);
            if (!Take(statement, L"redim")) continue;
            Take(statement, L"preserve");
            const std::wstring name = statement.substr(0, statement.find(L'('));
            if (std::find(names.begin(), names.end(), name) != names.end()) return number;
        }
        at = end + 1;
    }
    return 0;
}

RunningProcedure::RunningProcedure(const std::wstring& name) : mBefore(std::exchange(runningProcedure, &name)) {}

RunningProcedure::~RunningProcedure() {
    runningProcedure = mBefore;
}

void GuardAgainstFaults(const SourceFile& source, int exitCode) {
    static Guard held;
    held.path = source.path;
    held.line = LineThatEndsTheEngine(source);
    held.exitCode = static_cast<UINT>(exitCode);
    guard = &held;
    SetUnhandledExceptionFilter(OnFault);
}

}  // namespace kwohost
