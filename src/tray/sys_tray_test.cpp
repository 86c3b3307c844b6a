#include "tray/sys_tray.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <vector>

#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "support/raised.h"

namespace kwo::tray {
namespace {

using platform::ComponentError;
using platform::HostObjectRef;
using platform::simulated::SimulatedObject;
using test_support::RaisedNumber;
using Lines = std::vector<std::string>;

constexpr platform::Handle kWindow = 77;

class Tray : public testing::Test {
protected:
    HostObjectRef Picture(std::int16_t type, std::int32_t handle) {
        auto picture = desktop.MakeObject(u"Picture");
        picture->SetProperty(u"Type", type);
        picture->SetProperty(u"Handle", handle);
        return picture;
    }
    Lines Calls() const { return desktop.log.Starting("NotifyIcon"); }
    const platform::TrayRecord& Shown(platform::Handle window = kWindow) const {
        return desktop.notificationArea.icons.at(window);
    }
    bool IsShown(platform::Handle window = kWindow) const { return desktop.notificationArea.icons.contains(window); }

    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    std::optional<KWOSysTray> tray{std::in_place, component};
    HostObjectRef icon = Picture(3, 500);
    HostObjectRef bitmap = Picture(1, 600);
};

TEST_F(Tray, CreateAddsTheIcon) {
    EXPECT_TRUE(tray->Create(kWindow, icon, u"Hello"));
    EXPECT_EQ(Calls(),
              (Lines{"NotifyIcon Add 77 flags=7 message=512 icon=500 tip=\"Hello\\0" + std::string(58, ' ') + '"'}));
    EXPECT_EQ(Shown().tip, u"Hello");
    EXPECT_EQ(tray->Tip(), u"Hello");
    EXPECT_EQ(tray->Icon(), icon);
}

TEST_F(Tray, APictureThatCreatesAnIconItselfLeavesNone) {
    const auto eager = std::dynamic_pointer_cast<SimulatedObject>(Picture(3, 501));
    for (int use = 1; use <= 2; ++use) {
        int uses = 0;
        eager->whenUsed = [&] {
            if (++uses == use) tray->Create(kWindow + 1, icon, u"inner");
        };
        EXPECT_TRUE(tray->Create(kWindow, eager, u"outer")) << use;
        EXPECT_EQ(desktop.notificationArea.icons.size(), 1u) << use;
        EXPECT_EQ(Shown().tip, u"outer") << use;
        EXPECT_EQ(tray->Icon(), eager) << use;
        tray->Destroy();
        EXPECT_TRUE(desktop.notificationArea.icons.empty()) << use;
    }
}

/// Has no memory left when it is to remove an icon.
class FailingArea final : public platform::NotificationArea {
public:
    bool Add(const platform::TrayRecord&) override { return true; }
    bool Modify(const platform::TrayRecord&) override { return true; }
    bool Delete(const platform::TrayRecord&) override {
        ++deletions;
        throw std::bad_alloc();
    }
    void Listen(platform::TaskbarListener&) override { isHeard = true; }
    void Unlisten(platform::TaskbarListener&) noexcept override { isHeard = false; }
    int deletions = 0;
    bool isHeard = false;
};

TEST_F(Tray, NoIconIsLostWhenTheHostCallsInWhileTheShellIsCalled) {
    auto& area = desktop.notificationArea;
    const std::function<void()> intrusions[] = {
        [&] { tray->Create(kWindow, icon, u"inner"); },
        [&] { tray->Create(kWindow + 1, icon, u"inner"); },
        [&] { tray->Destroy(); },
    };
    for (const auto& intrusion : intrusions) {
        for (int place = 1, places = 1; place <= places; ++place) {
            tray.emplace(component);
            places = 0;
            area.whileCalled = [&] {
                if (++places == place) intrusion();
            };
            tray->Create(kWindow, icon, u"first");
            tray->Create(kWindow, icon, u"second");
            const bool isShown = tray->Create(kWindow, icon, u"third");
            area.whileCalled = nullptr;
            EXPECT_EQ(area.icons.size(), isShown ? 1u : 0u) << place;
            EXPECT_EQ(area.listeners.size(), isShown ? 1u : 0u) << place;
            ASSERT_GE(places, 10);
            tray.reset();
            EXPECT_TRUE(area.icons.empty()) << place;
            ASSERT_TRUE(area.listeners.empty()) << place;
        }
        tray.emplace(component);
        for (int place = 1; place <= 4; ++place) {
            int places = 0;
            ASSERT_TRUE(tray->Create(kWindow, icon, u"first"));
            area.whileCalled = [&] {
                if (++places == place) intrusion();
            };
            tray->Destroy();
            area.whileCalled = nullptr;
            EXPECT_EQ(area.listeners.size(), area.icons.size()) << place;
            tray.emplace(component);
            EXPECT_TRUE(area.icons.empty()) << place;
            ASSERT_TRUE(area.listeners.empty()) << place;
        }
    }
}

TEST(TrayEnd, ThatFailsIsAnEndLikeAnyOther) {
    platform::simulated::SimulatedDesktop desktop;
    FailingArea area;
    struct Failing : platform::Platform {
        platform::NotificationArea& notificationArea;
    };
    Failing failing{desktop.Services(), area};
    component::Component component(ServicesOf(failing));
    const auto icon = desktop.MakeObject(u"Picture");
    icon->SetProperty(u"Type", std::int16_t{3});
    icon->SetProperty(u"Handle", 4294967295.0);
    {
        KWOSysTray tray(component);
        ASSERT_TRUE(tray.Create(kWindow, icon, u"Hello"));
        EXPECT_THROW(tray.Destroy(), std::bad_alloc);
        EXPECT_TRUE(area.isHeard) << "the icon is still shown, and comes back with a new taskbar";
    }
    EXPECT_FALSE(area.isHeard);
    EXPECT_EQ(area.deletions, 2);
}

TEST_F(Tray, AnIconWhoseTaskbarCannotBeWatchedIsNotShown) {
    desktop.FailCall("CreateWindowEx", 1, platform::simulated::Faults::kNoMemory);
    EXPECT_THROW(tray->Create(kWindow, icon, u"Hello"), std::bad_alloc);
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(tray->Create(kWindow, icon, u"Hello"));
}

TEST_F(Tray, WithoutMemoryForTheIconNoTaskbarIsWatched) {
    desktop.FailCall("Shell_NotifyIcon", 1, platform::simulated::Faults::kNoMemory);
    EXPECT_THROW(tray->Create(kWindow, icon, u"Hello"), std::bad_alloc);
    EXPECT_TRUE(desktop.notificationArea.listeners.empty());
}

TEST_F(Tray, CreationLeavesTheProgramNameAlone) {
    EXPECT_EQ(component.ProgramName(), u"");
}

TEST_F(Tray, ATipIsCutTo64Characters) {
    const auto shown = [&](std::size_t length) {
        tray->Create(kWindow, icon, Text(length, u'x'));
        return tray->Tip();
    };
    EXPECT_EQ(shown(0), u"");
    EXPECT_EQ(shown(62), Text(62, u'x'));
    EXPECT_EQ(shown(63), Text(63, u'x'));
    EXPECT_EQ(shown(64), Text(64, u'x'));
    EXPECT_EQ(shown(65), Text(64, u'x'));
    EXPECT_EQ(shown(100'000), Text(64, u'x'));
}

TEST_F(Tray, ATipEndsAtItsFirstZeroCharacter) {
    tray->Create(kWindow, icon, TextView(u"cut\0rest", 8));
    EXPECT_EQ(tray->Tip(), u"cut");
}

TEST_F(Tray, ABitmapIsRefused) {
    EXPECT_FALSE(tray->Create(kWindow, bitmap, u"Hello"));
    EXPECT_EQ(Calls(), Lines{});
    EXPECT_EQ(tray->Icon(), nullptr);
    EXPECT_EQ(tray->Tip(), u"");
}

TEST_F(Tray, OnlyTypeThreeIsAnIcon) {
    for (const std::int16_t type : std::initializer_list<std::int16_t>{-1, 0, 1, 2, 4, 30})
        EXPECT_FALSE(tray->Create(kWindow, Picture(type, 9), u"")) << type;
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(Tray, ABitmapRemovesTheIconThatWasThere) {
    tray->Create(kWindow, icon, u"Hello");
    EXPECT_FALSE(tray->Create(kWindow, bitmap, u"Other"));
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(tray->Icon(), icon);
    EXPECT_EQ(tray->Tip(), u"Hello");
    desktop.log.Clear();
    tray->Destroy();
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(Tray, CreatingTwiceReplaces) {
    tray->Create(kWindow, icon, u"Hello");
    desktop.log.Clear();
    EXPECT_TRUE(tray->Create(78, Picture(3, 501), u"Again"));
    ASSERT_EQ(Calls().size(), 2u);
    EXPECT_TRUE(Calls()[0].starts_with("NotifyIcon Delete 77"));
    EXPECT_TRUE(Calls()[1].starts_with("NotifyIcon Add 78 flags=7 message=512 icon=501 tip=\"Again\\0"));
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(IsShown(78));
}

TEST_F(Tray, AnIconThatTheSystemDoesNotAddIsNotThere) {
    desktop.FailCall("Shell_NotifyIcon", 1, 5);
    EXPECT_FALSE(tray->Create(kWindow, icon, u"Hello"));
    EXPECT_EQ(tray->Icon(), icon);
    tray->SetTip(u"Later");
    EXPECT_EQ(tray->Tip(), u"Hello");
    desktop.log.Clear();
    tray->Destroy();
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(Tray, DestroyRemovesOnce) {
    tray->Destroy();
    EXPECT_EQ(Calls(), Lines{});
    tray->Create(kWindow, icon, u"Hello");
    tray->Destroy();
    tray->Destroy();
    EXPECT_EQ(Calls().size(), 2u);
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(tray->Icon(), icon);
}

TEST_F(Tray, AFailedRemovalIsIgnored) {
    tray->Create(kWindow, icon, u"Hello");
    desktop.FailCall("Shell_NotifyIcon", 1, 5);
    tray->Destroy();
    desktop.log.Clear();
    tray->Destroy();
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(Tray, TheIconGoesWithTheObject) {
    tray->Create(kWindow, icon, u"Hello");
    tray.reset();
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(icon.use_count(), 1);
}

TEST_F(Tray, ATipIsChangedInPlace) {
    tray->Create(kWindow, icon, u"Hello");
    desktop.log.Clear();
    tray->SetTip(u"New");
    ASSERT_EQ(Calls().size(), 1u);
    EXPECT_TRUE(Calls()[0].starts_with("NotifyIcon Modify 77 flags=4 "));
    EXPECT_EQ(Shown().tip, u"New");
    EXPECT_EQ(tray->Tip(), u"New");
    tray->SetTip(Text(64, u'y') + u"z");
    EXPECT_EQ(Shown().tip, Text(64, u'y'));
    EXPECT_EQ(tray->Tip(), Text(64, u'y'));
    EXPECT_EQ(Shown().icon, 500);
}

TEST_F(Tray, ATipWithoutAnIconIsDropped) {
    tray->SetTip(u"Early");
    EXPECT_EQ(tray->Tip(), u"");
    tray->Create(kWindow, icon, u"Hello");
    EXPECT_EQ(tray->Tip(), u"Hello");
    tray->Destroy();
    tray->SetTip(u"Late");
    EXPECT_EQ(tray->Tip(), u"Hello");
    EXPECT_EQ(Calls().size(), 2u);
}

TEST_F(Tray, AnIconIsChangedInPlace) {
    tray->Create(kWindow, icon, u"Hello");
    desktop.log.Clear();
    const HostObjectRef other = Picture(3, 501);
    tray->SetIcon(other);
    ASSERT_EQ(Calls().size(), 1u);
    EXPECT_TRUE(Calls()[0].starts_with("NotifyIcon Modify 77 flags=2 "));
    EXPECT_EQ(Shown().icon, 501);
    EXPECT_EQ(Shown().tip, u"Hello");
    EXPECT_EQ(tray->Icon(), other);
}

TEST_F(Tray, AnIconOfAnotherTypeIsIgnored) {
    tray->Create(kWindow, icon, u"Hello");
    desktop.log.Clear();
    tray->SetIcon(bitmap);
    EXPECT_EQ(Calls(), Lines{});
    EXPECT_EQ(tray->Icon(), icon);
}

using TrayIntended = Tray;

TEST_F(TrayIntended, ATipOf64CharactersHasNoEnd) {
    for (const std::size_t length : {63u, 64u, 65u})
        tray->Create(kWindow, icon, Text(length, u'x'));
    const std::string start = "NotifyIcon Add 77 flags=7 message=512 icon=500 tip=\"";
    EXPECT_EQ(Calls()[0], start + std::string(63, 'x') + "\\0\"");
    EXPECT_EQ(Calls()[2], start + std::string(64, 'x') + "\"");
    EXPECT_EQ(Calls()[4], start + std::string(64, 'x') + "\"");
}

TEST_F(TrayIntended, AnIconIsKeptAndTriedWithoutOneInTheArea) {
    tray->SetIcon(icon);
    EXPECT_EQ(Calls(), (Lines{"NotifyIcon Modify 0 flags=2 message=0 icon=500 tip=\"\""}));
    EXPECT_EQ(tray->Icon(), icon);
    EXPECT_FALSE(IsShown());
}

TEST_F(Tray, AFailedChangeIsIgnored) {
    tray->Create(kWindow, icon, u"Hello");
    desktop.FailCall("Shell_NotifyIcon", 1, 5);
    tray->SetTip(u"New");
    EXPECT_EQ(tray->Tip(), u"New");
    desktop.FailCall("Shell_NotifyIcon", 1, 5);
    tray->SetIcon(Picture(3, 501));
    tray.reset();
    EXPECT_FALSE(IsShown());
}

TEST_F(Tray, ShownIconsComeBackWithANewTaskbar) {
    KWOSysTray second(component);
    tray->Create(kWindow, icon, u"Hello");
    second.Create(78, icon, u"Second");
    tray->SetTip(u"New");
    tray->SetIcon(Picture(3, 501));
    desktop.log.Clear();
    desktop.notificationArea.RecreateTaskbar();
    ASSERT_EQ(Calls().size(), 2u);
    EXPECT_EQ(Calls()[0], "NotifyIcon Add 77 flags=7 message=512 icon=501 tip=\"New\\0" + std::string(60, ' ') + '"');
    EXPECT_EQ(Shown().tip, u"New");
    EXPECT_EQ(Shown().icon, 501);
    EXPECT_EQ(Shown().callbackMessage, 512u);
    EXPECT_EQ(Shown(78).tip, u"Second");
    tray->Destroy();
    EXPECT_FALSE(IsShown());
}

TEST_F(Tray, WithoutAnIconNobodyListensForATaskbar) {
    const auto listeners = [&] { return desktop.notificationArea.listeners.size(); };
    EXPECT_EQ(listeners(), 0u);
    tray->Create(kWindow, bitmap, u"Hello");
    desktop.FailCall("Shell_NotifyIcon", 1, 5);
    tray->Create(kWindow, icon, u"Hello");
    EXPECT_EQ(listeners(), 0u);
    tray->Create(kWindow, icon, u"Hello");
    tray->Create(kWindow, icon, u"Again");
    EXPECT_EQ(listeners(), 1u);
    tray->Destroy();
    EXPECT_EQ(listeners(), 0u);
    tray->Create(kWindow, icon, u"Hello");
    tray.reset();
    EXPECT_EQ(listeners(), 0u);
    desktop.notificationArea.RecreateTaskbar();
    EXPECT_FALSE(IsShown());
}

TEST_F(Tray, ATaskbarThatComesAfterTheIconIsGoneGetsNone) {
    tray->Create(kWindow, icon, u"Hello");
    platform::TaskbarListener* const listener = desktop.notificationArea.listeners.front();
    tray->Destroy();
    desktop.log.Clear();

    listener->TaskbarCreated();

    EXPECT_EQ(Calls(), Lines{});
    EXPECT_FALSE(IsShown());
}

TEST_F(Tray, AnIconThatANewTaskbarDoesNotTakeIsTriedAgainWithTheNext) {
    tray->Create(kWindow, icon, u"Hello");
    desktop.FailCall("Shell_NotifyIcon", 1, 5);
    desktop.notificationArea.RecreateTaskbar();
    EXPECT_FALSE(IsShown());
    desktop.notificationArea.RecreateTaskbar();
    EXPECT_TRUE(IsShown());
}

TEST_F(Tray, APictureThatIsRefusedChangesNothingOfWhatIsHeld) {
    tray->Create(kWindow, icon, u"Hello");
    const auto broken = desktop.MakeObject(u"Picture");
    broken->SetProperty(u"Type", std::int16_t{3});
    broken->FailMember(u"Handle", ComponentError{481, u"Host", u"Invalid picture", {}, 0});
    desktop.log.Clear();
    EXPECT_EQ(RaisedNumber([&] { tray->SetIcon(broken); }), 481);
    EXPECT_EQ(tray->Icon(), icon);
    EXPECT_EQ(Calls(), Lines{});
    EXPECT_EQ(RaisedNumber([&] { tray->Create(78, broken, u"Other"); }), 481);
    EXPECT_EQ(RaisedNumber([&] { tray->Create(78, nullptr, u"Other"); }), 91);
    EXPECT_FALSE(tray->Create(78, bitmap, u"Other"));
    EXPECT_EQ(tray->Icon(), icon);
    EXPECT_EQ(tray->Tip(), u"Hello");
}

TEST_F(Tray, NoPictureIsNoObject) {
    tray->Create(kWindow, icon, u"Hello");
    EXPECT_EQ(RaisedNumber([&] { tray->Create(kWindow, nullptr, u"Hello"); }), 91);
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(RaisedNumber([&] { tray->SetIcon(nullptr); }), 91);
    EXPECT_EQ(tray->Icon(), icon);
}

TEST_F(Tray, WhatAPictureRaisesReachesTheCaller) {
    const auto broken = desktop.MakeObject(u"Picture");
    EXPECT_EQ(RaisedNumber([&] { tray->Create(kWindow, broken, u""); }), 438);
    broken->SetProperty(u"Type", std::int16_t{3});
    broken->FailMember(u"Handle", ComponentError{481, u"Host", u"Invalid picture", {}, 0});
    EXPECT_EQ(RaisedNumber([&] { tray->Create(kWindow, broken, u""); }), 481);
    EXPECT_EQ(Calls(), Lines{});
    EXPECT_FALSE(IsShown());
}

TEST_F(Tray, TwoObjectsShareTheIconOfAWindow) {
    KWOSysTray second(component);
    EXPECT_TRUE(tray->Create(kWindow, icon, u"First"));
    EXPECT_FALSE(second.Create(kWindow, icon, u"Second"));
    EXPECT_TRUE(second.Create(78, icon, u"Second"));
    EXPECT_EQ(Shown().tip, u"First");
    EXPECT_EQ(Shown(78).tip, u"Second");
}

TEST_F(Tray, MessageNumbersOfTheTwoButtons) {
    EXPECT_EQ(KWOSysTray::MouseDownMsg(1), 513);
    EXPECT_EQ(KWOSysTray::MouseDownMsg(2), 516);
    EXPECT_EQ(KWOSysTray::MouseUpMsg(1), 514);
    EXPECT_EQ(KWOSysTray::MouseUpMsg(2), 517);
    EXPECT_EQ(KWOSysTray::DoubleClickMsg(1), 515);
    EXPECT_EQ(KWOSysTray::DoubleClickMsg(2), 518);
    for (const std::int16_t button : std::initializer_list<std::int16_t>{0, 3, 4, -1, 32'767}) {
        EXPECT_EQ(KWOSysTray::MouseDownMsg(button), 0) << button;
        EXPECT_EQ(KWOSysTray::MouseUpMsg(button), 0) << button;
        EXPECT_EQ(KWOSysTray::DoubleClickMsg(button), 0) << button;
    }
}

}  // namespace
}  // namespace kwo::tray
