#include "source_text.h"

#include <gtest/gtest.h>

namespace kwohost {
namespace {

using namespace std::string_literals;

std::u16string Refusal(const std::string& bytes) {
    try {
        DecodeSource(bytes);
    } catch (const UndecodableSource& cause) {
        return cause.reason;
    }
    return u"none";
}

TEST(SourceText, Utf8WithAndWithoutMark) {
    EXPECT_EQ(DecodeSource("a\xC3\xBC\xE2\x82\xAC"), u"a\u00FC\u20AC");
    EXPECT_EQ(DecodeSource("\xEF\xBB\xBF"
                           "a\xC3\xBC"),
              u"a\u00FC");
    EXPECT_EQ(DecodeSource(""), u"");
    EXPECT_EQ(DecodeSource("\xEF\xBB\xBF"), u"");
}

TEST(SourceText, Utf16WithAndWithoutMark) {
    EXPECT_EQ(DecodeSource("\xFF\xFE"
                           "a\0\xAC\x20"s),
              u"a\u20AC");
    EXPECT_EQ(DecodeSource("a\0\xAC\x20"s), u"a\u20AC");
    EXPECT_EQ(DecodeSource("\xFF\xFE"s), u"");
}

TEST(SourceText, EveryLineEndBecomesOne) {
    EXPECT_EQ(DecodeSource("a\nb\rc\r\nd\n\re\r\r\n"), u"a\r\nb\r\nc\r\nd\r\n\r\ne\r\n\r\n");
}

TEST(SourceText, WhatCannotBeReadIsRefusedWithItsReason) {
    EXPECT_NE(Refusal("a\xFC").find(u"neither UTF-8 nor UTF-16"), std::u16string::npos);
    EXPECT_NE(Refusal("\xFF\xFE"
                      "a"s)
                  .find(u"half a character"),
              std::u16string::npos);
    EXPECT_NE(Refusal("\xFE\xFF\0a"s).find(u"high byte first"), std::u16string::npos);
    EXPECT_NE(Refusal("a\r\nb\nc\0d"s).find(u"null character in line 3"), std::u16string::npos);
}

}  // namespace
}  // namespace kwohost
