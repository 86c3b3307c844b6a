#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kwo::test_support {

/// Hears what this process sends to the debug output as long as it lives: the system hands it out as an exception,
/// which a debugger would get. There may be one at a time.
class DebugOutput {
public:
    DebugOutput() {
        sLines.clear();
        mHandler = AddVectoredExceptionHandler(1, Hear);
    }
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;
    ~DebugOutput() { RemoveVectoredExceptionHandler(mHandler); }

    /// What each call sent, in the ANSI code page.
    static const std::vector<std::string>& Lines() { return sLines; }
    /// All of it.
    static std::string Text() {
        std::string text;
        for (const std::string& line : sLines)
            text += line;
        return text;
    }

private:
    static LONG CALLBACK Hear(EXCEPTION_POINTERS* pointers) {
        // A call with wide characters ends here, too, when nobody takes those.
        constexpr DWORD kPrinted = 0x40010006;
        const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
        if (record.ExceptionCode == kPrinted && record.NumberParameters >= 2) {
            sLines.emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
        }
        return EXCEPTION_CONTINUE_SEARCH;
    }

    static inline std::vector<std::string> sLines;
    void* mHandler;
};

}  // namespace kwo::test_support
