#include "platform/windows/system_library.h"

#include <gtest/gtest.h>

#include "windows/test_folder.h"

namespace kwo::platform::windows {
namespace {

using Function = void WINAPI();

TEST(SystemLibrary, FindsWhatTheSystemHas) {
    SystemLibrary library(L"mpr.dll");

    EXPECT_NE(library.Find<Function>("WNetGetUserA"), nullptr);
    EXPECT_NE(library.Find<Function>("WNetGetLastErrorA"), nullptr);
}

TEST(SystemLibrary, MissingFunctionOrLibraryIsAbsent) {
    SystemLibrary library(L"mpr.dll");
    EXPECT_EQ(library.Find<Function>("KWONoSuchFunction"), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});

    SystemLibrary none(L"kwo no such library.dll");
    for (int i = 0; i < 2; ++i) {
        ::SetLastError(0);
        EXPECT_EQ(none.Find<Function>("WNetGetUserA"), nullptr);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
    }
}

TEST(SystemLibrary, IsNotTakenFromBesideTheProgram) {
    constexpr wchar_t kName[] = L"kwoutil_planted.dll";
    const CopyOfProgram planted(ProgramFolder() + L'\\' + kName);
    ASSERT_TRUE(planted.Made());

    SystemLibrary library(kName);
    EXPECT_EQ(library.Find<Function>("WNetGetUserA"), nullptr);
    EXPECT_EQ(::GetModuleHandleW(kName), nullptr);

    // A search by the usual rules does find it.
    const HMODULE usual = ::LoadLibraryW(kName);
    EXPECT_NE(usual, nullptr);
    ::FreeLibrary(usual);
}

}  // namespace
}  // namespace kwo::platform::windows
