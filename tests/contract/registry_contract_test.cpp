#include <vector>

#include "contract_test.h"

namespace kwo::contract {
namespace {

using platform::RegistryStore;

constexpr Handle kUser = static_cast<Handle>(0x80000001u);
constexpr TextView kBase = u"Software\\KWOUtilContract";
constexpr std::uint32_t kQuery = 0x1;
constexpr std::uint32_t kSet = 0x2;
constexpr std::uint32_t kAll = 0xF003F;
constexpr std::uint32_t kString = 1;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kNumber = 4;

class RegistryContract : public ContractTest {
protected:
    void SetUp() override {
        outside().RemoveKeyTree(kBase);
        base = Made(kUser, kBase);
        ASSERT_NE(base, 0);
    }
    void TearDown() override {
        for (const Handle key : mMade)
            registry.CloseKey(key);
        outside().RemoveKeyTree(kBase);
    }
    Handle Made(Handle root, TextView name, std::uint32_t access = kAll) {
        const auto result = registry.CreateKey(root, name, access, true);
        EXPECT_EQ(result.status, 0) << Printed(name);
        mMade.push_back(result.key);
        return result.key;
    }
    RegistryStore::Status Opening(Handle root, TextView name, std::uint32_t access = kQuery) {
        const auto result = registry.OpenKey(root, name, access);
        if (result.status == 0) registry.CloseKey(result.key);
        return result.status;
    }
    RegistryStore::Status Creating(Handle root, TextView name, std::uint32_t access = kQuery) {
        const auto result = registry.CreateKey(root, name, access, false);
        if (result.status == 0) registry.CloseKey(result.key);
        return result.status;
    }

