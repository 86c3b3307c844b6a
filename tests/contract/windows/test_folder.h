#pragma once

#include <windows.h>

#include <string>

#include "com_support/module_path.h"

namespace kwo::platform::windows {

/// The full name of this program.
inline std::wstring ProgramPath() {
    return com_support::ModulePath(nullptr);
}

inline std::wstring ProgramFolder() {
    const std::wstring path = ProgramPath();
    return path.substr(0, path.find_last_of(L'\\'));
}

/// A copy of this program, removed at the end.
class CopyOfProgram {
public:
    explicit CopyOfProgram(std::wstring path) : mPath(std::move(path)) {
        mMade = ::CopyFileW(ProgramPath().c_str(), mPath.c_str(), FALSE) != FALSE;
    }
    ~CopyOfProgram() { ::DeleteFileW(mPath.c_str()); }
    CopyOfProgram(const CopyOfProgram&) = delete;
    CopyOfProgram& operator=(const CopyOfProgram&) = delete;

    bool Made() const { return mMade; }
    const std::wstring& Path() const { return mPath; }

private:
    std::wstring mPath;
    bool mMade = false;
};

}  // namespace kwo::platform::windows
