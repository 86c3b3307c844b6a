#pragma once

#include <windows.h>

#include <string>

namespace kwo::com_test {

/// Sets an environment variable for one test.
class EnvironmentVariable {
public:
    EnvironmentVariable(const wchar_t* name, const std::wstring& value) : mName(name) {
        mBefore.resize(GetEnvironmentVariableW(name, nullptr, 0));
        if (!mBefore.empty())
            mBefore.resize(GetEnvironmentVariableW(name, mBefore.data(), static_cast<DWORD>(mBefore.size())));
        SetEnvironmentVariableW(name, value.c_str());
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { SetEnvironmentVariableW(mName, mBefore.empty() ? nullptr : mBefore.c_str()); }

private:
    const wchar_t* mName;
    std::wstring mBefore;
};

}  // namespace kwo::com_test
