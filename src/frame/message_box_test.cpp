#include "frame/message_box.h"

#include <algorithm>

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

class MessageBoxTest : public FrameTest {
protected:
    MessageBoxTest() { desktop.windows.windows[7] = {u"Owner", false, 0}; }
    platform::simulated::SimulatedWindowService::Question asked;
    void KeepQuestion(std::int32_t answer = 1) {
        desktop.windows.onAsk = [this, answer](const auto& question) { return asked = question, answer; };
    }
};

TEST_F(MessageBoxTest, AsksInTheForegroundAndReturnsTheAnswer) {
    KeepQuestion(6);
    EXPECT_EQ(boxes.KWOMsgBox({.prompt = u"Sure?", .buttons = 36, .title = u"Title", .ownerWindow = 7}), 6);
    EXPECT_EQ(asked.owner, 7);
    EXPECT_EQ(asked.prompt, u"Sure?");
    EXPECT_EQ(asked.title, u"Title");
    EXPECT_EQ(asked.style, 0x10000u + 36u);
}

TEST_F(MessageBoxTest, ANegativeStyleIsNotAdded) {
    KeepQuestion();
    boxes.KWOMsgBox({.prompt = u"p", .buttons = -1});
    EXPECT_EQ(asked.style, 0x10000u);
}

TEST_F(MessageBoxTest, WithoutAnOwnerTheActiveFormIsIt) {
    KeepQuestion();
    desktop.screen.activeForm = 7;
    boxes.KWOMsgBox({.prompt = u"p"});
    EXPECT_EQ(asked.owner, 7);
    EXPECT_EQ(asked.title, u"Owner");
}

TEST_F(MessageBoxTest, TitleFallsBackToTheOwnersTextThenTheApplications) {
    KeepQuestion();
    boxes.KWOMsgBox({.prompt = u"p", .ownerWindow = 7});
    EXPECT_EQ(asked.title, u"Owner");
    desktop.windows.windows[7].title = Text(u"Cut\0off", 7);
    boxes.KWOMsgBox({.prompt = u"p", .ownerWindow = 7});
    EXPECT_EQ(asked.title, u"Cut");
    desktop.windows.windows[7].title = u"";
    boxes.KWOMsgBox({.prompt = u"p", .ownerWindow = 7});
    EXPECT_EQ(asked.title, u"Host Application");
    boxes.KWOMsgBox({.prompt = u"p"});
    EXPECT_EQ(asked.title, u"Host Application");
}

TEST_F(MessageBoxTest, AHelpContextWithAnOwnerAddsTheHelpButtonAndIsLentToTheActiveForm) {
    desktop.screen.activeForm = 9;
    desktop.screen.helpContexts[9] = 3;
    desktop.windows.onAsk = [&](const auto& question) {
        EXPECT_EQ(question.style, 0x14000u);
        EXPECT_EQ(question.owner, 7);
        EXPECT_EQ(desktop.screen.helpContexts[9], 55);
        return 1;
    };
    boxes.KWOMsgBox({.prompt = u"p", .helpContext = 55, .ownerWindow = 7});
    EXPECT_EQ(desktop.screen.helpContexts[9], 3);
}

TEST_F(MessageBoxTest, AHelpContextWithoutAnOwnerIsNotUsed) {
    KeepQuestion();
    desktop.screen.activeForm = 7;
    boxes.KWOMsgBox({.prompt = u"p", .helpContext = 55});
    EXPECT_EQ(asked.style, 0x10000u);
    EXPECT_TRUE(desktop.log.Starting("Let HelpContext").empty());
}

TEST_F(MessageBoxTest, ShowsTheDefaultPointerMeanwhile) {
    desktop.screen.pointer = 11;
    desktop.windows.onAsk = [&](const auto&) {
        EXPECT_EQ(desktop.screen.pointer, 0);
        return 1;
    };
    boxes.KWOMsgBox({.prompt = u"p"});
    EXPECT_EQ(desktop.screen.pointer, 11);
}

TEST_F(MessageBoxTest, FlashesAMinimisedOwnerUntilItIsRestored) {
    desktop.windows.windows[7].minimised = true;
    desktop.PostAt(1600, [&] { desktop.windows.windows[7].minimised = false; });

    boxes.KWOMsgBox({.prompt = u"p", .ownerWindow = 7});

    // Three waits of 750 ms: what restores the window at 1600 ms is processed when the fourth would begin.
    EXPECT_EQ(desktop.windows.windows[7].flashes, 3 + 1);
    EXPECT_EQ(desktop.log.Starting("Flash 7 0").size(), 1u);
    EXPECT_EQ(desktop.log.Starting("Ask").size(), 1u);
    EXPECT_GE(desktop.clock.Elapsed(), platform::Milliseconds::Whole(2250));
}

