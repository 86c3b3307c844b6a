#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "component/component.h"
#include "controls/annotation.h"
#include "controls/month_drawing.h"
#include "controls/month_form.h"
#include "controls/month_layout.h"
#include "controls/month_model.h"
#include "controls/picture_box.h"

namespace kwo::controls {

/// A calendar of one month on the caller's picture box.
/// The caller forwards the events of the box: the class subscribes to nothing.
///
///     KWOMonthView view(component);
///     Date shown{};                       // today
///     view.Create(box, shown, {});
///     view.MouseDown(1, xTwips, yTwips);  // from the box's event
///
/// The model keeps the dates, the layout the places; drawing and input use both. The box's form is asked before the
/// month ("OnChangeMonth", if wanted) or the selection ("OnChangeDate") changes, and may refuse.
///
/// Screen readers are told the month, the day with the focus, the number of selected days and the limits, as long as
/// the calendar is there.
///
/// Members raise what the host raises, and InvalidProcedureCall for dates outside the years 100 to 9999; an error
/// while the days are drawn only ends the drawing. A call into the host may call any member again.
/// Before Create has succeeded, the events and the selection do nothing, but for KeyDown once there is a focus.
class KWOMonthView {
public:
    /// What Create may be told besides the box. docs/month-view.md describes the values.
    /// A value of the wrong kind makes Create fail.
    struct CreateOptions {
        /// A day to select, as a date or a text; anything else selects none.
        Variant selDate = platform::Missing();
        /// Whether each click toggles a day; false if it is missing.
        Variant canMultiSelect = platform::Missing();
        /// Milliseconds between the steps of a held arrow; 150 if it is missing. Every 16-bit number is accepted.
        Variant spinInterval = platform::Missing();
        /// Whether the form is asked before the month changes; false if it is missing.
        Variant notifyOnChange = platform::Missing();
        /// An object whose hWnd is read and not used.
        Variant control = platform::Missing();
        /// Whether the user can select days; canMultiSelect alone is enough for that.
        Variant canChange = platform::Missing();
    };

    /// Reads the twips per pixel of the screen, once.
    /// `component` must outlive the object. Sets the component's program name.
    explicit KWOMonthView(component::Component& component);

    /// Takes the picture box, sets its colours and draws the calendar.
    /// `focusDate` loses its time of day; 0 becomes today. The object keeps the box and its form until the next Create
    /// or its own end.
    ///
    /// Returns false if the object is not a picture box; nothing has changed then.
    /// Returns false too if the host raises an error. The error replaces the saved error, unless it came while the
    /// days were drawn. The events then do nothing until a Create succeeds.
    bool Create(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options);

    /// Whether the user can select days with the mouse and keys. Create sets it.
    bool CanSelect() const { return mCanSelect; }
    /// Takes effect at the next click or key.
    void SetCanSelect(bool canSelect) { mCanSelect = canSelect; }
    /// Whether each click toggles a day. Create sets it.
    bool MultiSelect() const { return mModel.MultiSelect(); }
    /// Takes effect at the next click; selected days stay selected.
    void SetMultiSelect(bool multiSelect) { mModel.SetMultiSelect(multiSelect); }

    /// Weights and colours of the texts.
    /// The next drawing uses a new value. Create sets the colours; the weights are false at first and stay.
    bool CaptionFontBold() const { return mStyle.captionBold; }
    void SetCaptionFontBold(bool bold) { mStyle.captionBold = bold; }
    bool DayHdrFontBold() const { return mStyle.headerBold; }
    void SetDayHdrFontBold(bool bold) { mStyle.headerBold = bold; }
    bool DayFontBold() const { return mStyle.dayBold; }
    void SetDayFontBold(bool bold) { mStyle.dayBold = bold; }
    bool SelDayFontBold() const { return mStyle.selectedBold; }
    void SetSelDayFontBold(bool bold) { mStyle.selectedBold = bold; }
    Colour CaptionFontColor() const { return mStyle.captionColour; }
    void SetCaptionFontColor(Colour colour) { mStyle.captionColour = colour; }
    Colour DayHdrFontColor() const { return mStyle.headerColour; }
    void SetDayHdrFontColor(Colour colour) { mStyle.headerColour = colour; }
    Colour DayFontColor() const { return mStyle.dayColour; }
    void SetDayFontColor(Colour colour) { mStyle.dayColour = colour; }
    Colour SelDayFontColor() const { return mStyle.selectedColour; }
    void SetSelDayFontColor(Colour colour) { mStyle.selectedColour = colour; }

    /// Edges: 0 bump, 1 raised, 2 sunken, 3 etched; any other number means 0.
    /// Create sets a bump for the caption and etched edges for the others.
    std::int16_t CaptionBevel() const { return mStyle.captionBevel.Number(); }
    std::int16_t DayHdrBevel() const { return mStyle.headerBevel.Number(); }
    std::int16_t DayBevel() const { return mStyle.dayBevel.Number(); }
    /// Sets an edge and redraws the calendar as Resize does, if it is there.
    void SetCaptionBevel(std::int16_t number) { SetBevel(mStyle.captionBevel, number); }
    void SetDayHdrBevel(std::int16_t number) { SetBevel(mStyle.headerBevel, number); }
    void SetDayBevel(std::int16_t number) { SetBevel(mStyle.dayBevel, number); }

