#include "platform/simulated/simulated_registry_store.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/simulated/simulated_desktop.h"

namespace kwo::platform::simulated {
namespace {

constexpr Handle Root(std::uint32_t number) {
    return static_cast<Handle>(0x80000000u + number);
}
constexpr Handle kUser = Root(1);
constexpr std::uint32_t kQuery = 0x1;
constexpr std::uint32_t kSet = 0x2;
constexpr std::uint32_t kAll = 0xF003F;

class SimulatedRegistryStoreTest : public testing::Test {
protected:
    Handle Made(TextView name, std::uint32_t access = kAll) {
        const auto result = registry.CreateKey(kUser, name, access, true);
        EXPECT_EQ(result.status, 0);
        return result.key;
    }

    SimulatedDesktop desktop;
    SimulatedRegistryStore& registry = desktop.registry;
};

TEST_F(SimulatedRegistryStoreTest, PredefinedRootsAreThereAndNoOthers) {
    for (std::uint32_t number = 0; number <= 6; ++number) {
        EXPECT_EQ(registry.OpenKey(Root(number), u"", kQuery).status, 0) << number;
    }
    EXPECT_EQ(registry.OpenKey(Root(7), u"", kQuery).status, 6);
    EXPECT_EQ(registry.OpenKey(0, u"Software", kQuery).status, 6);
    EXPECT_EQ(registry.OpenKeys(), 7u);
}

TEST_F(SimulatedRegistryStoreTest, PathCreatesEveryKeyOnItAndCaseDoesNotMatter) {
    const Handle key = Made(u"Software\\Maker\\Product");

    EXPECT_TRUE(registry.KeyExists(kUser, u"software\\MAKER"));
    EXPECT_EQ(registry.SetString(key, u"Name", u"v", 2), 0);
    EXPECT_EQ(registry.Query(key, u"NAME", 10, ' ').status, 0);
    EXPECT_EQ(registry.OpenKey(kUser, u"Software\\Other", kQuery).status, 2);
    EXPECT_EQ(registry.OpenKey(kUser, u"\\Software", kQuery).status, 161);
    EXPECT_EQ(registry.OpenKey(kUser, u"Software\\", kQuery).status, 0);
}

TEST_F(SimulatedRegistryStoreTest, CreatingAnExistingKeyOpensItWithItsValues) {
    registry.PutValue(kUser, u"A", u"n", 1, std::string("x\0", 2));

    const Handle key = Made(u"A");

    EXPECT_EQ(registry.Query(key, u"n", 2, ' ').bytes, std::string("x\0", 2));
}

TEST_F(SimulatedRegistryStoreTest, RightsAreAskedOnUse) {
    const Handle reader = Made(u"A", kQuery);
    const Handle writer = Made(u"A", kSet);

    EXPECT_EQ(registry.SetString(reader, u"n", u"v", 2), 5);
    EXPECT_EQ(registry.DeleteValue(reader, u"n"), 5);
    EXPECT_EQ(registry.SetString(writer, u"n", u"v", 2), 0);
    EXPECT_EQ(registry.Query(writer, u"n", 9, ' ').status, 5);
    EXPECT_EQ(registry.Query(reader, u"n", 9, ' ').status, 0);
    EXPECT_EQ(registry.CreateKey(reader, u"Sub", kQuery, false).status, 0);
}

TEST_F(SimulatedRegistryStoreTest, ReadOnlyKeyRefusesChange) {
    registry.PutValue(kUser, u"A", u"n", 1, "v");
    registry.MakeReadOnly(kUser, u"A");

    EXPECT_EQ(registry.OpenKey(kUser, u"A", kQuery).status, 0);
    EXPECT_EQ(registry.OpenKey(kUser, u"A", kAll).status, 5);
    EXPECT_EQ(registry.CreateKey(kUser, u"A", 0x20006, false).status, 5);
    EXPECT_EQ(registry.CreateKey(kUser, u"A\\B", kQuery, false).status, 5);
    EXPECT_EQ(registry.DeleteKey(kUser, u"A"), 5);
    EXPECT_NE(registry.Find(kUser, u"A", u"n"), nullptr);
}

TEST_F(SimulatedRegistryStoreTest, StringIsStoredInAnsiAtTheGivenLength) {
    struct Row {
        Text value;
        std::uint32_t length;
        std::string stored;
    };
    const Row rows[] = {{u"abc", 4, std::string("abc\0", 4)},
                        {u"abc", 3, std::string("abc\0", 4)},
                        {u"abc", 2, "ab"},
                        {u"abc", 6, std::string("abc\0\0\0", 6)},
                        {u"", 1, std::string("\0", 1)},
                        {Text(u"a\0", 2), 2, std::string("a\0", 2)},
                        {u"", 0, ""},
                        {u"€ü漢", 4, std::string("\x80\xFC?\0", 4)}};
    const Handle key = Made(u"A");
    for (const Row& row : rows) {
        EXPECT_EQ(registry.SetString(key, u"n", row.value, row.length), 0);
        EXPECT_EQ(registry.Find(kUser, u"A", u"n")->bytes, row.stored) << row.length;
        EXPECT_EQ(registry.Find(kUser, u"A", u"n")->type, 1u);
    }
}

TEST_F(SimulatedRegistryStoreTest, QueryFillsWhatItReadsAndLeavesTheRest) {
    registry.PutValue(kUser, u"A", u"text", 1, std::string("ab\0", 3));
    registry.PutValue(kUser, u"A", u"open", 1, "ab");
    registry.PutValue(kUser, u"A", u"number", 4, std::string("\1\2\3\4", 4));
    const Handle key = Made(u"A");

    const auto text = registry.Query(key, u"text", 5, '#');
    EXPECT_EQ(text.type, 1u);
    EXPECT_EQ(text.length, 3u);
    EXPECT_EQ(text.bytes, std::string("ab\0##", 5));
    EXPECT_EQ(registry.Query(key, u"open", 4, '#').bytes, std::string("ab\0#", 4));
    EXPECT_EQ(registry.Query(key, u"open", 4, '#').length, 2u);
    EXPECT_EQ(registry.Query(key, u"open", 2, '#').bytes, "ab");
    EXPECT_EQ(registry.Query(key, u"number", 5, '#').bytes, "\1\2\3\4#");
    EXPECT_EQ(registry.Query(key, u"number", 5, '#').type, 4u);
}

TEST_F(SimulatedRegistryStoreTest, TooSmallABufferIsToldTheNeededLength) {
    registry.PutValue(kUser, u"A", u"n", 1, std::string("abc\0", 4));
    const Handle key = Made(u"A");

    const auto small = registry.Query(key, u"n", 3, '#');
    EXPECT_EQ(small.status, 234);
    EXPECT_EQ(small.length, 4u);
    EXPECT_EQ(small.bytes.size(), 3u);
    EXPECT_EQ(registry.Query(key, u"n", 4, '#').status, 0);
}

TEST_F(SimulatedRegistryStoreTest, MissingValuesAreNotFound) {
    const Handle key = Made(u"A");

    EXPECT_EQ(registry.Query(key, u"none", 4, '#').status, 2);
    EXPECT_EQ(registry.Query(key, u"none", 4, '#').bytes, "####");
    EXPECT_EQ(registry.Query(key, u"", 4, '#').status, 2);
    EXPECT_EQ(registry.DeleteValue(key, u"none"), 2);
}

TEST_F(SimulatedRegistryStoreTest, KeyWithSubkeysCannotBeDeleted) {
    Made(u"A\\B");

    EXPECT_EQ(registry.DeleteKey(kUser, u"A"), 5);
    EXPECT_EQ(registry.DeleteKey(kUser, u"A\\B"), 0);
    EXPECT_EQ(registry.DeleteKey(kUser, u"A"), 0);
    EXPECT_EQ(registry.DeleteKey(kUser, u"A"), 2);
    EXPECT_FALSE(registry.KeyExists(kUser, u"A"));
    EXPECT_EQ(registry.DeleteKey(kUser, u""), 5);
}

TEST_F(SimulatedRegistryStoreTest, HandleOfADeletedKeyIsGoodForClosingOnly) {
    const Handle key = Made(u"A");
    ASSERT_EQ(registry.DeleteKey(kUser, u"A"), 0);

    EXPECT_EQ(registry.Query(key, u"n", 4, ' ').status, 1018);
    EXPECT_EQ(registry.SetString(key, u"n", u"v", 2), 1018);
    EXPECT_EQ(registry.DeleteValue(key, u"n"), 1018);
    EXPECT_EQ(registry.OpenKey(key, u"B", kQuery).status, 1018);
    EXPECT_EQ(registry.CreateKey(key, u"B", kQuery, false).status, 1018);
    EXPECT_EQ(registry.CloseKey(key), 0);
    EXPECT_EQ(registry.OpenKeys(), 0u);
}

TEST_F(SimulatedRegistryStoreTest, ClosedHandleIsInvalidAndNeverComesBack) {
    const Handle first = Made(u"A");
    EXPECT_EQ(registry.OpenKeys(), 1u);
    EXPECT_EQ(registry.CloseKey(first), 0);
    const Handle second = Made(u"A");

    EXPECT_NE(first, second);
    EXPECT_EQ(registry.CloseKey(first), 6);
    EXPECT_EQ(registry.Query(first, u"n", 4, ' ').status, 6);
    EXPECT_EQ(registry.SetString(first, u"n", u"v", 2), 6);
    EXPECT_EQ(registry.DeleteValue(first, u"n"), 6);
    EXPECT_EQ(registry.DeleteKey(first, u"n"), 6);
    EXPECT_EQ(registry.CloseKey(kUser), 0);
    EXPECT_EQ(registry.OpenKey(kUser, u"A", kQuery).status, 0);
}

TEST_F(SimulatedRegistryStoreTest, NamesHaveALongestLength) {
    const Handle key = Made(u"A");

    EXPECT_EQ(registry.CreateKey(key, Text(255, u'k'), kQuery, false).status, 0);
    EXPECT_EQ(registry.CreateKey(key, Text(256, u'k'), kQuery, false).status, 87);
    EXPECT_EQ(registry.OpenKey(key, Text(256, u'k'), kQuery).status, 87);
    EXPECT_EQ(registry.SetString(key, Text(16383, u'v'), u"x", 2), 0);
    EXPECT_EQ(registry.SetString(key, Text(16384, u'v'), u"x", 2), 87);
}

TEST_F(SimulatedRegistryStoreTest, PlannedFailureChangesNothing) {
    const Handle key = Made(u"A");
    desktop.faults.FailCall("RegSetValueEx", 2, 8);
    desktop.faults.FailCall("RegCloseKey", 1, 6);

    EXPECT_EQ(registry.SetString(key, u"one", u"v", 2), 0);
    EXPECT_EQ(registry.SetString(key, u"two", u"v", 2), 8);
    EXPECT_EQ(registry.Find(kUser, u"A", u"two"), nullptr);
    EXPECT_EQ(registry.CloseKey(key), 6);
    EXPECT_EQ(registry.OpenKeys(), 1u);
}

TEST_F(SimulatedRegistryStoreTest, CallsStandInTheLog) {
    const Handle key = Made(u"A\\B", 0x20006);
    EXPECT_EQ(registry.SetString(key, u"n", u"v", 2), 0);
    EXPECT_EQ(registry.OpenKey(kUser, u"X", 1).status, 2);

    EXPECT_EQ(desktop.log.Lines(),
              (std::vector<std::string>{"RegCreateKeyEx 0x80000001 A\\B access=0x20006 inheritable -> 0",
                                        "RegSetValueEx 0x100 n=v length=2 -> 0",
                                        "RegOpenKeyEx 0x80000001 X access=0x1 -> 2"}));
}

TEST_F(SimulatedRegistryStoreTest, GenericRightsStandForTheirOwn) {
    constexpr std::uint32_t kGenericRead = 0x80000000;
    constexpr std::uint32_t kGenericWrite = 0x40000000;
    constexpr std::uint32_t kGenericAll = 0x10000000;
    constexpr std::uint32_t kMaximumAllowed = 0x02000000;
    struct Row {
        std::uint32_t access;
        std::int32_t read;
        std::int32_t write;
    };
    registry.PutValue(kUser, u"A", u"n", 1, "v");
    for (const Row& row :
         {Row{kGenericRead, 0, 5}, Row{kGenericWrite, 5, 0}, Row{kGenericAll, 0, 0}, Row{kMaximumAllowed, 0, 0}}) {
        const Handle key = registry.OpenKey(kUser, u"A", row.access).key;
        EXPECT_EQ(registry.Query(key, u"n", 9, ' ').status, row.read) << row.access;
        EXPECT_EQ(registry.SetString(key, u"n", u"v", 2), row.write) << row.access;
    }
    registry.MakeReadOnly(kUser, u"A");
    const Handle key = registry.OpenKey(kUser, u"A", kMaximumAllowed).key;
    EXPECT_EQ(registry.Query(key, u"n", 9, ' ').status, 0);
    EXPECT_EQ(registry.SetString(key, u"n", u"v", 2), 5);
}

TEST_F(SimulatedRegistryStoreTest, AReadOnlyRootRefusesChange) {
    registry.PutValue(kUser, u"", u"n", 1, "v");
    registry.MakeReadOnly(kUser, u"");

    EXPECT_EQ(registry.Query(kUser, u"n", 9, ' ').status, 0);
    EXPECT_EQ(registry.SetString(kUser, u"n", u"w", 2), 5);
    EXPECT_EQ(registry.CreateKey(kUser, u"A", kQuery, false).status, 5);
}

TEST_F(SimulatedRegistryStoreTest, BackslashesAreLeftOutWhereNoNameIsBetweenThem) {
    registry.PutKey(kUser, u"A\\B");
    EXPECT_EQ(registry.OpenKey(kUser, u"A\\\\B", kQuery).status, 0);
    EXPECT_EQ(registry.OpenKey(Root(0), u"\\", kQuery).status, 0) << "the classes root takes one in front";
}

TEST_F(SimulatedRegistryStoreTest, PreparingWhatCannotBeIsATestsMistake) {
    EXPECT_THROW(registry.PutKey(kUser, u"\\A"), std::invalid_argument);
    EXPECT_THROW(registry.MakeReadOnly(kUser, u"Missing"), std::invalid_argument);
    EXPECT_EQ(registry.Find(kUser, u"Missing", u"n"), nullptr);
}

}  // namespace
}  // namespace kwo::platform::simulated
