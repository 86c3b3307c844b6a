#include "contract_test.h"

namespace kwo::contract {
namespace {

constexpr std::int32_t kPathNotFound = 3;
constexpr std::int32_t kAccessDenied = 5;
constexpr std::int32_t kSharingViolation = 32;
constexpr std::int32_t kFileExists = 80;

class LogFilesContract : public ContractTest {
protected:
    platform::LogFiles& files = platform().logFiles;
    const Text path = outside().EmptyFolder() + u"\\log \u00E9.txt";

    std::int32_t LastAfterFailing(bool succeeded) {
        EXPECT_FALSE(succeeded);
        return platform().errors.Last();
    }
};

TEST_F(LogFilesContract, WritesOneAfterTheOtherAndOthersReadAlong) {
    const auto file = files.CreateNew(path);
    ASSERT_NE(file, 0u);
    EXPECT_EQ(outside().ContentOf(path), "");
    EXPECT_TRUE(files.Write(file, "first\r\n"));
    EXPECT_EQ(outside().ContentOf(path), "first\r\n");
    EXPECT_TRUE(files.Write(file, std::string_view("\0\xE9\n", 3)));
    EXPECT_TRUE(files.Write(file, ""));
    files.Close(file);
    EXPECT_EQ(outside().ContentOf(path), std::string("first\r\n\0\xE9\n", 10));
}

TEST_F(LogFilesContract, WritesAMegabyteAtOnce) {
    const auto file = files.CreateNew(path);
    const std::string large(1'000'000, 'x');
    EXPECT_TRUE(files.Write(file, large));
    files.Close(file);
    EXPECT_EQ(outside().ContentOf(path)->size(), large.size());
}

TEST_F(LogFilesContract, ANameThatIsTakenIsNotOpened) {
    const auto file = files.CreateNew(path);
    files.Write(file, "kept");
    EXPECT_EQ(LastAfterFailing(files.CreateNew(path) != 0), kFileExists);
    files.Close(file);
    EXPECT_EQ(LastAfterFailing(files.CreateNew(path) != 0), kFileExists);
    EXPECT_EQ(outside().ContentOf(path), "kept");

    const Text folder = outside().EmptyFolder() + u"\\taken.log";
    outside().MakeFolder(folder);
    const std::int32_t last = LastAfterFailing(files.CreateNew(folder) != 0);
    if (outside().IsWine()) {
        EXPECT_EQ(last, kFileExists);
    } else {
        EXPECT_TRUE(last == kFileExists || last == kAccessDenied) << last;
    }
}

TEST_F(LogFilesContract, ThereIsNoFileInAFolderThatIsMissing) {
    EXPECT_EQ(LastAfterFailing(files.CreateNew(outside().EmptyFolder() + u"\\none\\a.log") != 0), kPathNotFound);
}

TEST_F(LogFilesContract, NothingIsWrittenToNoFile) {
    EXPECT_EQ(LastAfterFailing(files.Write(0, "x")), kInvalidHandle);
}

TEST_F(LogFilesContract, DeletesAFileOnceItIsClosed) {
    const auto file = files.CreateNew(path);
    EXPECT_EQ(LastAfterFailing(files.Delete(path)), kSharingViolation);
    files.Close(file);
    EXPECT_TRUE(files.Delete(path));
    EXPECT_EQ(outside().ContentOf(path), std::nullopt);
    EXPECT_EQ(LastAfterFailing(files.Delete(path)), 2);
}

}  // namespace
}  // namespace kwo::contract