    /// Shows a month.
    /// If the focus is in another month, it moves to the first day, even if the form or a limit then refuses the
    /// month.
    /// Raises NoObjectSet before Create, after it has stored the month.
    void ShowMonth(std::int16_t month, std::int16_t year);
    /// A press at a place in twips, counted from the box's top left.
    /// Only `button` 1 (left) acts: it selects a day, or steps through the months while it holds an arrow.
    /// In the latter case the call processes messages and returns after the release, or when no release can arrive any
    /// more.
    /// Raises Overflow if the tick count of the next step does not fit 32 bits.
    void MouseDown(std::int16_t button, float x, float y);
    /// A movement of the pointer, in twips. It sinks or raises a held arrow, and completes a double click.
    void MouseMove(float x, float y);
    /// A release of any button. It ends the MouseDown of a held arrow, and refreshes the box.
    void MouseUp();
    /// The second press of a double click: acts as MouseDown with the last button and place.
    void DblClick();
    /// Computes the layout again from the box's size and font, and redraws.
    void Resize();
    /// Arrows and Page keys move the focus, Enter and Space select or deselect it.
    /// `keyCode` is the system's virtual key code. It becomes 0 if Enter or Space was used, that is, if the user may
    /// select; other keys do nothing.
    void KeyDown(std::int16_t& keyCode);

    /// Adds a day to the selection.
    /// Redraws only if the day is already selected.
    /// Does nothing before Create, and for an invalid date.
    void SelDaysAdd(Date date);
    /// Removes a day from the selection, without redrawing. Does nothing before Create.
    void SelDaysRemove(Date date);
    /// Empties the selection, without redrawing.
    void SelDaysClear();
    /// The day that was selected first; the date 0 if there is none.
    Date SelDay() const { return mModel.FirstSelected(); }
    /// Whether a day is selected. A time after noon counts as the next day.
    bool IsSelected(Date date) const { return mModel.IsSelected(date); }

    /// The first allowed month for the user, as the date that was set; 0 means no limit.
    Date MinDate() const { return mModel.MinDate(); }
    /// Sets the first allowed month.
    /// If the visible month is earlier, the focus moves to `date` and its month is shown, unless the form refuses.
    /// Raises NoObjectSet before Create, after it has stored the date.
    void SetMinDate(Date date);
    /// The last allowed month, as the date that was set; 0 means no limit.
    Date MaxDate() const { return mModel.MaxDate(); }
    /// Sets the last allowed month.
    /// Moves the focus to `date` even if that is in the visible month, and always if it is 0: see docs/intended.md. As
    /// long as there is no visible month, it only stores the date.
    void SetMaxDate(Date date);
    /// The month and year that are shown; 0 before Create. After a refused ShowMonth they differ from the picture.
    std::int16_t VisibleMonth() const { return mModel.VisibleMonth(); }
    /// See VisibleMonth.
    std::int16_t VisibleYear() const { return mModel.VisibleYear(); }

private:
    /// One of the two arrows.
    struct SpinState {
        /// From the press to the release.
        bool active = false;
        /// Whether the pointer is on it.
        bool pressed = false;
    };

    /// What there is to say of a calendar.
    struct News {
        /// A day of the month in the picture.
        Date shown;
        Date focus;
        bool isSelected = false;
        std::size_t selected = 0;
        Date minDate;
        Date maxDate;

        friend bool operator==(const News&, const News&) = default;
    };

    /// Create without the handling of errors.
    bool Open(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options);
    /// Create has failed: the calendar is not there.
    void Fail();
    /// Sets the box and the style to what a new calendar looks like.
    void PrepareBox();
    void ApplyOptions(const CreateOptions& options);
    Date DateIn(const Variant& value) const;
    void SetBevel(Bevel& bevel, std::int16_t number);
    /// Shows the month of `target` and moves the focus there, unless a limit or the form refuses.
    void ChangeMonth(Date target);

    /// Measures the box and draws the arrows.
    void ComputeLayout();
    bool Draw();
    void DrawSpinButton(std::size_t which, bool pressed) { mDrawing.SpinButton(mLayout, which, pressed); }

    /// Annotates the window of the box.
    void Annotate();
    /// Tells screen readers what has changed.
    void TellNews();
    void Compose(Spoken& spoken, const News& news);

    /// Returns when the arrow is released.
    void Spin(std::size_t which);
    void WaitUntil(std::int32_t due);
    Handle BoxWindow() const;
    bool ClickDays(platform::Point point);
    /// False if the form refuses.
    bool ClickDay(std::int16_t day);
    void MoveFocus(std::int32_t days);
    bool ToggleFocus();
    /// The tick count as a signed number.
    std::int32_t Ticks() const;

    component::Component& mComponent;
    TwipsPerPixel mTwips;
    PictureBox mBox;
    MonthForm mForm;
    MonthDrawing mDrawing;
    MonthModel mModel;
    MonthLayout mLayout;
    MonthStyle mStyle;
    /// True while the calendar is there and may be drawn.
    bool mCreated = false;
    /// The last Create that took a box has failed.
    bool mHasFailed = false;
    bool mCanSelect = false;
    /// Milliseconds.
    std::int16_t mSpinInterval = 0;
    bool mNotifyOnChange = false;
    std::array<SpinState, 2> mSpin;
    /// The last press, in twips, for a double click.
    std::int16_t mLastButton = 0;
    float mLastX = 0;
    float mLastY = 0;
    /// A double click was not completed yet.
    bool mDblClickPending = false;
    /// A day of the month that was drawn last.
    Date mShown;
    /// What screen readers were told last.
    std::optional<News> mTold;
    Annotation mAnnotation;
};

}  // namespace kwo::controls
