#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "com_test.h"

namespace kwo::com_test {

constexpr const wchar_t* kSandbox = L"Software\\KWOUtilComTest";
/// HKEY_CURRENT_USER as scripts write it: a 32-bit number.
constexpr long kCurrentUser = static_cast<long>(0x80000001);

/// A registry object and a key of the tests' own below the current user, both gone at the end.
class RegistrySandbox : public ::testing::Test {
protected:
    void SetUp() override {
        Remove();
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kSandbox, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        mKey = key;
        mRegistry = Create(L"KWORegistry");
        ASSERT_TRUE(mRegistry);
    }
    void TearDown() override {
        if (mKey != nullptr) RegCloseKey(mKey);
        Remove();
    }

    /// The open sandbox key as clients pass handles.
    long Handle() const { return static_cast<long>(reinterpret_cast<std::intptr_t>(mKey)); }

    void Put(const wchar_t* name, DWORD type, const void* bytes, std::size_t size) const {
        ASSERT_EQ(RegSetValueExW(mKey, name, 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }
    void PutText(const wchar_t* name, const std::wstring& text) const {
        Put(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }
    void PutNumber(const wchar_t* name, DWORD number) const { Put(name, REG_DWORD, &number, sizeof number); }

    /// What is stored, as ANSI bytes with the terminating zero; empty when there is nothing.
    std::string StoredBytes(const wchar_t* name, DWORD* type = nullptr) const {
        const std::string ansiName = Narrow(name);
        char bytes[8192] = {};
        DWORD size = sizeof bytes;
        const LSTATUS status =
            RegQueryValueExA(mKey, ansiName.c_str(), nullptr, type, reinterpret_cast<BYTE*>(bytes), &size);
        return status == ERROR_SUCCESS ? std::string(bytes, size) : std::string();
    }
    bool KeyExists(const std::wstring& below) const {
        HKEY key = nullptr;
        if (RegOpenKeyExW(mKey, below.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
        RegCloseKey(key);
        return true;
    }

    /// The status that `KWO_RegGetValue` gives, and the value by reference.
    long GetValue(const Var& root, const wchar_t* keyName, const wchar_t* valueName, std::wstring* value) const {
        Bstr text(L"as it was");
        const Outcome outcome =
            Call(mRegistry.Get(), L"KWO_RegGetValue", {root, keyName, valueName, Var::Ref(text.InOut())});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
        EXPECT_EQ(outcome.result.vt, VT_I4);
        if (value != nullptr) *value = text.Text();
        return outcome.result.lVal;
    }
    std::wstring TextOf(const wchar_t* valueName) const {
        std::wstring value;
        EXPECT_EQ(GetValue(kCurrentUser, kSandbox, valueName, &value), ERROR_SUCCESS);
        return value;
    }
    Var GetValueEx(const wchar_t* valueName, const Var& fallback) const {
        const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegGetValueEx", {Handle(), valueName, fallback});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
        return outcome.result;
    }

    ComPtr<IDispatch> mRegistry;
    HKEY mKey = nullptr;

private:
    static void Remove() { RegDeleteTreeW(HKEY_CURRENT_USER, kSandbox); }
};

}  // namespace kwo::com_test
