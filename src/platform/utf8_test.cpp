#include "platform/utf8.h"

#include <gtest/gtest.h>

#include <optional>

namespace kwo::platform {
namespace {

/// Nothing when they are refused. What the text was before does not matter.
std::optional<Text> FromUtf8(std::string_view bytes) {
    Text text = u"before";
    if (!platform::FromUtf8(bytes, text)) return std::nullopt;
    return text;
}

TEST(Utf8, EveryLengthOfCharacterIsRead) {
    EXPECT_EQ(FromUtf8("a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
              u"a\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF");
    EXPECT_EQ(FromUtf8(""), u"");
}

TEST(Utf8, WhatIsNotWellFormedIsRefused) {
    for (const char* const bytes : {"\x80", "\xBF", "\xC2", "\xC2x", "\xE2\x82", "\xE2\x82x", "\xF0\x9F\x98", "\xFE",
                                    "\xFF", "\xF8\x88\x80\x80\x80"}) {
        EXPECT_FALSE(FromUtf8(bytes)) << bytes;
    }
}

TEST(Utf8, LongerFormsThanNeededAreRefused) {
    for (const char* const bytes : {"\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF"}) {
        EXPECT_FALSE(FromUtf8(bytes)) << bytes;
    }
}

TEST(Utf8, SurrogatesAndWhatLiesAboveAllCharactersAreRefused) {
    for (const char* const bytes : {"\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF7\xBF\xBF\xBF"}) {
        EXPECT_FALSE(FromUtf8(bytes)) << bytes;
    }
    EXPECT_EQ(FromUtf8("\xED\x9F\xBF\xEE\x80\x80"), u"\uD7FF\uE000");
}

}  // namespace
}  // namespace kwo::platform
