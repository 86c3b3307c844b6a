#include "frame/saved_events.h"

#include "frame/trace_fixture.h"

namespace kwo::frame {
namespace {

class SavedEventsTest : public testing::Test {
protected:
    void Save(int count) {
        for (int entry = 1; entry <= count; ++entry)
            ring.Save(u"entry " + Decimal(entry));
    }
    SavedEvents ring;
};
using TraceRingTest = TraceTest;

TEST_F(SavedEventsTest, NothingIsKeptWithoutARing) {
    Save(1);
    EXPECT_FALSE(ring.Exists());
    EXPECT_EQ(ring.WriteIndex(), 0);
    EXPECT_EQ(ring.Slot(1), u"");
}

TEST_F(SavedEventsTest, IsFilledFromItsFirstSlot) {
    ring.Create(3);
    EXPECT_EQ(ring.WriteIndex(), 1);
    EXPECT_EQ(ring.OldestIndex(), 1);
    Save(2);
    EXPECT_EQ(ring.Slot(1), u"entry 1");
    EXPECT_EQ(ring.Slot(2), u"entry 2");
    EXPECT_EQ(ring.Slot(3), u"");
    EXPECT_EQ(ring.Slot(0), u"");
    EXPECT_EQ(ring.WriteIndex(), 3);
    EXPECT_EQ(ring.OldestIndex(), 1);
}

TEST_F(SavedEventsTest, TheWriteIndexPushesTheOldestOneOn) {
    ring.Create(3);
    Save(3);
    EXPECT_EQ(ring.WriteIndex(), 1);
    EXPECT_EQ(ring.OldestIndex(), 2);
}

TEST_F(SavedEventsTest, FiveEntriesInARingOfThree) {
    ring.Create(3);
    Save(5);
    EXPECT_EQ(ring.Slot(1), u"entry 4");
    EXPECT_EQ(ring.Slot(2), u"entry 5");
    EXPECT_EQ(ring.Slot(3), u"entry 3");
    EXPECT_EQ(ring.WriteIndex(), 3);
    EXPECT_EQ(ring.OldestIndex(), 1);
}

TEST_F(SavedEventsTest, ARingOfOneKeepsTheLastEntry) {
    ring.Create(1);
    Save(3);
    EXPECT_EQ(ring.Slot(1), u"entry 3");
    EXPECT_EQ(ring.WriteIndex(), 1);
    EXPECT_EQ(ring.OldestIndex(), 1);
}

TEST_F(SavedEventsTest, AnewItIsEmpty) {
    ring.Create(3);
    Save(5);
    ring.Create(2);
    EXPECT_EQ(ring.Size(), 2);
    EXPECT_EQ(ring.Slot(1), u"");
    EXPECT_EQ(ring.WriteIndex(), 1);
    EXPECT_EQ(ring.OldestIndex(), 1);
}

TEST_F(SavedEventsTest, AHugeRingCostsWhatIsInIt) {
    ring.Create(INT32_MAX);
    Save(2);
    EXPECT_EQ(ring.Slot(2), u"entry 2");
}

TEST_F(TraceRingTest, TakesWholeLinesInsteadOfAFile) {
    StartRing(3);
    EXPECT_TRUE(trace.IsRecording());
    Note(u"first");
    EXPECT_EQ(Slot(1), "11/16/2026 " + kRule + "\r\n");
    EXPECT_EQ(Slot(2), "10:04:31 000.00  first\r\n");
    EXPECT_EQ(trace.FileName(), kLogPath);
    EXPECT_EQ(Content(), "<no file>");
    EXPECT_TRUE(desktop.log.Starting("CreateFile").empty());
}

TEST_F(TraceRingTest, FiveSavedEntriesInARingOfThree) {
    StartRing(3);
    for (const TextView text : {u"2", u"3", u"4", u"5"})  // behind the day, which is the first
        Note(text);
    EXPECT_EQ(Slot(1), "10:04:31 000.00  4\r\n");
    EXPECT_EQ(Slot(2), "10:04:31 000.00  5\r\n");
    EXPECT_EQ(Slot(3), "10:04:31 000.00  3\r\n");
    EXPECT_EQ(trace.Ring().WriteIndex(), 3);
    EXPECT_EQ(trace.Ring().OldestIndex(), 1);
}

TEST_F(TraceRingTest, WhatIsNotToBeSavedIsNotButTimeGoesOn) {
    StartRing(3);
    Note(u"first");
    Pass(2);
    trace.KWO_TraceWrite(u"passing", false, false);
    Pass(3);
    Note(u"second");
    EXPECT_EQ(Slot(3), "10:04:31 003.00  second\r\n");
}

TEST_F(TraceRingTest, RoutinesGoIntoTheRing) {
    StartRing(3);
    trace.KWO_RoutinePush(u"A.B");
    trace.KWO_RoutinePop();
    EXPECT_EQ(Slot(2), "10:04:31 000.00  Push A.B\r\n");
    EXPECT_EQ(Slot(3), "10:04:31 000.00  Pop  A.B Dur=0.000ms\r\n");
}

TEST_F(TraceRingTest, AFileIsStartedBesideTheRingAndTakesTheLines) {
    StartRing(3);
    StartFile();
    Note(u"to the file");
    EXPECT_EQ(File().back(), "10:04:31 000.00  to the file");
    EXPECT_EQ(Slot(1), "");
}

TEST_F(TraceRingTest, TheRingTakesTheLinesAgainWhenTheFileIsClosed) {
    StartRing(5);
    StartFile();
    trace.KWO_TraceClose(false);
    EXPECT_TRUE(trace.IsRecording());
    Note(u"to the ring");
    EXPECT_EQ(Slot(1), "10:04:31 000.00  to the ring\r\n");
}

TEST_F(TraceRingTest, ClosingIsNotedAndAsksNothing) {
    StartRing(5);
    trace.KWO_TraceClose(true);
    EXPECT_EQ(Slot(2), "10:04:31 000.00  Trace closed.\r\n");
    EXPECT_EQ(Slot(3), "");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(TraceRingTest, StartedAgainItIsEmpty) {
    StartRing(3);
    Note(u"first");
    StartRing(2);
    EXPECT_EQ(Slot(1), "");
    EXPECT_EQ(trace.Ring().WriteIndex(), 1);
}

TEST_F(TraceRingTest, ANewRingBeginsWithoutTheDayThatWasWrittenBefore) {
    StartRing(3);
    Note(u"first");
    StartRing(3);
    Note(u"x");
    EXPECT_EQ(Slot(1), "10:04:31 000.00  x\r\n");
    SetTime(10, 4, 31, kDay + 1);
    StartRing(3);
    Note(u"y");
    EXPECT_EQ(Slot(1), "11/17/2026 " + kRule + "\r\n");
}

TEST_F(TraceRingTest, ASizeBelowOneMeansAFile) {
    trace.KWO_TraceStart(0, -1, false);
    EXPECT_FALSE(trace.Ring().Exists());
    EXPECT_EQ(File().size(), 2u);
}

}  // namespace
}  // namespace kwo::frame
