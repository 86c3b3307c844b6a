#pragma once

#include <functional>
#include <optional>

#include "controls/controls_fixture.h"
#include "controls/month_view.h"
#include "controls/mouse_button.h"
#include "platform/simulated/calendar.h"

namespace kwo::controls {

/// A calendar on a box of 133 by 200 pixels: spin buttons of 19, cells of 17 or 18 by 23.
class MonthViewTest : public ControlsTest {
protected:
    static constexpr double kNoDate = 0;

    MonthViewTest() {
        form->SetMethod(u"OnChangeMonth", [this](std::span<Variant> given) -> Variant {
            if (onMonth) onMonth(given);
            return platform::Empty{};
        });
        form->SetMethod(u"OnChangeDate", [this](std::span<Variant> given) -> Variant {
            if (onDate) onDate(given);
            return platform::Empty{};
        });
        view.emplace(component);
    }

    static Date On(int year, unsigned month, unsigned day) {
        return {platform::simulated::DayNumber(year, month, day).value()};
    }
    bool Create(Date focus, KWOMonthView::CreateOptions options = {}) {
        const bool created = view->Create(box, focus, options);
        focusGiven = focus;
        return created;
    }
    /// A calendar that can be clicked, with an empty log.
    void Ready(Date focus, KWOMonthView::CreateOptions options = {.canChange = true}) {
        ASSERT_TRUE(Create(focus, options));
        desktop.log.Clear();
    }
    Lines Notifications() const { return desktop.log.Starting("Call form."); }
    /// In twips, the middle of the day's cell in the month shown; Sunday is the first column.
    std::pair<float, float> PlaceOf(int year, unsigned month, unsigned day) const {
        const auto first = platform::simulated::MomentOf(On(year, month, 1));
        const unsigned place = first.weekday + day - 1;
        const std::int32_t edges[] = {4, 22, 40, 58, 76, 94, 112, 129};
        const float x = static_cast<float>(edges[place % 7] + edges[place % 7 + 1]) / 2;
        const float y = static_cast<float>(54 + static_cast<int>(place / 7) * 23) + 11;
        return {x * 15, y * 15};
    }
    void Click(int year, unsigned month, unsigned day) {
        const auto [x, y] = PlaceOf(year, month, day);
        view->MouseDown(kLeftButton, x, y);
        view->MouseUp();
    }
    std::int16_t Key(std::int16_t code) {
        view->KeyDown(code);
        return code;
    }
    static void Cancel(std::span<Variant> given) { given.back() = true; }

    std::optional<KWOMonthView> view;
    Date focusGiven;
    std::function<void(std::span<Variant>)> onMonth;
    std::function<void(std::span<Variant>)> onDate;
};

}  // namespace kwo::controls
