// Whatever the bytes are, a file is read or refused, and what is read can be looked up. The same bytes in every run.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "kwoinit/message_file.h"
#include "kwoinit/recorded_problems.h"
#include "platform/component_error.h"

namespace kwo::kwoinit {
namespace {

constexpr int kFiles = 100'000;
constexpr char kPattern[] =
    "\xEF\xBB\xBF; comment\r\n[KWOUtil]  remark\r\n1900 = An error\\nhas \\\\ occurred.\r\n7=\\sx\\s\n"
    "[KWOUtil 0407]\n1900 = \xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80 %1\n[\"Office 2003\" 0C0A]\n5 = a\n99999999=z\n";

/// Numbers of a fixed sequence, the same with every library.
class Sequence {
public:
    std::size_t Below(std::size_t limit) { return mEngine() % limit; }

private:
    std::mt19937 mEngine{20'260'901};
};

void Use(const std::string& bytes, int& refused) {
    RecordedProblems problems;
    try {
        const MessageFile file(bytes, u"f", problems);
        for (const TextView program : {u"KWOUtil", u"office 2003", u""}) {
            const auto extent = file.ExtentOf(program);
            const MessageFile::Texts texts = file.In(program, 0x0407);
            if (!extent) continue;
            ASSERT_LE(1, extent->lowest);
            ASSERT_LE(extent->lowest, extent->highest);
            ASSERT_LT(extent->highest - extent->lowest, MessageFile::kWidestTable);
            ASSERT_LE(texts[extent->lowest].size() + texts[extent->highest].size(),
                      2 * static_cast<std::size_t>(extent->characters));
            ASSERT_TRUE(texts[extent->lowest - 1].empty());
            ASSERT_TRUE(texts[extent->highest + 1].empty());
        }
        ASSERT_LE(problems.lines.size(), MessageFile::kMostProblems + 1);
    } catch (const platform::ComponentError&) {
        ++refused;
    }
}

TEST(HostileFiles, ChangedBytesAreReadOrRefused) {
    constexpr std::string_view kTelling = "[]\"\\sn=;0123456789 \t\r\n%\xFF\xC3\x80";
    Sequence random;
    int refused = 0;
    for (int i = 0; i < kFiles; ++i) {
        std::string bytes(kPattern, sizeof kPattern - 1);
        for (std::size_t change = 1 + random.Below(8); change > 0 && !bytes.empty(); --change) {
            const std::size_t at = random.Below(bytes.size());
            switch (random.Below(6)) {
                case 0:
                    bytes[at] = static_cast<char>(random.Below(256));
                    break;
                case 1:
                    bytes[at] = kTelling[random.Below(kTelling.size())];
                    break;
                case 2:
                    bytes.insert(at, 1, kTelling[random.Below(kTelling.size())]);
                    break;
                case 3:
                    bytes.erase(at, 1 + random.Below(9));
                    break;
                case 4:
                    bytes.insert(at, bytes.substr(random.Below(bytes.size()), random.Below(60)));
                    break;
                default:
                    if (random.Below(8) == 0) bytes.resize(at);
                    break;
            }
        }
        Use(bytes, refused);
        ASSERT_FALSE(HasFatalFailure()) << i;
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, kFiles / 10);
}

TEST(HostileFiles, RandomBytesAreReadOrRefused) {
    Sequence random;
    int refused = 0;
    for (int i = 0; i < kFiles; ++i) {
        std::string bytes(random.Below(80), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(i % 2 == 0 ? random.Below(256) : 1 + random.Below(127));
        Use(bytes, refused);
        ASSERT_FALSE(HasFatalFailure()) << i;
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, kFiles / 2);
}

}  // namespace
}  // namespace kwo::kwoinit
