#include "registry/registry.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <vector>

#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"

namespace kwo::registry {
namespace {

using platform::Currency;
using platform::Date;
using platform::Variant;

constexpr Handle kCurrentUser = static_cast<Handle>(0x80000001);
constexpr TextView kPath = u"Software\\KWOUtilTest";
constexpr std::uint32_t kString = 1;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kNumber = 4;

class KWORegistryTest : public testing::Test {
protected:
    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    KWORegistry registry{component};

    void Store(TextView name, std::uint32_t type, std::string bytes) {
        desktop.registry.PutValue(kCurrentUser, kPath, name, type, std::move(bytes));
    }
    void StoreNumber(TextView name, std::uint32_t number) {
        std::string bytes;
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(number >> shift);
        Store(name, kNumber, bytes);
    }
    std::string Stored(TextView name) {
        const auto* value = desktop.registry.Find(kCurrentUser, kPath, name);
        return value == nullptr ? "(none)" : value->bytes;
    }
    Text Read(TextView name) {
        Text value = u"before";
        EXPECT_EQ(registry.KWO_RegGetValue(kCurrentUser, kPath, name, value), 0);
        return value;
    }
    std::string LastLine(std::string_view call) { return desktop.log.Starting(call).back(); }
    /// The last platform result after `body`, whose key does not close.
    template <class Body>
    std::int32_t LastResultWhenTheKeyDoesNotClose(Body&& body) {
        desktop.FailCall("RegCloseKey", 1, 1016);
        component.apiResult.last = -1;
        EXPECT_EQ(body(), 0);
        return component.apiResult.last;
    }
    Handle OpenKey() { return registry.KWO_RegCreateKey(kCurrentUser, kPath); }
    Variant ReadLike(const Variant& like) { return ReadLike(OpenKey(), like); }
    Variant ReadLike(Handle key, const Variant& like) {
        return registry.KWO_RegGetValueEx(key, u"v", like).value_or(like);
    }
};
using RegSetValueTest = KWORegistryTest;
using RegGetValueTest = KWORegistryTest;
using RegGetValueExTest = KWORegistryTest;
using RegCreateKeyTest = KWORegistryTest;
using RegDeleteTest = KWORegistryTest;
using RegSetValueIntended = KWORegistryTest;
using RegGetValueIntended = KWORegistryTest;
using RegGetValueExIntended = KWORegistryTest;
using RegCreateKeyIntended = KWORegistryTest;
using RegResultTest = KWORegistryTest;

TEST_F(KWORegistryTest, SetsTheProgramName) {
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

TEST_F(RegResultTest, LastPlatformResultIsThatOfTheLastCallOfEachMember) {
    const Handle key = OpenKey();
    Text value;
    EXPECT_EQ(
        LastResultWhenTheKeyDoesNotClose([&] { return registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"); }),
        1016);
    EXPECT_EQ(
        LastResultWhenTheKeyDoesNotClose([&] { return registry.KWO_RegGetValue(kCurrentUser, kPath, u"v", value); }),
        1016);
    EXPECT_EQ(value, u"text");
    EXPECT_EQ(LastResultWhenTheKeyDoesNotClose([&] { return registry.KWO_RegDeleteValue(kCurrentUser, kPath, u"v"); }),
              1016);

    registry.KWO_RegGetValueEx(key, u"v", Text());
    EXPECT_EQ(component.apiResult.last, 2);
    registry.KWO_RegGetValueEx(key, u"v", std::int32_t{0});
    EXPECT_EQ(component.apiResult.last, 2);
    StoreNumber(u"v", 1);
    registry.KWO_RegGetValueEx(key, u"v", std::int32_t{0});
    EXPECT_EQ(component.apiResult.last, 0);
    EXPECT_EQ(registry.KWO_RegDeleteKey(kCurrentUser, u"Software\\None"), 2);
    EXPECT_EQ(component.apiResult.last, 2);
    registry.KWO_RegCreateKey(kCurrentUser, kPath);
    EXPECT_EQ(component.apiResult.last, 0);
    EXPECT_EQ(registry.KWO_RegDeleteValue(kCurrentUser, u"Software\\None", u"v"), 2);
    EXPECT_EQ(component.apiResult.last, 2);
    registry.KWO_RegCreateKey(kCurrentUser, kPath);
    EXPECT_EQ(registry.KWO_RegGetValue(kCurrentUser, u"Software\\None", u"v", value), 2);
    EXPECT_EQ(component.apiResult.last, 2);
}

TEST_F(RegResultTest, NoKeyStaysOpenWhenAConversionFails) {
    Store(u"v", kString, "text");
    Text value;
    desktop.FailCall("MultiByteToWideChar", 1, 7);
    EXPECT_THROW((void)registry.KWO_RegGetValue(kCurrentUser, kPath, u"v", value), platform::ComponentError);
    desktop.FailCall("WideCharToMultiByte", 1, 7);
    EXPECT_THROW((void)registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"), platform::ComponentError);

    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegResultTest, NoKeyStaysOpenWhenThereIsNoMemoryForTheValue) {
    Store(u"v", kString, "text");
    desktop.registry.onQuery = [] { throw std::bad_alloc(); };
    Text value;

    EXPECT_THROW((void)registry.KWO_RegGetValue(kCurrentUser, kPath, u"v", value), std::bad_alloc);

    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegResultTest, CreatedKeysAreInheritable) {
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"), 0);
    EXPECT_NE(LastLine("RegCreateKeyEx").find(" inheritable"), std::string::npos);
    registry.KWO_RegCreateKey(kCurrentUser, kPath);
    EXPECT_NE(LastLine("RegCreateKeyEx").find(" inheritable"), std::string::npos);
    EXPECT_EQ(desktop.log.Starting("RegCreateKeyEx").size(), 2u);
}

TEST_F(RegSetValueTest, StoresAStringWithItsTerminatorAndCreatesTheKey) {
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"), 0);
    EXPECT_EQ(Stored(u"v"), std::string("text\0", 5));
    EXPECT_EQ(desktop.registry.Find(kCurrentUser, kPath, u"v")->type, kString);
    EXPECT_NE(desktop.log.Starting("RegSetValueEx").at(0).find(" length=5 "), std::string::npos);
    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegSetValueTest, TextOfAMultiByteCodePageIsStoredWhole) {
    desktop.SetCodePage(platform::simulated::CodePage::Utf8);
    for (const TextView text : {u"Grüße", u"日本語", u"\xD83D\xDE00", u"a", u"ä"}) {
        EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", text), 0);
        EXPECT_EQ(Stored(u"v"), platform::simulated::ToUtf8(text) + '\0');
        EXPECT_EQ(Read(u"v"), text);
        EXPECT_EQ(ReadLike(Text()), Variant(Text(text)));
    }
}

TEST_F(RegSetValueTest, AsksForWriteAccessOnly) {
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"), 0);
    const auto lines = desktop.log.Starting("RegCreateKeyEx");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find("access=0x20006"), std::string::npos) << lines[0];
}

TEST_F(RegSetValueTest, ReturnsTheStatusOfAFailedCreateOrSet) {
    desktop.FailCall("RegCreateKeyEx", 1, 5);
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"), 5);
    EXPECT_EQ(component.apiResult.last, 5);
    desktop.FailCall("RegSetValueEx", 1, 1450);
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"), 1450);
    EXPECT_EQ(Stored(u"v"), "(none)");
    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegSetValueTest, AnInvalidRootIsTheStatusOfAnInvalidHandle) {
    EXPECT_EQ(registry.KWO_RegSetValue(0, kPath, u"v", u"text"), 6);
    EXPECT_EQ(registry.KWO_RegSetValue(12345, kPath, u"v", u"text"), 6);
}

// A reader would expect an empty string.
TEST_F(RegSetValueIntended, AnEmptyValueIsStoredAsOneBlank) {
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u""), 0);
    EXPECT_EQ(Stored(u"v"), std::string(" \0", 2));
    EXPECT_EQ(Read(u"v"), u"");
}

TEST_F(RegGetValueTest, ReadsAStringWithoutTerminatorAndTrailingBlanks) {
    Store(u"v", kString, std::string("text  \0", 7));
    EXPECT_EQ(Read(u"v"), u"text");
    Store(u"v", kString, "text");
    EXPECT_EQ(Read(u"v"), u"text");
    Store(u"v", kString, std::string("a\0b\0\0", 5));
    EXPECT_EQ(Read(u"v"), Text(u"a\0b\0", 4));
    Store(u"v", kString, std::string(1, '\0'));
    EXPECT_EQ(Read(u"v"), u"");
    Store(u"v", kString, "");
    EXPECT_EQ(Read(u"v"), u"");
}

TEST_F(RegGetValueTest, AsksForQueryAccessOnlyAndClosesTheKey) {
    Store(u"v", kString, "x");
    Read(u"v");
    EXPECT_NE(desktop.log.Starting("RegOpenKeyEx").at(0).find("access=0x1 "), std::string::npos);
    EXPECT_NE(desktop.log.Starting("RegQueryValueEx").at(0).find("capacity=1024"), std::string::npos);
    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegGetValueTest, BufferIsOfZeros) {
    Store(u"v", kString, "x");
    Read(u"v");
    EXPECT_NE(LastLine("RegQueryValueEx").find("capacity=1024 fill=0x0 "), std::string::npos);
}

TEST_F(RegGetValueTest, AMissingKeyOrValueIsStatusTwoAndEmpty) {
    Text value = u"before";
    EXPECT_EQ(registry.KWO_RegGetValue(kCurrentUser, kPath, u"v", value), 2);
    EXPECT_EQ(value, u"");
    desktop.registry.PutKey(kCurrentUser, kPath);
    value = u"before";
    EXPECT_EQ(registry.KWO_RegGetValue(kCurrentUser, kPath, u"v", value), 2);
    EXPECT_EQ(value, u"");
    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegGetValueTest, ReadsUpTo1024BytesAndSaysMoreDataBeyond) {
    Store(u"v", kString, std::string(1023, 'x') + '\0');
    EXPECT_EQ(Read(u"v").size(), 1023u);
    Store(u"v", kString, std::string(1024, 'x'));
    EXPECT_EQ(Read(u"v").size(), 1024u);
    Store(u"v", kString, std::string(1024, 'x') + '\0');
    Text value = u"before";
    EXPECT_EQ(registry.KWO_RegGetValue(kCurrentUser, kPath, u"v", value), 234);
    EXPECT_EQ(value, u"");
}

TEST_F(RegGetValueTest, OtherTypesAreEmptyWithSuccess) {
    Store(u"v", kBinary, "abc");
    EXPECT_EQ(Read(u"v"), u"");
}

TEST_F(RegGetValueTest, ANumberIsDecimalText) {
    struct Row {
        std::uint32_t stored;
        TextView text;
    };
    for (const Row& row : {Row{0, u"0"}, Row{255, u"255"}, Row{16, u"16"}, Row{0x12345678, u"305419896"},
                           Row{0x7FFFFFFF, u"2147483647"}, Row{0xFFFFFFFF, u"-1"}}) {
        StoreNumber(u"v", row.stored);
        EXPECT_EQ(Read(u"v"), row.text) << row.stored;
    }
}

// A reader would expect the number that was stored.
TEST_F(RegGetValueIntended, BytesBelowSixteenAndAHighByteOfABlankReadBackWrongly) {
    StoreNumber(u"v", 66051);  // bytes 03 02 01 00
    EXPECT_EQ(Read(u"v"), u"291");
    StoreNumber(u"v", 261);  // bytes 05 01 00 00
    EXPECT_EQ(Read(u"v"), u"21");
    StoreNumber(u"v", 0x20000011);  // the blank goes, and two zero bytes count as one digit each
    EXPECT_EQ(Read(u"v"), u"17");
    StoreNumber(u"v", 0x00202041);
    EXPECT_EQ(Read(u"v"), u"65");
    StoreNumber(u"v", 0x80000010);  // 80 0 0 10
    EXPECT_EQ(Read(u"v"), u"8388624");
}

// A reader would expect the number that was stored, and four digits are never a 16-bit number below 0.
TEST_F(RegGetValueIntended, FourDigitsFrom8000OnArePositiveAndEightAreNegative) {
    struct Row {
        std::string bytes;
        TextView text;
    };
    const Row rows[] = {{"\x41\x80", u"32833"},
                        {"\xFF\xFF", u"65535"},
                        {"\x10\x80\xFF", u"16744464"},
                        {std::string("\x01\0\0\x08", 4), u"32769"},
                        {std::string("\x11\x80\x20\0", 4), u"32785"},
                        {"\x11\x11\x11\x80", u"-2146365167"},
                        {"\xFF\xFF\xFF\x7F", u"2147483647"}};
    for (const Row& row : rows) {
        Store(u"v", kNumber, row.bytes);
        EXPECT_EQ(Read(u"v"), row.text);
    }
}

TEST_F(RegGetValueTest, ANumberOfTooManyBytesIsEmpty) {
    Store(u"v", kNumber, std::string(5, '\x7F'));
    EXPECT_EQ(Read(u"v"), u"");
    Store(u"v", kNumber, "");
    EXPECT_EQ(Read(u"v"), u"0");
}

TEST_F(RegDeleteTest, DeletesAValueAndAKey) {
    Store(u"v", kString, "x");
    EXPECT_EQ(registry.KWO_RegDeleteValue(kCurrentUser, kPath, u"v"), 0);
    EXPECT_EQ(Stored(u"v"), "(none)");
    EXPECT_EQ(registry.KWO_RegDeleteValue(kCurrentUser, kPath, u"v"), 2);
    EXPECT_EQ(registry.KWO_RegDeleteKey(kCurrentUser, kPath), 0);
    EXPECT_FALSE(desktop.registry.KeyExists(kCurrentUser, kPath));
    EXPECT_EQ(registry.KWO_RegDeleteKey(kCurrentUser, kPath), 2);
    EXPECT_EQ(registry.KWO_RegDeleteValue(kCurrentUser, kPath, u"v"), 2);
    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegDeleteTest, ValuesAreDeletedWithAllAccess) {
    Store(u"v", kString, "x");
    EXPECT_EQ(registry.KWO_RegDeleteValue(kCurrentUser, kPath, u"v"), 0);
    EXPECT_NE(desktop.log.Starting("RegOpenKeyEx").at(0).find("access=0xf003f"), std::string::npos);
}

TEST_F(RegDeleteTest, ReturnsThePlatformsStatus) {
    Store(u"v", kString, "x");
    desktop.FailCall("RegDeleteValue", 1, 5);
    EXPECT_EQ(registry.KWO_RegDeleteValue(kCurrentUser, kPath, u"v"), 5);
    desktop.registry.PutKey(kCurrentUser, u"Software\\KWOUtilTest\\Below");
    EXPECT_EQ(registry.KWO_RegDeleteKey(kCurrentUser, kPath), 5);
    EXPECT_EQ(desktop.registry.OpenKeys(), 0u);
}

TEST_F(RegCreateKeyTest, ReturnsAnOpenKeyWithTheStatedRights) {
    const Handle key = registry.KWO_RegCreateKey(kCurrentUser, kPath);
    EXPECT_NE(key, 0);
    EXPECT_EQ(desktop.registry.OpenKeys(), 1u);
    EXPECT_NE(desktop.log.Starting("RegCreateKeyEx").at(0).find("access=0x20007"), std::string::npos);
    EXPECT_EQ(registry.KWO_RegSetValue(key, u"", u"v", u"text"), 0);
    EXPECT_EQ(Stored(u"v"), std::string("text\0", 5));
}

// A reader would expect 0 after every failure.
TEST_F(RegCreateKeyIntended, AFailureReturnsTheKeyOfTheCallBefore) {
    desktop.FailCall("RegCreateKeyEx", 1, 5);
    EXPECT_EQ(registry.KWO_RegCreateKey(kCurrentUser, kPath), 0);
    const Handle key = registry.KWO_RegCreateKey(kCurrentUser, kPath);
    desktop.FailCall("RegCreateKeyEx", 1, 5);
    EXPECT_EQ(registry.KWO_RegCreateKey(kCurrentUser, kPath), key);
    EXPECT_EQ(component.apiResult.last, 5);
}

// A reader would expect 0, or the key that was created.
TEST_F(RegCreateKeyIntended, AFailureReturnsTheKeyOfAnyMemberCalledBefore) {
    const Handle created = registry.KWO_RegCreateKey(kCurrentUser, kPath);
    Text value;
    const std::function<void()> calls[] = {[&] { (void)registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"text"); },
                                           [&] { (void)registry.KWO_RegGetValue(kCurrentUser, kPath, u"v", value); },
                                           [&] { (void)registry.KWO_RegDeleteValue(kCurrentUser, kPath, u"v"); }};
    for (const auto& call : calls) {
        call();
        const std::string closed = LastLine("RegCloseKey");
        desktop.FailCall("RegCreateKeyEx", 1, 5);

        const Handle shown = registry.KWO_RegCreateKey(kCurrentUser, kPath);

        EXPECT_NE(shown, created);
        EXPECT_EQ("RegCloseKey " + platform::simulated::Hex(static_cast<std::uint32_t>(shown)) + " -> 0", closed);
    }
    const Handle before = registry.KWO_RegCreateKey(kCurrentUser, kPath);
    registry.KWO_RegGetValueEx(created, u"v", Text());
    (void)registry.KWO_RegDeleteKey(kCurrentUser, u"Software\\None");
    desktop.FailCall("RegCreateKeyEx", 1, 5);
    EXPECT_EQ(registry.KWO_RegCreateKey(kCurrentUser, kPath), before) << "these two use no key of their own";
}

TEST_F(RegGetValueExTest, NumbersTakeTheTypeOfTheDefault) {
    StoreNumber(u"v", 200);
    EXPECT_EQ(ReadLike(std::int16_t{1}), Variant(std::int16_t{200}));
    EXPECT_EQ(ReadLike(std::int32_t{1}), Variant(std::int32_t{200}));
    EXPECT_EQ(ReadLike(1.0f), Variant(200.0f));
    EXPECT_EQ(ReadLike(1.0), Variant(200.0));
    EXPECT_EQ(ReadLike(Currency{1}), Variant(Currency::Whole(200)));
    EXPECT_EQ(ReadLike(std::uint8_t{1}), Variant(std::uint8_t{200}));
    EXPECT_EQ(ReadLike(false), Variant(true));
    StoreNumber(u"v", 0);
    EXPECT_EQ(ReadLike(true), Variant(false));
    StoreNumber(u"v", 0xFFFFFFFF);
    EXPECT_EQ(ReadLike(std::int32_t{1}), Variant(std::int32_t{-1}));
    EXPECT_EQ(ReadLike(std::int16_t{1}), Variant(std::int16_t{-1}));
}

TEST_F(RegGetValueExTest, ANumberThatDoesNotFitGivesTheDefault) {
    struct Row {
        std::int32_t stored;
        Variant like, read;
    };
    constexpr std::int16_t kLike16 = 7;
    constexpr std::uint8_t kLike8 = 7;
    for (const Row& row : {Row{32767, kLike16, std::int16_t{32767}}, Row{32768, kLike16, kLike16},
                           Row{-32768, kLike16, std::int16_t{-32768}}, Row{-32769, kLike16, kLike16},
                           Row{255, kLike8, std::uint8_t{255}}, Row{256, kLike8, kLike8}, Row{-1, kLike8, kLike8}}) {
        StoreNumber(u"v", static_cast<std::uint32_t>(row.stored));
        EXPECT_EQ(ReadLike(row.like), row.read) << row.stored;
    }
}

TEST_F(RegGetValueExTest, AnUnreadableValueGivesTheDefault) {
    const Variant number = std::int32_t{42};
    const Variant text = Text(u"default");
    EXPECT_EQ(ReadLike(number), number);
    EXPECT_EQ(ReadLike(text), text);
    Store(u"v", kString, "longer than four");
    EXPECT_EQ(ReadLike(number), number);
    EXPECT_EQ(ReadLike(0, text), text);
    EXPECT_EQ(ReadLike(99999, number), number);
}

TEST_F(RegGetValueExTest, OtherTypesOfDefaultAreReturnedWithoutReading) {
    StoreNumber(u"v", 1);
    const Handle key = OpenKey();
    for (const Variant& like : {Variant(platform::Empty{}), Variant(platform::Null{}), Variant(platform::Missing{}),
                                Variant(platform::ErrorValue{7}), Variant(platform::HostObjectRef{})}) {
        EXPECT_EQ(registry.KWO_RegGetValueEx(key, u"v", like), std::nullopt);
    }
    EXPECT_EQ(desktop.faults.Calls("RegQueryValueEx"), 0);
}

TEST_F(RegGetValueExTest, TextIsCutAtItsEndAndTrimmedOnTheRight) {
    const Variant like = Text(u"default");
    Store(u"v", kString, std::string(" text  \0junk", 12));
    EXPECT_EQ(ReadLike(like), Variant(Text(u" text")));
    Store(u"v", kString, "no end");
    EXPECT_EQ(ReadLike(like), Variant(Text(u"no end")));
    Store(u"v", kString, "");
    EXPECT_EQ(ReadLike(like), Variant(Text()));
}

TEST_F(RegGetValueExTest, LongTextIsReadWholeWithASecondQuery) {
    const Variant like = Text(u"default");
    for (const std::size_t length : {259u, 260u, 261u, 1024u, 50'000u}) {
        Store(u"v", kString, std::string(length, 'x') + '\0');
        const int before = desktop.faults.Calls("RegQueryValueEx");
        EXPECT_EQ(ReadLike(like), Variant(Text(length, u'x')));
        EXPECT_EQ(desktop.faults.Calls("RegQueryValueEx") - before, length < 260 ? 1 : 2) << length;
    }
}

TEST_F(RegGetValueExTest, BytesOfAnyStoredTypeAreReadAsTheDefaultsType) {
    StoreNumber(u"v", 0x00434241);
    EXPECT_EQ(ReadLike(Text(u"default")), Variant(Text(u"ABC")));
    StoreNumber(u"v", 0x30);
    EXPECT_EQ(ReadLike(Date{100}), Variant(Date{0}));
    Store(u"v", kBinary, "text");
    EXPECT_EQ(ReadLike(Text(u"default")), Variant(Text(u"text")));
    Store(u"v", kString, std::string("abc\0", 4));
    EXPECT_EQ(ReadLike(std::int32_t{7}), Variant(std::int32_t{0x00636261}));
    EXPECT_EQ(ReadLike(std::int16_t{7}), Variant(std::int16_t{7})) << "it does not fit";
    Store(u"v", kBinary, std::string("\x01\x02\x03\x04\x05", 5));
    EXPECT_EQ(ReadLike(std::int32_t{7}), Variant(std::int32_t{7})) << "more than four bytes are no number";
}

// A reader would expect 1, False and 12345.
TEST_F(RegGetValueExIntended, ANumberThatWasStoredAsTextReadsAsItsBytes) {
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"1"), 0);
    EXPECT_EQ(ReadLike(std::int32_t{0}), Variant(std::int32_t{49}));
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"0"), 0);
    EXPECT_EQ(ReadLike(false), Variant(true));
    EXPECT_EQ(registry.KWO_RegSetValue(kCurrentUser, kPath, u"v", u"12345"), 0);
    EXPECT_EQ(ReadLike(std::int32_t{7}), Variant(std::int32_t{7}));
}