TEST_F(MessageBoxTest, FlashesBeforeItWritesItsPromptAndAsks) {
    desktop.windows.windows[7].minimised = true;
    std::size_t linesWhileMinimised = 99;
    desktop.PostAt(100, [&] {
        linesWhileMinimised = trace.lines.size();
        desktop.windows.windows[7].minimised = false;
    });
    boxes.KWOMsgBox({.prompt = u"p", .ownerWindow = 7});
    EXPECT_EQ(linesWhileMinimised, 0u);
    EXPECT_EQ(trace.lines.size(), 1u);
    const Lines all = desktop.log.Lines();
    const auto at = [&](std::string_view start) {
        return std::ranges::find_if(all, [&](const std::string& line) { return line.starts_with(start); });
    };
    ASSERT_NE(at("Flash 7 0"), all.end());
    EXPECT_LT(at("Flash 7 0"), at("Ask"));
}

TEST_F(MessageBoxTest, FlashesNoLongerWhenTheProgramIsAskedToQuit) {
    desktop.windows.windows[7].minimised = true;
    desktop.PostAt(800, [&] { desktop.messages.RequestQuit(); });
    // What would otherwise go on until somebody restores the window.
    desktop.PostAt(60'000, [&] { desktop.windows.windows[7].minimised = false; });

    boxes.KWOMsgBox({.prompt = u"p", .ownerWindow = 7});

    EXPECT_LT(desktop.clock.Elapsed(), platform::Milliseconds::Whole(10'000));
    EXPECT_EQ(desktop.log.Starting("Flash 7 0").size(), 1u);
    EXPECT_EQ(desktop.log.Starting("Ask").size(), 1u);
}

TEST_F(MessageBoxTest, DoesNotFlashAnOwnerThatDoesNotExist) {
    boxes.KWOMsgBox({.prompt = u"p", .title = u"t", .ownerWindow = 8});
    EXPECT_TRUE(desktop.log.Starting("Flash").empty());
}

TEST_F(MessageBoxTest, UnattendedGoesToTheEventLogAndAnswersTheDefault) {
    boxes.SetUnattended(true);
    struct Row {
        std::int32_t buttons;
        std::uint16_t type;
    };
    for (const Row& row : {Row{16, 1}, Row{32, 2}, Row{64, 4}, Row{0, 4}, Row{4, 4}, Row{20, 1}, Row{36, 2}}) {
        desktop.eventLog.entries.clear();
        EXPECT_EQ(boxes.KWOMsgBox({.prompt = u"one\r\ntwo", .buttons = row.buttons}), 2);
        ASSERT_EQ(desktop.eventLog.entries.size(), 1u);
        EXPECT_EQ(desktop.eventLog.entries[0].type, row.type) << "buttons " << row.buttons;
        EXPECT_EQ(desktop.eventLog.entries[0].eventId, 1u);
        EXPECT_EQ(desktop.eventLog.entries[0].text, u"one two");
    }
    EXPECT_EQ(boxes.KWOMsgBox({.prompt = u"p", .defaultResult = 7}), 7);
    EXPECT_TRUE(desktop.log.Starting("Ask").empty());
    EXPECT_TRUE(desktop.log.Starting("Let MousePointer").empty());
}

using UnattendedIntended = MessageBoxTest;

TEST_F(UnattendedIntended, TheExclamationMarkIsAnError) {
    constexpr std::int32_t kExclamation = 48;
    boxes.SetUnattended(true);
    boxes.KWOMsgBox({.prompt = u"p", .buttons = kExclamation});
    ASSERT_EQ(desktop.eventLog.entries.size(), 1u);
    EXPECT_EQ(desktop.eventLog.entries[0].type, 1u);
}

TEST_F(MessageBoxTest, StandsOnTheCallTraceAndWritesItsPrompt) {
    desktop.windows.onAsk = [&](const auto&) {
        EXPECT_EQ(trace.KWO_CurrentRoutine(), u"MKWORoutines.KWOMsgBox");
        return 1;
    };
    boxes.KWOMsgBox({.prompt = u"Sure?"});
    EXPECT_EQ(trace.lines, (std::vector<Text>{u"MsgBox: Sure?"}));
    EXPECT_TRUE(trace.routines.empty());
    boxes.SetUnattended(true);
    boxes.KWOMsgBox({.prompt = u"Sure?"});
    EXPECT_EQ(trace.pushed.size(), 2u);
    EXPECT_TRUE(trace.routines.empty());
}

}  // namespace
}  // namespace kwo::frame
