#include <cstdio>
#include <functional>
#include <map>
#include <optional>

#include "controls/controls_fixture.h"
#include "controls/month_view.h"
#include "controls/pic_btn.h"
#include "controls/splitter_v.h"

namespace kwo::controls {
namespace {

using Action = std::function<void()>;

/// Controls that a class alone holds, so that they end as soon as it takes others. One of the uses that it makes of
/// them begins with an intrusion: the host calls the class again before it answers.
class Reentrance : public ControlsTest {
protected:
    static constexpr std::int32_t kPlaceOfBar = 1001;

    /// Form, box and font, all new. Nobody but the caller holds them.
    HostObjectRef NewBox() {
        form = Watched(desktop.MakeObject(u"Form", "form"));
        form->SetProperty(u"WindowState", std::int16_t{0});
        for (const TextView notification : {u"OnChangeMonth", u"OnChangeDate", u"OnButtonClick"})
            form->SetMethod(notification, [this, self = form.get()](std::span<Variant> given) -> Variant {
                const auto notified = std::get_if<HostObjectRef>(given.data());
                mStrangers += notified == nullptr || mFormOf[notified->get()] != self ? 1 : 0;
                return platform::Empty{};
            });
        form->SetMethod(u"ActiveControl", [this](std::span<Variant>) -> Variant {
            const auto control = Watched(desktop.MakeObject(u"TextBox", "control"));
            control->SetProperty(u"hWnd", std::int32_t{1});
            return HostObjectRef(control);
        });
        HostObjectRef made = Watched(MakeBox(kContext, kWindow));
        mFormOf[made.get()] = form.get();
        Watched(font);
        form = desktop.MakeObject(u"Form");
        font = nullptr;
        return made;
    }
    /// A control in a container of its own, whose place tells it from others: as a bar its line is on the screen at a
    /// multiple of kPlaceOfBar.
    std::shared_ptr<SimulatedObject> NewPane() {
        const std::int32_t window = mNextWindow++;
        desktop.screenDrawing.origins[window] = {window * (kPlaceOfBar - 1), 0};
        const auto container = Watched(desktop.MakeObject(u"Form", "container"));
        container->SetProperty(u"hWnd", window);
        container->SetProperty(u"ScaleMode", std::int16_t{1});
        container->SetProperty(u"ScaleWidth", 600'000.0f);
        container->SetProperty(u"ScaleHeight", 4000.0f);
        for (const TextView name : {u"ScaleX", u"ScaleY"})
            container->SetMethod(name, [](std::span<Variant>) -> Variant { return 15.0f; });
        const auto parent = Watched(desktop.MakeObject(u"Form", "form"));
        parent->SetProperty(u"WindowState", std::int16_t{0});
        auto pane = Watched(desktop.MakeObject(u"PictureBox", "pane"));
        pane->SetProperty(u"Container", HostObjectRef(container));
        pane->SetProperty(u"Parent", HostObjectRef(parent));
        for (const TextView place : {u"Top", u"Width", u"Height"})
            pane->SetProperty(place, 600.0f);
        pane->SetProperty(u"Left", 15.0f * static_cast<float>(window));
        pane->SetMethod(u"Move", [](std::span<Variant>) -> Variant { return platform::Empty{}; });
        return pane;
    }
    std::shared_ptr<SimulatedObject> Watched(std::shared_ptr<SimulatedObject> object) {
        object->whenUsed = [this] { Use(); };
        return object;
    }

    /// Runs `member` again and again, each time after `prepare`, until every use that it makes of a host's object has
    /// once begun with `intrusion`. Returns how many uses there are.
    int AtEveryUse(const Action& prepare, const Action& member, const Action& intrusion) {
        for (int place = 1;; ++place) {
            mIntrusion = nullptr;
            desktop.log.Clear();
            prepare();
            mIntrusion = intrusion;
            mUses = 0;
            mPlace = place;
            Suppressed(member);
            const int uses = mUses;
            mIntrusion = nullptr;
            if (uses < place) return uses;
        }
    }

    /// For a member that looks at what it has done: its own uses of the objects do not count.
    void StopIntruding() { mIntrusion = nullptr; }

    /// How often a form was told of another form's box.
    int Strangers() const { return mStrangers; }

    static void Suppressed(const Action& action) {
        try {
            action();
        } catch (const ComponentError&) {
            // What the host's answers make of the call is not looked at here.
        }
    }

private:
    void Use() {
        if (!mIntrusion || ++mUses != mPlace) return;
        const Action intrusion = std::exchange(mIntrusion, [] {});
        const int uses = mUses;
        Suppressed(intrusion);
        mUses = uses;
    }

    Action mIntrusion;
    int mUses = 0;
    int mPlace = 0;
    std::int32_t mNextWindow = 900;
    std::map<const platform::HostObject*, const platform::HostObject*> mFormOf;
    int mStrangers = 0;
};

class ReenteredMonthView : public Reentrance {
protected:
    ReenteredMonthView() {
        desktop.messages.RequestQuit();  // a press on an arrow ends by itself
    }
    bool Create() {
        Date focus{46'347};  // 2026-11-21
        return view->Create(NewBox(), focus, {.canMultiSelect = true, .notifyOnChange = true, .control = NewBox()});
    }
    void Prepare() {
        view.emplace(component);
        ASSERT_TRUE(Create());
    }
    /// The member's uses of the host's objects, each begun with a Create, and then with other limits.
    void Try(int least, const Action& member) {
        EXPECT_GE(AtEveryUse([this] { Prepare(); }, member, [this] { Create(); }), least);
        EXPECT_TRUE(Create());
        AtEveryUse([this] { Prepare(); }, member,
                   [this] {
                       view->SetMinDate({46'400});
                       view->SetCaptionFontBold(!view->CaptionFontBold());
                       view->SetCaptionBevel(1);
                   });
        EXPECT_TRUE(Create());
    }

    std::optional<KWOMonthView> view;
};

TEST_F(ReenteredMonthView, WhileItIsCreated) {
    Try(100, [this] { Create(); });
}

TEST_F(ReenteredMonthView, IsThereOnlyIfNoCreateInsideHasFailed) {
    int missing = 0;
    const auto failHalfWay = [&] {
        const auto unfit = std::dynamic_pointer_cast<SimulatedObject>(NewBox());
        unfit->FailMember(u"FillStyle", Refusal());
        Date focus{46'347};
        EXPECT_FALSE(view->Create(unfit, focus, {}));
    };
    const auto create = [&] {
        const bool isCreated = Create();
        StopIntruding();
        desktop.log.Clear();
        view->MouseUp();
        EXPECT_EQ(desktop.log.Starting("Call box.Refresh").size(), isCreated ? 1u : 0u);
        missing += isCreated ? 0 : 1;
    };
    EXPECT_GE(AtEveryUse([this] { view.emplace(component); }, create, failHalfWay), 100);
    EXPECT_GE(missing, 100) << "all but the questions before the box is taken";
}

TEST_F(ReenteredMonthView, TellsTheFormOfItsBox) {
    const auto create = [&] {
        Create();
        StopIntruding();
        view->ShowMonth(3, 2027);
    };
    AtEveryUse([this] { Prepare(); }, create, [this] { Create(); });
    EXPECT_EQ(Strangers(), 0);
}

TEST_F(ReenteredMonthView, WhileItIsDrawn) {
    Try(100, [this] { view->Resize(); });
    Try(100, [this] { view->SetDayBevel(2); });
}

TEST_F(ReenteredMonthView, WhileTheMonthChanges) {
    Try(100, [this] { view->ShowMonth(3, 2027); });
    Try(100, [this] { view->SetMaxDate({46'300}); });
    Try(100, [this] { view->MouseDown(1, 100, 100); });
}

TEST_F(ReenteredMonthView, WhileDaysAreSelected) {
    Try(100, [this] { view->MouseDown(1, 1000, 2000); });
    Try(100, [this] {
        std::int16_t space = 32;
        view->KeyDown(space);
    });
    Try(100, [this] {
        std::int16_t right = 39;
        view->KeyDown(right);
    });
}

TEST_F(ReenteredMonthView, WhileTheBoxHasAnotherFont) {
    const auto otherFont = [this] {
        const auto made = Watched(desktop.MakeObject(u"Font", "font"));
        made->SetProperty(u"Bold", false);
        return HostObjectRef(made);
    };
    std::shared_ptr<SimulatedObject> kept;
    const auto prepare = [&] {
        view.emplace(component);
        const HostObjectRef made = NewBox();
        kept = std::dynamic_pointer_cast<SimulatedObject>(made);
        Date focus{46'347};
        ASSERT_TRUE(view->Create(made, focus, {}));
    };
    // After another Create the box is asked for its font again.
    const auto create = [&] {
        Date focus{46'347};
        view->Create(kept, focus, {});
    };
    const auto intrusion = [&] {
        kept->SetProperty(u"Font", otherFont());
        view->Resize();
    };
    EXPECT_GE(AtEveryUse(prepare, create, intrusion), 100);
}

class ReenteredButton : public Reentrance {
protected:
    ReenteredButton() { desktop.drawing.clientAreas[kWindow] = {0, 0, 100, 40}; }
    /// Each caption is longer than the one before, so that it takes another place in memory.
    void Create() {
        const Text caption = mCaption += Text(40, u'x');
        button->Create(NewBox(), caption);
    }
    void Prepare() {
        mCaption = u"&Save";
        button.emplace(component);
        Create();
        button->MouseDown(1, 0, 0);
    }
    void Try(int least, const Action& member) {
        EXPECT_GE(AtEveryUse([this] { Prepare(); }, member, [this] { Create(); }), least);
        EXPECT_NO_THROW(Create());
        AtEveryUse([this] { Prepare(); }, member, [this] { button->SetCaption(Text(1000, u'y')); });
        EXPECT_NO_THROW(Create());
    }

    std::optional<KWOPicBtn> button;

private:
    Text mCaption;
};

TEST_F(ReenteredButton, WhileItIsCreated) {
    Try(6, [this] { Create(); });
    Try(6, [this] { button->Resize(); });
}

TEST_F(ReenteredButton, TellsTheFormOfItsBox) {
    const auto create = [&] {
        Create();
        StopIntruding();
        button->MouseDown(1, 0, 0);
        button->MouseUp(0, 0);
    };
    AtEveryUse([this] { Prepare(); }, create, [this] { Create(); });
    EXPECT_EQ(Strangers(), 0);
}

TEST_F(ReenteredButton, WhileItIsDrawn) {
    Try(4, [this] { button->LostFocus(); });
    Try(2, [this] { button->GotFocus(); });
    Try(5, [this] { button->MouseDown(1, 0, 0); });
    Try(5, [this] { button->MouseMove(-100, 0); });
}

TEST_F(ReenteredButton, WhileItIsClicked) {
    Try(7, [this] { button->MouseUp(0, 0); });
    Try(12, [this] {
        std::int16_t enter = 13;
        button->KeyDown(enter);
    });
    Try(14, [this] {
        std::int16_t key = 'S';
        std::int16_t alt = 4;
        button->Form_KeyDown(key, alt);
    });
}

class ReenteredSplitter : public Reentrance {
protected:
    bool Create() { return splitter->Create(NewPane(), NewPane(), NewPane(), {}); }
    void Prepare() {
        splitter.emplace(component);
        ASSERT_TRUE(Create());
        splitter->MouseDown(1, 30);
    }
    void Try(int least, const Action& member) {
        EXPECT_GE(AtEveryUse([this] { Prepare(); }, member, [this] { Create(); }), least);
        EXPECT_TRUE(Create());
        // One that fails half-way leaves other panes and no bar.
        AtEveryUse([this] { Prepare(); }, member, [this] { splitter->Create(NewPane(), NewPane(), nullptr, {}); });
        EXPECT_TRUE(Create());
    }

    std::optional<KWOSplitterV> splitter;
};

TEST_F(ReenteredSplitter, WhileItIsCreated) {
    Try(30, [this] { Create(); });
}

TEST_F(ReenteredSplitter, IsThereOnlyIfNoCreateInsideHasFailed) {
    int missing = 0;
    const auto failHalfWay = [&] { EXPECT_FALSE(splitter->Create(NewPane(), NewPane(), nullptr, {})); };
    const auto create = [&] {
        const bool isCreated = Create();
        StopIntruding();
        desktop.log.Clear();
        EXPECT_NO_THROW(splitter->MouseDown(1, 30));
        EXPECT_EQ(desktop.log.Starting("LineTo").size(), isCreated ? 1u : 0u);
        missing += isCreated ? 0 : 1;
    };
    EXPECT_GE(AtEveryUse([this] { splitter.emplace(component); }, create, failHalfWay), 30);
    EXPECT_GE(missing, 15) << "all but the questions before the controls are taken";
}

TEST_F(ReenteredSplitter, DrawsInTheContainerOfItsBar) {
    const auto create = [&] {
        Create();
        StopIntruding();
        desktop.log.Clear();
        splitter->MouseDown(1, 30);
        int place = 0;
        ASSERT_EQ(std::sscanf(desktop.log.Starting("MoveTo").at(0).c_str(), "MoveTo %*d (%d", &place), 1);
        EXPECT_EQ(place % kPlaceOfBar, 0) << place;
    };
    AtEveryUse([this] { Prepare(); }, create, [this] { Create(); });
}

TEST_F(ReenteredSplitter, WhileThePanesAreFitted) {
    Try(10, [this] { splitter->Resize(); });
}

TEST_F(ReenteredSplitter, WhileTheBarIsDragged) {
    Try(4, [this] { splitter->MouseDown(1, 30); });
    Try(6, [this] { splitter->MouseMove(900); });
    Try(16, [this] { splitter->MouseUp(900); });
}

}  // namespace
}  // namespace kwo::controls