TEST_F(RegGetValueExTest, NumbersOfFewerThanFourBytesAreFilledWithZeros) {
    Store(u"v", kBinary, "\x01\x82");
    EXPECT_EQ(ReadLike(std::int32_t{7}), Variant(std::int32_t{0x8201}));
    Store(u"v", kNumber, "\xFF\xFF\xFF");
    EXPECT_EQ(ReadLike(1.0), Variant(16777215.0));
    Store(u"v", kString, "");
    EXPECT_EQ(ReadLike(std::int32_t{7}), Variant(std::int32_t{0}));
    EXPECT_NE(LastLine("RegQueryValueEx").find("capacity=4 fill=0x0 "), std::string::npos);
}

TEST_F(RegGetValueExTest, TextIsReadIntoABufferOfBlanks) {
    Store(u"v", kBinary, "no end");
    EXPECT_EQ(ReadLike(Text()), Variant(Text(u"no end")));
    EXPECT_NE(LastLine("RegQueryValueEx").find("capacity=260 fill=0x20 "), std::string::npos);
    Store(u"v", kBinary, std::string(300, 'x'));
    EXPECT_EQ(ReadLike(Text()), Variant(Text(300, u'x')));
    EXPECT_NE(LastLine("RegQueryValueEx").find("capacity=300 fill=0x20 "), std::string::npos);
}

