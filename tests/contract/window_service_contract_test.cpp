#include "contract_test.h"
#include "platform/window_service.h"

namespace kwo::contract {
namespace {

constexpr Handle kNoWindow = 0x7FFFFFF0;

class WindowServiceContract : public ContractTest {
protected:
    Text Title(Handle window) {
        const Text text = windows.WindowText(window);
        return text.substr(0, text.find(u'\0'));
    }
    platform::WindowService& windows = platform().windows;
};

TEST_F(WindowServiceContract, HandleThatIsNoWindowIsAnsweredQuietly) {
    for (const Handle window : {Handle{0}, kNoWindow, Handle{-1}}) {
        EXPECT_FALSE(windows.WindowExists(window)) << window;
        EXPECT_FALSE(windows.IsMinimised(window)) << window;
        EXPECT_EQ(Title(window), u"") << window;
        windows.Flash(window, true);
        windows.Flash(window, false);
    }
}

TEST_F(WindowServiceContract, WindowTellsItsTitleAndState) {
    const Handle window = outside().MakeWindow(u"Größe 1");

    EXPECT_TRUE(windows.WindowExists(window));
    EXPECT_FALSE(windows.IsMinimised(window));
    EXPECT_EQ(Title(window), u"Größe 1");
    outside().Minimise(window);
    EXPECT_TRUE(windows.IsMinimised(window));
    windows.Flash(window, true);
    windows.Flash(window, false);
    EXPECT_TRUE(windows.IsMinimised(window));
}

TEST_F(WindowServiceContract, LongTitleIsCutToItsBuffer) {
    EXPECT_EQ(Title(outside().MakeWindow(Text(254, u'x'))).size(), 254u);
    EXPECT_EQ(Title(outside().MakeWindow(Text(300, u'x'))).size(), 254u);
}

TEST_F(WindowServiceContract, BoxReturnsTheButtonPressed) {
    struct Row {
        std::uint32_t style;
        std::int32_t button;
    };
    const Handle owner = outside().MakeWindow(u"Owner");
    for (const Row& row : {Row{0x10000, 1}, Row{0x10004, 6}, Row{0x10004, 7}, Row{0x10010 | 1, 2}, Row{0x14040, 1}}) {
        outside().AnswerNextBox(row.button);
        EXPECT_EQ(windows.AskUser(owner, u"Löschen?\r\nWirklich?", u"Title", row.style), row.button) << row.style;
        outside().AnswerNextBox(row.button);
        EXPECT_EQ(windows.AskUser(0, u"", u"", row.style), row.button) << row.style;
    }
}

TEST_F(WindowServiceContract, BoxOfAnOwnerThatIsNoWindowIsNotShown) {
    EXPECT_EQ(windows.AskUser(kNoWindow, u"Nobody sees this", u"Title", 0), 0);
}

}  // namespace
}  // namespace kwo::contract
