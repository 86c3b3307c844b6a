#include "timers/timer_table.h"

#include <new>
#include <vector>

#include "platform/simulated/failing_memory.h"
#include "timers/timer_fixture.h"

namespace kwo::timers {
namespace {

using platform::Milliseconds;
using platform::simulated::FailingMemory;

class TimerTableTest : public testing::Test {
protected:
    static constexpr std::int64_t kDue = 100;

    /// An alarm with that tag, due at a time of its own.
    TimerRow Alarm(std::int32_t tag) { return {kAlarm, 0, tag, OwnerRef(owner), Milliseconds{kDue - tag}}; }
    static void Empty(TimerTable& table) {
        for (auto row = table.FirstUsed(); row != TimerTable::kNoRow; row = table.FirstUsed())
            (void)table.Free(row);
    }
    void ExpectAlarms(const TimerTable& table, std::int32_t count) {
        ASSERT_EQ(table.ActiveCount(), count);
        ASSERT_EQ(owner.references, count);
        ASSERT_EQ(table.EarliestDue(), count > 0 ? kDue - count : DueIndex::kNever);
        for (std::int32_t tag = 1; tag <= count; ++tag) {
            ASSERT_EQ(table.AlarmOf(owner, tag), tag);
            ASSERT_EQ(table.FirstDue(Milliseconds{kDue - tag}), tag);
        }
        ASSERT_EQ(table.AlarmOf(owner, count + 1), TimerTable::kNoRow);
    }

    std::vector<std::string> told;
    RecordingOwner owner{told, "a"};
};

TEST_F(TimerTableTest, TakingARowChangesNothingWhenThereIsNoMemory) {
    int failures = 0;
    for (const std::int32_t count : {0, 2, 4, 8, 16, 32, 64}) {
        bool failed = true;
        for (int nth = 1; failed; ++nth) {
            TimerTable table;
            for (std::int32_t tag = 1; tag <= count; ++tag)
                table.Take(Alarm(tag));
            {
                const FailingMemory memory(nth);
                try {
                    table.Take(Alarm(count + 1));
                } catch (const std::bad_alloc&) {
                    ++failures;
                }
                failed = memory.HasFailed();
            }

            if (failed) {
                ExpectAlarms(table, count);
                EXPECT_EQ(table.SlotCount(), count);
                table.Take(Alarm(count + 1));
            }
            ExpectAlarms(table, count + 1);
            EXPECT_EQ(table.SlotCount(), count + 2);
            Empty(table);
            if (HasFailure()) FAIL() << count << " rows, allocation " << nth;
        }
    }
    EXPECT_GT(failures, 10) << "taking a row has to need memory";
}

TEST_F(TimerTableTest, ATickIsNoAlarmHoweverTheTableGrows) {
    TimerTable table;
    table.Take({kTick, 100, 0, OwnerRef(owner), Milliseconds{kDue}});
    for (std::int32_t tag = 1; tag <= 100; ++tag) {
        table.Take(Alarm(tag));
        ASSERT_EQ(table.AlarmOf(owner, 0), TimerTable::kNoRow) << tag;
        ASSERT_EQ(table.AlarmOf(owner, tag), tag + 1);
    }
    EXPECT_EQ(TimerTable::TickOf(owner), 1);
    Empty(table);
}

TEST_F(TimerTableTest, AlarmsWithTheSameHashAreToldApart) {
    RecordingOwner other{told, "b"};
    const std::uint32_t difference = AlarmIndex::HashOf(owner, 0) - AlarmIndex::HashOf(other, 0);
    const auto tag = static_cast<std::int32_t>(difference);
    TimerTable table;
    table.Take({kAlarm, 0, tag, OwnerRef(other), Milliseconds{kDue}});
    EXPECT_EQ(AlarmIndex::HashOf(other, tag), AlarmIndex::HashOf(owner, 0));
    EXPECT_EQ(table.AlarmOf(owner, 0), TimerTable::kNoRow);

    table.Take(Alarm(0));
    EXPECT_EQ(table.AlarmOf(other, tag), 1);
    EXPECT_EQ(table.AlarmOf(owner, 0), 2);
    (void)table.Free(1);
    EXPECT_EQ(table.AlarmOf(other, tag), TimerTable::kNoRow);
    EXPECT_EQ(table.AlarmOf(owner, 0), 2);
    Empty(table);
}

TEST_F(TimerTableTest, AReferenceToNobodyCanBeCopied) {
    const std::vector<OwnerRef> none(2, OwnerRef());
    EXPECT_EQ(none[1].Get(), nullptr);

    const std::vector<OwnerRef> some(2, OwnerRef(owner));
    EXPECT_EQ(some[1].Get(), &owner);
    EXPECT_EQ(owner.references, 2);
}

}  // namespace
}  // namespace kwo::timers
