#include "kwocheck/file_formats.h"

#include <gtest/gtest.h>

#include <string>

namespace kwocheck {
namespace {

using namespace std::string_literals;

/// The beginning of a program for the processor `machine`, two bytes.
std::string Program(const std::string& machine) {
    std::string bytes = "MZ" + std::string(0x3A, '\0') + "\x40\0\0\0"s;
    return bytes + "PE\0\0"s + machine + std::string(16, '\0');
}

std::string Wide(std::string_view text) {
    std::string bytes;
    for (const char c : text)
        bytes += std::string{c, '\0'};
    return bytes;
}

TEST(BitnessOf, TellsThePrograms) {
    EXPECT_EQ(BitnessOf(Program("\x64\x86")), Bitness::k64);
    EXPECT_EQ(BitnessOf(Program("\x4C\x01")), Bitness::k32);
}

TEST(BitnessOf, OtherFilesHaveNone) {
    EXPECT_EQ(BitnessOf(Program("\x64\xAA")), std::nullopt);
    EXPECT_EQ(BitnessOf(""), std::nullopt);
    EXPECT_EQ(BitnessOf("damaged"), std::nullopt);
    std::string other = Program("\x64\x86");
    other[0x40] = 'N';
    EXPECT_EQ(BitnessOf(other), std::nullopt);
}

TEST(BitnessOf, NoBeginningIsReadBeyondItsEnd) {
    const std::string whole = Program("\x64\x86");
    for (std::size_t length = 0; length < 0x46; ++length)
        EXPECT_EQ(BitnessOf(whole.substr(0, length)), std::nullopt) << length;
    std::string far = whole;
    far[0x3F] = '\x7F';
    EXPECT_EQ(BitnessOf(far), std::nullopt);
}

TEST(VersionResource, HoldsVersionAndProduct) {
    // Names begin at multiples of four, texts behind their names, too.
    const std::string bytes = "\xBD\x04\xEF\xFE"s + std::string(4, '\0') + "\x05\0\x04\0\x0C\0\x02\0"s +
                              Wide("ProductName") + std::string(2, '\0') + Wide("KWOUtil") + std::string(2, '\0') +
                              "rest";

    const VersionFacts facts = ReadVersionResource(bytes);

    EXPECT_EQ(facts.version, u"4.5.2.12");
    EXPECT_EQ(facts.product, u"KWOUtil");
}

TEST(VersionResource, TextsAreAligned) {
    const std::string bytes = "ab"s + Wide("ProductName") + std::string(4, '\0') + Wide("X");

    EXPECT_EQ(ReadVersionResource(bytes).product, u"X");
}

TEST(VersionResource, PartsThatAreNotThereAreEmpty) {
    const VersionFacts facts = ReadVersionResource("anything");

    EXPECT_EQ(facts.version, u"");
    EXPECT_EQ(facts.product, u"");
}

TEST(VersionResource, NothingIsReadBeyondTheEnd) {
    EXPECT_EQ(ReadVersionResource("\xBD\x04\xEF\xFE"
                                  "1234567")
                  .version,
              u"");
    EXPECT_EQ(ReadVersionResource("\xBD\x04\xEF\xFE"
                                  "12341234123")
                  .version,
              u"");
    EXPECT_EQ(ReadVersionResource(Wide("ProductName") + std::string(2, '\0')).product, u"");
    EXPECT_EQ(ReadVersionResource(Wide("ProductName") + std::string(2, '\0') + "K").product, u"");
}

TEST(ZoneMark, InternetAndUntrustedSitesAreMarked) {
    EXPECT_TRUE(IsZoneMark("[ZoneTransfer]\r\nZoneId=3\r\n"));
    EXPECT_TRUE(IsZoneMark("[ZoneTransfer]\r\nZoneId=4"));
    EXPECT_FALSE(IsZoneMark("[ZoneTransfer]\r\nZoneId=0\r\n"));
    EXPECT_FALSE(IsZoneMark("[ZoneTransfer]\r\nZoneId=2\r\n"));
    EXPECT_FALSE(IsZoneMark("[ZoneTransfer]\r\nZoneId="));
    EXPECT_FALSE(IsZoneMark(""));
}

TEST(RedirectedPath, TheSystemsFolderDependsOnWhoLooks) {
    const Text path = u"c:\\windows\\system32\\KWOUtil.dll";
    EXPECT_EQ(RedirectedPath(path, u"C:\\Windows", Bitness::k64, Bitness::k32), u"C:\\Windows\\SysWOW64\\KWOUtil.dll");
    EXPECT_EQ(RedirectedPath(path, u"C:\\Windows", Bitness::k32, Bitness::k64), u"C:\\Windows\\Sysnative\\KWOUtil.dll");
    EXPECT_EQ(RedirectedPath(path, u"C:\\Windows", Bitness::k32, Bitness::k32), path);
    EXPECT_EQ(RedirectedPath(u"C:\\Other\\a.dll", u"C:\\Windows", Bitness::k32, Bitness::k64), u"C:\\Other\\a.dll");
    EXPECT_EQ(RedirectedPath(u"D:\\Windows\\System32\\a.dll", u"C:\\Windows", Bitness::k32, Bitness::k64),
              u"D:\\Windows\\System32\\a.dll");
    EXPECT_EQ(RedirectedPath(u"a.dll", u"C:\\Windows", Bitness::k32, Bitness::k64), u"a.dll");
}

}  // namespace
}  // namespace kwocheck
