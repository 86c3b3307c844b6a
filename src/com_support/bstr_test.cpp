#include "com_support/bstr.h"

#include <gtest/gtest.h>

namespace kwo::com_support {
namespace {

using namespace std::string_literals;

TEST(BstrTest, KeepsZeroCharacters) {
    const Bstr string(L"a\0b"s);
    EXPECT_EQ(::SysStringLen(string.Get()), 3u);
    EXPECT_EQ(string.View(), L"a\0b"s);
    EXPECT_EQ(ToText(string.Get()), u"a\0b"s);
}

TEST(BstrTest, NullIsTheEmptyString) {
    EXPECT_EQ(Bstr().Get(), nullptr);
    EXPECT_EQ(View(nullptr), L"");
    EXPECT_EQ(ToText(nullptr), u"");
}

TEST(BstrTest, AnEmptyTextIsNoNullString) {
    const Bstr string(u"");
    ASSERT_NE(string.Get(), nullptr);
    EXPECT_EQ(::SysStringLen(string.Get()), 0u);
}

TEST(BstrTest, AdoptsAndDetachesTheStringItself) {
    BSTR const raw = NewString(u"text");
    Bstr owner = Bstr::Adopt(raw);
    EXPECT_EQ(owner.Get(), raw);
    Bstr other(std::move(owner));
    EXPECT_EQ(owner.Get(), nullptr);
    EXPECT_EQ(other.Detach(), raw);
    EXPECT_EQ(other.Get(), nullptr);
    ::SysFreeString(raw);
}

TEST(BstrTest, MovesKeepOneOwner) {
    Bstr string(L"first");
    string = Bstr(L"second");
    EXPECT_EQ(string.Text(), L"second");
}

TEST(BstrTest, OutIsNullAndInOutIsWhatWasHeld) {
    Bstr string(L"held");
    EXPECT_EQ(View(*string.InOut()), L"held");
    EXPECT_EQ(*string.Out(), nullptr);
}

TEST(BstrTest, ReplacePutsACopyInPlace) {
    Bstr string(L"before");
    Replace(*string.InOut(), u"behind");
    EXPECT_EQ(string.Text(), L"behind");
    Bstr null;
    Replace(*null.InOut(), u"behind");
    EXPECT_EQ(null.Text(), L"behind");
}

}  // namespace
}  // namespace kwo::com_support