TEST_F(RegGetValueExTest, TextThatGrowsBetweenTheQueriesIsFollowed) {
    std::size_t length = 300;
    int queries = 0;
    desktop.registry.onQuery = [&] {
        Store(u"v", kString, std::string(length, 'x') + '\0');
        if (++queries < 3) length *= 2;
    };

    EXPECT_EQ(ReadLike(Text(u"default")), Variant(Text(1'200, u'x')));
    EXPECT_EQ(queries, 4);
}

TEST_F(RegGetValueExTest, TextOfMoreThan64MiBIsReadWhole) {
    constexpr std::size_t kLength = (64u << 20) + 5;
    Store(u"v", kString, std::string(kLength, 'x'));

    const Variant read = ReadLike(Text(u"default"));

    ASSERT_TRUE(std::holds_alternative<Text>(read));
    EXPECT_EQ(std::get<Text>(read).size(), kLength);
}

TEST_F(RegGetValueExTest, TheBufferIsDoubledUntilThereIsNoLargerOne) {
    /// A system that wants more room, whatever it gets, and does not say how much.
    class Insatiable final : public platform::RegistryStore {
    public:
        KeyResult OpenKey(Handle, TextView, std::uint32_t) override { return {}; }
        KeyResult CreateKey(Handle, TextView, std::uint32_t, bool) override { return {}; }
        Status DeleteKey(Handle, TextView) override { return kSuccess; }
        Status DeleteValue(Handle, TextView) override { return kSuccess; }
        Value Query(Handle, TextView, std::uint32_t capacity, char) override {
            capacities.push_back(capacity);
            return {kMoreData, kString, capacity, {}};
        }
        Status SetString(Handle, TextView, TextView, std::uint32_t) override { return kSuccess; }
        Status CloseKey(Handle) override { return kSuccess; }

        std::vector<std::uint32_t> capacities;
    } store;
    struct Services : platform::Platform {
        platform::RegistryStore& registry;
    };
    const Services services{desktop.Services(), store};
    component::Component other(platform::ServicesOf(services));

    EXPECT_EQ(KWORegistry(other).KWO_RegGetValueEx(1, u"v", Text(u"default")), std::nullopt);

    ASSERT_EQ(store.capacities.size(), 24u);
    for (std::size_t i = 0; i < store.capacities.size(); ++i)
        EXPECT_EQ(store.capacities[i], 260u << i);
    EXPECT_EQ(other.apiResult.last, platform::RegistryStore::kMoreData);
}

TEST_F(RegGetValueExTest, AFailingSecondQueryGivesTheDefault) {
    Store(u"v", kString, std::string(300, 'x'));
    desktop.FailCall("RegQueryValueEx", 2, 5);
    EXPECT_EQ(ReadLike(Text(u"default")), Variant(Text(u"default")));
}

TEST_F(RegGetValueExTest, ADateIsReadFromItsTextOrZero) {
    const Variant like = Date{100};
    Store(u"v", kString, std::string("12/31/1999\0", 11));
    EXPECT_EQ(ReadLike(like), Variant(Date{36525}));
    Store(u"v", kString, std::string("0\0", 2));
    EXPECT_EQ(ReadLike(like), Variant(Date{0}));
    for (const std::string text : {"00", " 0", "no date", ""}) {
        Store(u"v", kString, text + '\0');
        EXPECT_EQ(ReadLike(like), like) << text;
    }
}

TEST_F(RegGetValueExTest, TheKeyStaysOpen) {
    StoreNumber(u"v", 1);
    const Handle key = OpenKey();
    registry.KWO_RegGetValueEx(key, u"v", std::int32_t{0});
    registry.KWO_RegGetValueEx(key, u"v", Text());
    EXPECT_TRUE(desktop.log.Starting("RegCloseKey").empty());
    EXPECT_EQ(desktop.registry.OpenKeys(), 1u);
}

}  // namespace
}  // namespace kwo::registry