    RegistryStore& registry = platform().registry;
    Handle base = 0;

private:
    std::vector<Handle> mMade;
};

TEST_F(RegistryContract, CreatedPathIsFoundInAnyCase) {
    EXPECT_EQ(Opening(base, u"One"), 2);
    Made(base, u"One\\Two\\Three");

    EXPECT_EQ(Opening(base, u"One\\Two"), 0);
    EXPECT_EQ(Opening(kUser, u"SOFTWARE\\kwoutilcontract\\one\\TWO\\three"), 0);
    EXPECT_EQ(Opening(base, u"One\\Two\\Four"), 2);
    EXPECT_EQ(Opening(base, u"Five\\Two"), 2);
    EXPECT_EQ(Opening(base, u""), 0);
}

TEST_F(RegistryContract, CreatingAnExistingKeyKeepsItsValues) {
    ASSERT_EQ(registry.SetString(base, u"n", u"kept", 5), 0);

    const Handle again = Made(kUser, kBase, 0x20007);

    EXPECT_EQ(registry.Query(again, u"n", 5, ' ').bytes, std::string("kept\0", 5));
}

TEST_F(RegistryContract, HandleThatIsNoKeyIsInvalid) {
    const auto opened = registry.OpenKey(kUser, kBase, kAll);
    ASSERT_EQ(opened.status, 0);
    ASSERT_EQ(registry.CloseKey(opened.key), 0);

    for (const Handle handle : {Handle{0}, opened.key}) {
        EXPECT_EQ(Opening(handle, u"x"), 6) << handle;
        EXPECT_EQ(Creating(handle, u"x"), 6) << handle;
        EXPECT_EQ(registry.DeleteKey(handle, u"x"), 6) << handle;
        EXPECT_EQ(registry.DeleteValue(handle, u"x"), 6) << handle;
        EXPECT_EQ(registry.Query(handle, u"x", 4, ' ').status, 6) << handle;
        EXPECT_EQ(registry.SetString(handle, u"x", u"v", 2), 6) << handle;
        EXPECT_EQ(registry.CloseKey(handle), 6) << handle;
    }
}

TEST_F(RegistryContract, PredefinedRootSurvivesClosing) {
    EXPECT_EQ(registry.CloseKey(kUser), 0);
    EXPECT_EQ(Opening(kUser, kBase), 0);
}

TEST_F(RegistryContract, RightsAreAskedOnUse) {
    ASSERT_EQ(registry.SetString(base, u"n", u"v", 2), 0);
    const Handle reader = Made(kUser, kBase, kQuery);
    const Handle writer = Made(kUser, kBase, kSet);

    EXPECT_EQ(registry.SetString(reader, u"n", u"w", 2), 5);
    EXPECT_EQ(registry.DeleteValue(reader, u"n"), 5);
    EXPECT_EQ(registry.Query(writer, u"n", 4, ' ').status, 5);
    EXPECT_EQ(registry.Query(reader, u"n", 4, ' ').bytes, std::string("v\0  ", 4));
    EXPECT_EQ(registry.SetString(writer, u"n", u"w", 2), 0);
    EXPECT_EQ(registry.DeleteValue(writer, u"n"), 0);
    EXPECT_EQ(Creating(reader, u"Sub"), 0);
}

TEST_F(RegistryContract, StringIsStoredAtTheGivenLength) {
    struct Row {
        Text value;
        std::uint32_t length;
        std::string stored;
    };
    const Row rows[] = {{u"abc", 4, std::string("abc\0", 4)},
                        {u"abc", 3, std::string("abc\0", 4)},
                        {u"abc", 2, "ab"},
                        {u"abc", 6, std::string("abc\0\0\0", 6)},
                        {Text(u"a\0", 2), 2, std::string("a\0", 2)},
                        {u" ", 2, std::string(" \0", 2)},
                        {u"", 1, std::string("\0", 1)}};
    for (const Row& row : rows) {
        ASSERT_EQ(registry.SetString(base, u"n", row.value, row.length), 0);
        const auto read = registry.Query(base, u"n", 32, '#');
        EXPECT_EQ(read.type, kString);
        EXPECT_EQ(read.length, row.stored.size()) << Printed(row.value) << row.length;
        EXPECT_EQ(read.bytes.substr(0, read.length), row.stored) << Printed(row.value) << row.length;
    }
}

TEST_F(RegistryContract, TextBeyondAsciiIsStoredInTheAnsiCodePage) {
    ASSERT_EQ(registry.SetString(base, u"Größe", u"ä€", 3), 0);

    const auto read = registry.Query(base, u"Größe", 3, '#');

    EXPECT_EQ(read.status, 0);
    EXPECT_EQ(read.bytes, std::string("\xE4\x80\0", 3));
}

TEST_F(RegistryContract, NamesEndAtAZeroCharacter) {
    ASSERT_EQ(registry.SetString(base, TextView(u"cut\0rest", 8), u"v", 2), 0);

    EXPECT_EQ(registry.Query(base, u"cut", 2, ' ').status, 0);
}

TEST_F(RegistryContract, QueryLeavesTheRestOfTheBufferAsItWas) {
    outside().PutValue(kBase, u"text", kString, std::string("ab\0", 3));
    outside().PutValue(kBase, u"number", kNumber, std::string("\1\2\3\4", 4));
    outside().PutValue(kBase, u"binary", kBinary, std::string("\0\xFF", 2));

    const auto text = registry.Query(base, u"text", 6, '#');
    EXPECT_EQ(text.length, 3u);
    EXPECT_EQ(text.bytes, std::string("ab\0###", 6));
    const auto number = registry.Query(base, u"number", 4, '#');
    EXPECT_EQ(number.type, kNumber);
    EXPECT_EQ(number.length, 4u);
    EXPECT_EQ(number.bytes, "\1\2\3\4");
    const auto binary = registry.Query(base, u"binary", 3, '#');
    EXPECT_EQ(binary.type, kBinary);
    EXPECT_EQ(binary.length, 2u);
    EXPECT_EQ(binary.bytes, std::string("\0\xFF#", 3));
}

TEST_F(RegistryContract, StringWithoutItsTerminatorIsReadWithOneWhereThereIsRoom) {
    outside().PutValue(kBase, u"open", kString, "ab");

    const auto roomy = registry.Query(base, u"open", 4, '#');
    EXPECT_EQ(roomy.length, 2u);
    EXPECT_EQ(roomy.bytes, std::string("ab\0#", 4));
    const auto exact = registry.Query(base, u"open", 2, '#');
    EXPECT_EQ(exact.status, 0);
    EXPECT_EQ(exact.length, 2u);
    EXPECT_EQ(exact.bytes, "ab");
}

TEST_F(RegistryContract, TooSmallABufferIsToldTheNeededLength) {
    const Text value(300, u'x');
    ASSERT_EQ(registry.SetString(base, u"n", value, 301), 0);

    for (const std::uint32_t capacity : {0u, 1u, 260u, 300u}) {
        const auto read = registry.Query(base, u"n", capacity, ' ');
        EXPECT_EQ(read.status, 234) << capacity;
        EXPECT_EQ(read.length, 301u) << capacity;
        EXPECT_EQ(read.bytes.size(), capacity);
    }
    const auto read = registry.Query(base, u"n", 301, ' ');
    EXPECT_EQ(read.status, 0);
    EXPECT_EQ(read.bytes, std::string(300, 'x') + '\0');
}

TEST_F(RegistryContract, MissingValueIsNotFoundAndLeavesTheBuffer) {
    EXPECT_EQ(registry.Query(base, u"none", 4, '#').status, 2);
    EXPECT_EQ(registry.Query(base, u"none", 4, '#').bytes, "####");
    EXPECT_EQ(registry.Query(base, u"", 4, '#').status, 2);
    EXPECT_EQ(registry.DeleteValue(base, u"none"), 2);
}

TEST_F(RegistryContract, ValueWithoutANameIsTheKeysOwn) {
    ASSERT_EQ(registry.SetString(base, u"", u"own", 4), 0);

    EXPECT_EQ(registry.Query(base, u"", 4, ' ').bytes, std::string("own\0", 4));
    EXPECT_EQ(registry.DeleteValue(base, u""), 0);
    EXPECT_EQ(registry.DeleteValue(base, u""), 2);
}

TEST_F(RegistryContract, KeyWithSubkeysCannotBeDeleted) {
    Made(base, u"A\\B");

    EXPECT_EQ(registry.DeleteKey(base, u"A"), 5);
    EXPECT_EQ(Opening(base, u"A\\B"), 0);
    EXPECT_EQ(registry.DeleteKey(base, u"a\\b"), 0);
    EXPECT_EQ(registry.DeleteKey(base, u"A"), 0);
    EXPECT_EQ(registry.DeleteKey(base, u"A"), 2);
    EXPECT_EQ(registry.DeleteKey(base, u"A\\B"), 2);
}

TEST_F(RegistryContract, DeletedKeyIsGoodForClosingOnly) {
    const Handle key = Made(base, u"A");
    ASSERT_EQ(registry.DeleteKey(base, u"A"), 0);

    EXPECT_EQ(registry.Query(key, u"n", 4, ' ').status, 1018);
    EXPECT_EQ(registry.SetString(key, u"n", u"v", 2), 1018);
    EXPECT_EQ(registry.DeleteValue(key, u"n"), 1018);
    EXPECT_EQ(Creating(key, u"B"), 1018);
    EXPECT_EQ(registry.CloseKey(key), 0);
}

TEST_F(RegistryContract, KeyNamesHaveALongestLength) {
    EXPECT_EQ(Creating(base, Text(255, u'k')), 0);
    EXPECT_EQ(Opening(base, Text(255, u'k')), 0);
    EXPECT_EQ_BUT_WINE(Creating(base, Text(256, u'k')), 87, 0);
    EXPECT_EQ(Creating(base, Text(257, u'k')), 87);
    EXPECT_NE(Opening(base, Text(257, u'k')), 0);
}

TEST_F(RegistryContract, ValueNamesHaveALongestLength) {
    EXPECT_EQ(registry.SetString(base, Text(16383, u'v'), u"x", 2), 0);
    EXPECT_EQ(registry.Query(base, Text(16383, u'v'), 2, ' ').status, 0);
    EXPECT_NE(registry.SetString(base, Text(16384, u'v'), u"x", 2), 0);
}

TEST_F(RegistryContract, BackslashAtTheEndOfANameIsLeftOutAtTheBeginningRefused) {
    EXPECT_EQ(Opening(kUser, u"Software\\KWOUtilContract\\"), 0);
    EXPECT_EQ(Opening(kUser, u"\\Software\\KWOUtilContract"), 161);
}

}  // namespace
}  // namespace kwo::contract
