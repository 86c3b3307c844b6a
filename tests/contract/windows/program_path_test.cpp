#include "platform/windows/program_path.h"

#include <gtest/gtest.h>

namespace kwo::platform::windows {
namespace {

TEST(ProgramPath, NameHasNeitherFolderNorExtension) {
    EXPECT_EQ(NameOf(L"C:\\Programs\\host.exe"), L"host");
    EXPECT_EQ(NameOf(L"C:\\a.b\\host"), L"host");
    EXPECT_EQ(NameOf(L"C:\\a\\host.one.exe"), L"host.one");
    EXPECT_EQ(NameOf(L"\\\\server\\share/host.exe"), L"host");
    EXPECT_EQ(NameOf(L"host.exe"), L"host");
    EXPECT_EQ(NameOf(L""), L"");
}

TEST(ProgramPath, FolderHasNoSeparatorAtItsEndUnlessItIsARoot) {
    EXPECT_EQ(FolderOf(L"C:\\Programs\\host.exe"), L"C:\\Programs");
    EXPECT_EQ(FolderOf(L"C:\\host.exe"), L"C:\\");
    EXPECT_EQ(FolderOf(L"\\\\server\\share\\host.exe"), L"\\\\server\\share");
    EXPECT_EQ(FolderOf(L"C:/Programs/host.exe"), L"C:/Programs");
    EXPECT_EQ(FolderOf(L"host.exe"), L"");
    EXPECT_EQ(FolderOf(L""), L"");
}

}  // namespace
}  // namespace kwo::platform::windows
