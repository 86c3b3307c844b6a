// The message file that is installed: complete in every language that it has.

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "kwoinit/message_file.h"
#include "kwoinit/recorded_problems.h"

namespace kwo::kwoinit {
namespace {

constexpr std::int32_t kNumbers[] = {1899, 1900, 1901, 1902, 1923, 1924, 1925, 1926, 1927, 1928, 1929, 1930};
constexpr std::uint16_t kLanguages[] = {0x0407, 0x040C, 0x0C0A};

std::string Bytes() {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(KWO_MESSAGE_FILE, "rb"), &std::fclose);
    std::string bytes(100'000, '\0');
    bytes.resize(file ? std::fread(bytes.data(), 1, bytes.size(), file.get()) : 0);
    return bytes;
}

class ShippedTexts : public testing::Test {
protected:
    TextView Of(std::uint16_t language, std::int32_t number, TextView program = u"KWOUtil") {
        mText = Text(mFile.In(program, language)[number]);
        return mText;
    }
    RecordedProblems mProblems;
    MessageFile mFile{Bytes(), u"KWOInit.nls", mProblems};
    Text mText;
};

TEST_F(ShippedTexts, HaveNoBadLine) {
    EXPECT_EQ(std::vector<std::string>{}, mProblems.lines);
}

TEST_F(ShippedTexts, ReachFrom1899To1930) {
    const auto extent = mFile.ExtentOf(u"KWOUtil");

    ASSERT_TRUE(extent);
    EXPECT_EQ(1899, extent->lowest);
    EXPECT_EQ(1930, extent->highest);
}

TEST_F(ShippedTexts, AreTheKnownOnesInEnglish) {
    EXPECT_EQ(u"Delete call trace log file for %1?", Of(0x409, 1899));
    EXPECT_EQ(u"An internal application error has occurred.", Of(0x409, 1900));
    EXPECT_EQ(u"Invalid Hex Digit", Of(0x409, 1902));
    EXPECT_EQ(u"The program %2 could not be started.\r\nPath: %1", Of(0x409, 1930));
}

TEST_F(ShippedTexts, AreAllThereAndTranslatedWithTheirPlaceholders) {
    for (const std::int32_t number : kNumbers) {
        const Text english(Of(0x409, number));
        EXPECT_FALSE(english.empty()) << number;
        for (const std::uint16_t language : kLanguages) {
            const TextView text = Of(language, number);
            EXPECT_NE(english, text) << number << ' ' << language;
            for (const TextView part : {u"%1", u"%2", u"%3", u"\r\n"})
                EXPECT_EQ(english.find(part) != Text::npos, text.find(part) != TextView::npos)
                    << number << ' ' << language;
        }
    }
}

TEST_F(ShippedTexts, SpanNoOtherNumbers) {
    for (const std::int32_t number : {1898, 1903, 1910, 1922, 1931})
        EXPECT_EQ(u"", Of(0x409, number)) << number;
}

TEST_F(ShippedTexts, ServeTheOtherSublanguages) {
    EXPECT_EQ(u"Ungültige Hexadezimalziffer", Of(0x0807, 1902));
    EXPECT_EQ(u"Chiffre hexadécimal non valide", Of(0x0C0C, 1902));
    EXPECT_EQ(u"Dígito hexadecimal no válido", Of(0x040A, 1902));
}

TEST_F(ShippedTexts, ServeEveryProgram) {
    for (const TextView program : {u"Daxter", u"Daxwin", u"winword"})
        EXPECT_EQ(u"Invalid Hex Digit", Of(0x409, 1902, program));
}

}  // namespace
}  // namespace kwo::kwoinit
