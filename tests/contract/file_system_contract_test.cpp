#include "contract_test.h"

namespace kwo::contract {
namespace {

using platform::FileSystem;

class FileSystemContract : public ContractTest {
protected:
    std::int32_t Look(bool ansi, TextView path) {
        platform().errors.SetLast(0);
        return ansi ? platform().files.AttributesAnsi(path) : platform().files.Attributes(path);
    }
    Text Folder() {
        const Text file = outside().ExistingFile();
        return file.substr(0, file.rfind(u'\\'));
    }
};

TEST_F(FileSystemContract, FilesAndFoldersDifferInTheFolderBit) {
    for (const bool ansi : {false, true}) {
        const std::int32_t file = Look(ansi, outside().ExistingFile());
        ASSERT_NE(file, FileSystem::kNoAttributes) << ansi;
        EXPECT_EQ(file & FileSystem::kFolder, 0) << ansi;
        const std::int32_t folder = Look(ansi, Folder());
        ASSERT_NE(folder, FileSystem::kNoAttributes) << ansi;
        EXPECT_EQ(folder & FileSystem::kFolder, FileSystem::kFolder) << ansi;
        EXPECT_EQ(Look(ansi, Folder() + u"\\") & FileSystem::kFolder, FileSystem::kFolder) << ansi;
        EXPECT_EQ(Look(ansi, u"C:\\") & FileSystem::kFolder, FileSystem::kFolder) << ansi;
    }
}

TEST_F(FileSystemContract, WhatIsMissingLeavesItsCodeAsTheLastError) {
    for (const bool ansi : {false, true}) {
        EXPECT_EQ(Look(ansi, Folder() + u"\\no such file.txt"), FileSystem::kNoAttributes) << ansi;
        EXPECT_EQ(platform().errors.Last(), 2) << ansi;
        EXPECT_EQ(Look(ansi, Folder() + u"\\no such folder\\file.txt"), FileSystem::kNoAttributes) << ansi;
        EXPECT_EQ(platform().errors.Last(), 3) << ansi;
        EXPECT_EQ(Look(ansi, u""), FileSystem::kNoAttributes) << ansi;
        EXPECT_EQ(platform().errors.Last(), 3) << ansi;
        EXPECT_EQ(Look(ansi, Folder() + u"\\*.txt"), FileSystem::kNoAttributes) << ansi;
        EXPECT_EQ(platform().errors.Last(), 123) << ansi;
    }
}

TEST_F(FileSystemContract, AListingHasPlainFilesAlone) {
    platform::FileSystem& files = platform().files;
    EXPECT_TRUE(files.ListsFile(outside().ExistingFile()));
    EXPECT_TRUE(files.ListsFile(Folder() + u"\\*"));
    EXPECT_TRUE(files.ListsFile(Folder() + u"\\*.e?e"));
    EXPECT_FALSE(files.ListsFile(Folder()));
    EXPECT_FALSE(files.ListsFile(Folder() + u"\\"));
    EXPECT_FALSE(files.ListsFile(Folder() + u"\\*.no such kind"));
    EXPECT_FALSE(files.ListsFile(Folder() + u"\\no such folder\\*"));
    EXPECT_FALSE(files.ListsFile(outside().EmptyFolder() + u"\\*"));
    EXPECT_FALSE(files.ListsFile(u""));
    EXPECT_FALSE(files.ListsFile(Text(40'000, u'x')));
}

}  // namespace
}  // namespace kwo::contract
