#include "platform/windows/ansi.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>

namespace kwo::platform::windows {
namespace {

TEST(AnsiBuffer, LengthBehindTheBufferIsCutToIt) {
    const struct {
        char buffer[4] = {'a', 'b', '\0', 'd'};
        char behind[4] = {'X', 'X', 'X', 'X'};
    } memory;

    EXPECT_EQ(FromBuffer(memory.buffer, 0), u"");
    EXPECT_EQ(FromBuffer(memory.buffer, 3), Text(u"ab\0", 3));
    EXPECT_EQ(FromBuffer(memory.buffer, 4), Text(u"ab\0d", 4));
    EXPECT_EQ(FromBuffer(memory.buffer, 5), Text(u"ab\0d", 4));
    EXPECT_EQ(FromBuffer(memory.buffer, static_cast<std::size_t>(-1)), Text(u"ab\0d", 4));
}

TEST(AnsiBuffer, TextWithoutAnEndEndsWithTheBuffer) {
    const struct {
        char buffer[3] = {'a', 'b', 'c'};
        char behind[3] = {'X', 'X', 'X'};
    } memory;

    EXPECT_EQ(FromBufferUpToZero(memory.buffer), u"abc");
    EXPECT_EQ(FromBufferUpToZero(memory.buffer, 2), u"ab");
    EXPECT_EQ(FromBufferUpToZero(memory.buffer, 100), u"abc");
}

TEST(AnsiBuffer, TextEndsAtItsZero) {
    const char buffer[5] = {'a', '\0', 'c', 'd', 'e'};

    EXPECT_EQ(FromBufferUpToZero(buffer), u"a");
    EXPECT_EQ(FromBufferUpToZero(buffer, 5), u"a");
    EXPECT_EQ(FromBufferUpToZero(buffer, 0), u"");
}

TEST(AnsiBuffer, AFaceNameEndsAtItsFirstZeroOrWithTheRecord) {
    char name[LF_FACESIZE];
    std::memcpy(name, "0123456789012345678901234567890X", sizeof name);
    EXPECT_EQ(FromBufferUpToZero(name), u"0123456789012345678901234567890X");
    std::memcpy(name, "Cut\0Rest", 8);
    EXPECT_EQ(FromBufferUpToZero(name), u"Cut");
    name[0] = '\0';
    EXPECT_EQ(FromBufferUpToZero(name), u"");
    std::memcpy(name, "Gr\xF6\xDF\x80", 6);
    EXPECT_EQ(FromBufferUpToZero(name), u"Gr\u00F6\u00DF\u20AC");
}

TEST(AnsiText, CharactersOutsideTheCodePageBecomeQuestionMarks) {
    EXPECT_EQ(ToAnsi(u"a\u4E2D\u6587b"), "a??b");
    EXPECT_EQ(ToAnsi(Text(u"\0\0x", 3)), std::string("\0\0x", 3));
    EXPECT_EQ(ToAnsi(u""), "");
}

TEST(WideText, KeepsEveryCodeUnit) {
    const Text text(u"a\0\xD800\u20AC", 4);

    EXPECT_EQ(FromWide(ToWide(text)), text);
}

}  // namespace
}  // namespace kwo::platform::windows
