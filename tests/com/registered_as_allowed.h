#pragma once

#include <string>
#include <utility>

#include "com_test.h"
#include "dll_under_test.h"
#include "rights.h"

namespace kwo::com_test {

/// Registers the DLL for everybody or, without the rights, for the user.
inline HRESULT RegisterAsAllowed(const Library& library) {
    return MayRegisterForAll() ? library.RegisterServer() : library.Install(true, L"user");
}
inline HRESULT UnregisterAsAllowed(const Library& library) {
    return MayRegisterForAll() ? library.UnregisterServer() : library.Install(false, L"user");
}

/// One apartment, and one registration of a DLL, for all tests of a program.
class RegisteredDll : public ::testing::Environment {
public:
    explicit RegisteredDll(std::wstring path) : mPath(std::move(path)) {}
    void SetUp() override {
        ASSERT_EQ(Hex(CoInitialize(nullptr)), Hex(S_OK));
        const Library library(mPath);
        ASSERT_TRUE(library) << Narrow(mPath) << " cannot be loaded, error " << GetLastError();
        ASSERT_EQ(Hex(RegisterAsAllowed(library)), Hex(S_OK));
    }
    void TearDown() override {
        {
            const Library library(mPath);
            EXPECT_TRUE(library);
            EXPECT_EQ(Hex(UnregisterAsAllowed(library)), Hex(S_OK));
        }
        CoUninitialize();
    }

private:
    const std::wstring mPath;
};

}  // namespace kwo::com_test
