#include <cmath>

#include "contract_test.h"

namespace kwo::contract {
namespace {

constexpr Handle kNoWindow = 0x7FFFFFF0;

class DesktopContract : public ContractTest {
protected:
    Text Title(Handle window) {
        const Text text = desktop.WindowText(window);
        return text.substr(0, text.find(u'\0'));
    }
    platform::Desktop& desktop = platform().desktop;
    platform::Screen& screen = platform().screen;
};

TEST_F(DesktopContract, HandleThatIsNoWindowIsAnsweredQuietly) {
    for (const Handle window : {Handle{0}, kNoWindow, Handle{-1}}) {
        EXPECT_FALSE(desktop.WindowExists(window)) << window;
        EXPECT_FALSE(desktop.IsMinimised(window)) << window;
        EXPECT_EQ(Title(window), u"") << window;
        desktop.Flash(window, true);
        desktop.Flash(window, false);
    }
}

TEST_F(DesktopContract, WindowTellsItsTitleAndState) {
    const Handle window = outside().MakeWindow(u"Größe 1");

    EXPECT_TRUE(desktop.WindowExists(window));
    EXPECT_FALSE(desktop.IsMinimised(window));
    EXPECT_EQ(Title(window), u"Größe 1");
    outside().Minimise(window);
    EXPECT_TRUE(desktop.IsMinimised(window));
    desktop.Flash(window, true);
    desktop.Flash(window, false);
    EXPECT_TRUE(desktop.IsMinimised(window));
}

TEST_F(DesktopContract, LongTitleIsCutToItsBuffer) {
    EXPECT_EQ(Title(outside().MakeWindow(Text(254, u'x'))).size(), 254u);
    EXPECT_EQ(Title(outside().MakeWindow(Text(300, u'x'))).size(), 254u);
}

TEST_F(DesktopContract, BoxReturnsTheButtonPressed) {
    struct Row {
        std::uint32_t style;
        std::int32_t button;
    };
    const Handle owner = outside().MakeWindow(u"Owner");
    for (const Row& row : {Row{0x10000, 1}, Row{0x10004, 6}, Row{0x10004, 7}, Row{0x10010 | 1, 2}, Row{0x14040, 1}}) {
        outside().AnswerNextBox(row.button);
        EXPECT_EQ(desktop.AskUser(owner, u"Löschen?\r\nWirklich?", u"Title", row.style), row.button) << row.style;
        outside().AnswerNextBox(row.button);
        EXPECT_EQ(desktop.AskUser(0, u"", u"", row.style), row.button) << row.style;
    }
}

TEST_F(DesktopContract, BoxOfAnOwnerThatIsNoWindowIsNotShown) {
    EXPECT_EQ(desktop.AskUser(kNoWindow, u"Nobody sees this", u"Title", 0), 0);
}

TEST_F(DesktopContract, PointerIsPutBackAsItWas) {
    const std::intptr_t before = screen.MousePointer();
    screen.SetMousePointer(0);
    screen.SetMousePointer(before);

    EXPECT_EQ(screen.MousePointer(), before);
}

TEST_F(DesktopContract, HelpContextIsKeptPerForm) {
    const Handle one = outside().MakeWindow(u"One");
    const Handle two = outside().MakeWindow(u"Two");

    EXPECT_EQ(screen.HelpContext(one), 0);
    screen.SetHelpContext(one, 1001);
    EXPECT_EQ(screen.HelpContext(one), 1001);
    EXPECT_EQ(screen.HelpContext(two), 0);
    screen.SetHelpContext(one, 0);
    EXPECT_EQ(screen.HelpContext(one), 0);
}

TEST_F(DesktopContract, ActiveFormIsAWindowOrNone) {
    const Handle form = screen.ActiveForm();

    EXPECT_TRUE(form == 0 || desktop.WindowExists(form));
}

TEST_F(DesktopContract, TheScreenHasASizeInTwips) {
    const double twipsX = std::nearbyint(screen.TwipsPerPixelX());
    const double twipsY = std::nearbyint(screen.TwipsPerPixelY());
    EXPECT_GE(screen.Width(), 640 * twipsX);
    EXPECT_GE(screen.Height(), 480 * twipsY);
    EXPECT_EQ(std::fmod(screen.Width(), twipsX), 0);
    EXPECT_EQ(std::fmod(screen.Height(), twipsY), 0);
}

}  // namespace
}  // namespace kwo::contract
