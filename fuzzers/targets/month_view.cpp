// A calendar in a hostile host: its members raise only what the host raised and what they may raise themselves, a held
// arrow ends with its release, nothing of the host is kept, and the calendar can be used again.

#include "controls/month_view.h"

#include <limits>
#include <memory>
#include <optional>

#include "hostile_controls.h"

namespace kwo::controls {
namespace {

class Session : public fuzz::HostileControls {
public:
    explicit Session(fuzz::Input& theInput) : HostileControls(theInput) {
        view.emplace(component);
        host.onIntrusion = [this] { Operate(); };
        desktop.mouse.wasPressed = true;
        // Drawing takes time. Without it an arrow that is held with an interval of 0 would draw on and on.
        desktop.clock.msPerReading = 1;
    }

    bool Create(HostObjectRef box) {
        Date focus = AnyDate();
        return view->Create(box, focus,
                            {.selDate = AnyOption(),
                             .canMultiSelect = AnyOption(),
                             .spinInterval = AnyOption(),
                             .notifyOnChange = input.Flag() ? Variant(true) : AnyOption(),
                             .control = AnyOption(),
                             .canChange = AnyOption()});
    }

    /// One member.
    void Operate() {
        switch (input.Below(16)) {
            case 0:
                Create(AnyBox());
                break;
            case 1:
                view->ShowMonth(input.Whole<std::int16_t>(), input.Whole<std::int16_t>());
                break;
            case 2:
                Press();
                break;
            case 3: {
                const float x = Place();
                view->MouseMove(x, Place());
                break;
            }
            case 4:
                view->MouseUp();
                break;
            case 5:
                Hold(true, [this] { view->DblClick(); });
                break;
            case 6:
                view->Resize();
                break;
            case 7:
            case 8: {
                constexpr std::int16_t kKeys[] = {13, 32, 33, 34, 37, 38, 39, 40, 9};
                std::int16_t key = input.Of(kKeys);
                view->KeyDown(key);
                break;
            }
            case 9:
                Select();
                break;
            case 10:
                view->SetMinDate(AnyDate());
                break;
            case 11:
                view->SetMaxDate(AnyDate());
                break;
            case 12:
                SetBevel(input.Whole<std::int16_t>());
                break;
            case 13:
                view->SetCanSelect(input.Flag());
                view->SetMultiSelect(input.Flag());
                break;
            case 14:
                view->SetDayFontBold(input.Flag());
                view->SetDayFontColor(input.Bits<Colour>());
                break;
            default:
                desktop.Advance(input.Byte());
                desktop.messages.ProcessPending();
                break;
        }
    }

    void CheckState() {
        for (const std::int16_t bevel : {view->CaptionBevel(), view->DayHdrBevel(), view->DayBevel()})
            KWO_HOLDS(bevel >= 0 && bevel <= 3);
        if (view->SelDay() != Date{}) KWO_HOLDS(view->IsSelected(view->SelDay()));
        KWO_HOLDS(!view->IsSelected({std::numeric_limits<double>::quiet_NaN()}));
    }

    std::optional<KWOMonthView> view;

private:
    Date AnyDate() {
        switch (input.Below(4)) {
            case 0:
            case 1:
                return {46'347.0 + input.Byte() - 128};
            case 2:
                return {0};
            default:
                return {input.Real()};
        }
    }
    void Select() {
        const Date date = AnyDate();
        switch (input.Below(4)) {
            case 0:
                view->SelDaysRemove(date);
                break;
            case 1:
                view->SelDaysClear();
                KWO_HOLDS(view->SelDay() == Date{} && !view->IsSelected(date));
                break;
            default:
                view->SelDaysAdd(date);
                break;
        }
    }
    void SetBevel(std::int16_t number) {
        switch (input.Below(3)) {
            case 0:
                return view->SetCaptionBevel(number);
            case 1:
                return view->SetDayHdrBevel(number);
            default:
                return view->SetDayBevel(number);
        }
    }
    void Press() {
        const std::int16_t button = input.Once(8) ? input.Whole<std::int16_t>() : std::int16_t{1};
        constexpr float kArrows[] = {150, 1800};  // both are at the top
        const bool isOnArrow = input.Once(3);
        const float x = isOnArrow ? input.Of(kArrows) : Place();
        const float y = isOnArrow ? kArrows[0] : Place();
        if (input.Flag()) {
            desktop.PostAt(input.Byte() * 4, [this] {
                if (view.has_value()) host.Run([this] { view->MouseUp(); });
            });
        }
        Hold(input.Flag(), [&] { view->MouseDown(button, x, y); });
    }
    /// An event while a real button may be held, which goes up in time. Whatever the host does meanwhile, the outermost
    /// event ends.
    template <class Event>
    void Hold(bool isHeld, Event&& event) {
        constexpr std::int64_t kReleaseMs = 500;
        constexpr std::int64_t kLimitMs = 1'000'000;
        if (mIsPressed) return event();
        mIsPressed = true;
        desktop.mouse.isHeld = isHeld;
        const auto release = desktop.messages.PostAt(kReleaseMs, [this] { desktop.mouse.isHeld = false; });
        const auto limit =
            desktop.messages.PostAt(kLimitMs, [] { fuzz::Stop(__FILE__, __LINE__, "a press ends with its release"); });
        const std::shared_ptr<void> afterwards(nullptr, [&](void*) {
            desktop.messages.Withdraw(release);
            desktop.messages.Withdraw(limit);
            desktop.mouse.isHeld = false;
            mIsPressed = false;
        });
        event();
    }

    bool mIsPressed = false;
};

KWO_FUZZ_TARGET(month_view) {
    constexpr int kMostOperations = 24;
    Session session(input);
    if (input.Flag()) session.host.isCalm = true;
    session.host.Run([&] { session.Create(session.MakeBox()); });
    session.host.isCalm = false;
    for (int operation = 0; operation < kMostOperations && !input.IsEmpty(); ++operation) {
        session.host.Run([&] { session.Operate(); });
        session.CheckState();
        session.desktop.log.Clear();
    }

    session.host.isCalm = true;
    Date focus{46'347};  // 2026-11-21
    KWO_HOLDS(session.view->Create(session.MakeBox(), focus, {}));
    session.view->SetMinDate({});
    session.view->ShowMonth(11, 2026);
    KWO_HOLDS(session.view->VisibleMonth() == 11 && session.view->VisibleYear() == 2026);
    session.view->SelDaysAdd({46'350});
    KWO_HOLDS(session.view->SelDay().days == 46'350);
    session.view.reset();
    session.desktop.messages.ProcessPending();
    session.host.CheckThatNothingIsHeld();
    KWO_HOLDS(session.desktop.accessibility.annotations.empty());
}

}  // namespace
}  // namespace kwo::controls
