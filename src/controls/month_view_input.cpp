#include "controls/month_view.h"

#include <algorithm>

#include "controls/mouse_button.h"
#include "platform/clock.h"
#include "platform/component_error.h"
#include "platform/keyboard.h"
#include "platform/message_loop.h"
#include "platform/mouse.h"
#include "platform/window_service.h"

namespace kwo::controls {

namespace {

using platform::Key;

/// A press of the mouse button on a window, from the MouseDown that reports it. If no real button was pressed, as when
/// a script calls MouseDown, the press is never over.
class HeldPress {
public:
    /// `window` is 0 if there is no window to watch.
    HeldPress(const platform::Platform& services, platform::Handle window)
        : mMouse(services.mouse), mDesktop(services.windows), mWindow(window), mWasDown(mMouse.WasPressed()) {
        Look();
    }

    /// Call it before messages are processed: if the button is up, its release is then among them.
    void Look() {
        mIsDown = mMouse.IsHeld();
        mWasDown = mWasDown || mIsDown;
    }
    /// True if the button was down and is up now.
    bool IsOver() const { return mWasDown && !mIsDown; }
    bool WindowIsGone() const { return mWindow != 0 && !mDesktop.WindowExists(mWindow); }

private:
    platform::Mouse& mMouse;
    platform::WindowService& mDesktop;
    platform::Handle mWindow;
    bool mWasDown;
    bool mIsDown = false;
};

}  // namespace

void KWOMonthView::MouseDown(std::int16_t button, float x, float y) {
    if (!mCreated) return;
    mLastX = x;
    mLastY = y;
    mLastButton = button;
    if (button != kLeftButton) return;
    const platform::Point point = mTwips.Pixels(x, y);
    if (const auto which = mLayout.SpinButtonAt(point)) return Spin(*which);
    if (mCanSelect && ClickDays(point)) Draw();
}

/// Steps at once and then after each interval, while the button is held and the pointer is on it. The release arrives
/// while messages are processed here. A release that never arrives is noticed.
void KWOMonthView::Spin(std::size_t which) {
    SpinState& button = mSpin[which];
    HeldPress press(mComponent.platform, BoxWindow());
    DrawSpinButton(which, true);
    button.active = true;
    button.pressed = true;
    const std::int32_t step = which == 0 ? -1 : 1;
    // Intended: tick counts are signed, and their sum with the interval may overflow.
    std::int32_t due = Ticks();
    while (button.active) {
        if (Ticks() >= due) {
            if (button.pressed) ChangeMonth(mModel.MonthsFromFocus(step));
            due = platform::Narrowed<std::int32_t>(std::int64_t{Ticks()} + mSpinInterval);
        }
        press.Look();
        // If the program ends or the window is gone, no release will arrive; after a Create that failed, none counts.
        if (!mComponent.platform.messages.ProcessPending() || press.WindowIsGone() || !mCreated) {
            button = {};
        } else if (button.active && press.IsOver()) {
            MouseUp();
        } else if (button.active) {
            WaitUntil(due);
        }
    }
}

/// Returns at `due`, when a message arrives, and from time to time, to look for a release that never arrived.
void KWOMonthView::WaitUntil(std::int32_t due) {
    constexpr std::int64_t kLongestMs = 100;
    const std::int64_t left = std::int64_t{due} - Ticks();
    mComponent.wait.WaitForInput(static_cast<std::uint32_t>(std::clamp<std::int64_t>(left, 0, kLongestMs)));
}

/// 0 if the box has no window that the system knows.
Handle KWOMonthView::BoxWindow() const {
    try {
        const Handle window = mBox.Window();
        return mComponent.platform.windows.WindowExists(window) ? window : 0;
    } catch (const platform::ComponentError&) {
        return 0;
    }
}

/// False if the form refuses the change. The form may change the layout too, so every cell is tested.
bool KWOMonthView::ClickDays(platform::Point point) {
    const MonthGrid grid(mModel.Focus(), FirstDayOfWeek(mComponent.locale));
    if (!mLayout.dayArea.Contains(point)) return true;
    for (std::size_t row = 0; row < MonthLayout::kRows; ++row) {
        for (std::size_t column = 0; column < MonthLayout::kColumns; ++column) {
            const std::int16_t day = grid.DayAt(column, row);
            if (day == 0 || !mLayout.DayCell(column, row).Contains(point)) continue;
            if (!ClickDay(day)) return false;
        }
    }
    return true;
}

bool KWOMonthView::ClickDay(std::int16_t day) {
    const Date clicked = mModel.VisibleDate(day);
    const bool isRefused = mForm.RefusesDate(clicked);
    mModel.FrameDay(day);
    if (!isRefused) mModel.ClickDay(clicked);
    return !isRefused;
}

void KWOMonthView::MouseMove(float x, float y) {
    if (!mCreated) return;
    for (std::size_t which = 0; which < mSpin.size(); ++which) {
        if (!mSpin[which].active) continue;
        const bool isInside = mLayout.spinButtons[which].Contains(mTwips.Pixels(x, y));
        if (isInside != mSpin[which].pressed) {
            DrawSpinButton(which, isInside);
            mBox.Refresh();
            mSpin[which].pressed = isInside;
        }
        break;
    }
    if (mDblClickPending) {
        MouseUp();
        mDblClickPending = false;
    }
}

void KWOMonthView::MouseUp() {
    if (!mCreated) return;
    for (std::size_t which = 0; which < mSpin.size(); ++which) {
        if (!mSpin[which].active) continue;
        // The button is released even if drawing fails.
        mSpin[which] = {};
        DrawSpinButton(which, false);
        Draw();
    }
    mBox.Refresh();
}

void KWOMonthView::DblClick() {
    if (!mCreated) return;
    MouseDown(mLastButton, mLastX, mLastY);
    mDblClickPending = true;
}

void KWOMonthView::Resize() {
    if (!mCreated) return;
    mBox.Clear();
    ComputeLayout();
    Draw();
}

void KWOMonthView::KeyDown(std::int16_t& keyCode) {
    constexpr std::int32_t kWeek = 7;
    if (!mModel.HasFocus()) return;
    switch (keyCode) {
        case Key::kUp:
            return MoveFocus(-kWeek);
        case Key::kDown:
            return MoveFocus(kWeek);
        case Key::kLeft:
            return MoveFocus(-1);
        case Key::kRight:
            return MoveFocus(1);
        case Key::kPageUp:
            return ChangeMonth(mModel.MonthsFromFocus(-1));
        case Key::kPageDown:
            return ChangeMonth(mModel.MonthsFromFocus(1));
        case Key::kEnter:
        case Key::kSpace:
            if (ToggleFocus()) keyCode = 0;
            return;
        default:
            return;
    }
}

void KWOMonthView::MoveFocus(std::int32_t days) {
    const Date target = mModel.DaysFromFocus(days);
    // The date 0 is not a target: the month of the focus is shown again, or nothing happens.
    if (!mModel.IsInFocusMonth(target)) return ChangeMonth(target == Date{} ? mModel.Focus() : target);
    if (target == Date{}) return;
    mModel.MoveFocusInMonth(target);
    Draw();
}

/// False if the user may not select.
bool KWOMonthView::ToggleFocus() {
    if (!mCanSelect) return false;
    if (mForm.RefusesDate(mModel.Focus())) return true;
    mModel.ToggleFocus();
    Draw();
    return true;
}

std::int32_t KWOMonthView::Ticks() const {
    return static_cast<std::int32_t>(mComponent.platform.clock.TickCount());
}

}  // namespace kwo::controls
