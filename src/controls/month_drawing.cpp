#include "controls/month_drawing.h"

#include "frame/text_routines.h"

namespace kwo::controls {

namespace {

using platform::Drawing;

/// Centred both ways on one line, with an ellipsis if the text is too long.
constexpr std::uint32_t kTextFormat = 0x8025;

Rect Shrunk(const Rect& area, std::int32_t by) {
    return {area.left + by, area.top + by, area.right - by, area.bottom - by};
}

}  // namespace

void MonthDrawing::SpinButton(const MonthLayout& layout, std::size_t which, bool pressed) const {
    const std::uint32_t arrow = which == 0 ? Drawing::kScrollLeft : Drawing::kScrollRight;
    mPlatform.drawing.DrawFrameControl(mBox.Context(), layout.spinButtons[which], Drawing::kScrollFrame,
                                       arrow + (pressed ? Drawing::kPushed : 0));
}

void MonthDrawing::Caption(const MonthLayout& layout, const MonthModel& model) const {
    const Date focus = model.Focus();
    mBox.FillBox(mTwips.Twips(layout.caption), MonthStyle::kButtonFace);
    Write(CaptionText(focus), layout.caption);
}

bool MonthDrawing::Calendar(const MonthLayout& layout, const MonthStyle& style, const MonthModel& model,
                            bool plain) const {
    try {
        DrawAll(layout, style, model, plain);
        return true;
    } catch (const platform::ComponentError&) {
        return false;
    }
}

void MonthDrawing::DrawAll(const MonthLayout& layout, const MonthStyle& style, const MonthModel& model,
                           bool plain) const {
    const Date focus = model.Focus();
    const std::int16_t framedDay = model.FramedDay();
    const Text caption = CaptionText(focus);
    Edge(layout.caption, style.captionBevel.edge, style.captionBevel.flags);
    Write(caption, layout.caption, style.captionColour, style.captionBold);
    Header(layout, style);

    const MonthGrid grid(focus, FirstDayOfWeek(mLocale));
    for (std::size_t row = 0; row < MonthLayout::kRows; ++row) {
        for (std::size_t column = 0; column < MonthLayout::kColumns; ++column) {
            const Rect& cell = layout.DayCell(column, row);
            Edge(cell, style.dayBevel.edge, style.dayBevel.flags);
            const std::int16_t day = grid.DayAt(column, row);
            if (day == 0) continue;
            Day(cell, day, style, !plain && model.IsSelected(model.VisibleDate(day)));
            if (day == framedDay) FocusFrame(cell);
        }
    }
    mBox.Refresh();
}

void MonthDrawing::Header(const MonthLayout& layout, const MonthStyle& style) const {
    mBox.SetForeColour(style.headerColour);
    mBox.SetFontBold(style.headerBold);
    const std::int32_t first = FirstDayOfWeek(mLocale);
    for (std::size_t column = 0; column < MonthLayout::kColumns; ++column) {
        Edge(layout.headerCells[column], style.headerBevel.edge, style.headerBevel.flags);
        const std::size_t day = (column + static_cast<std::size_t>(first)) % MonthLayout::kColumns;
        Write(mLocale.Record().dayNames[day].substr(0, 1), layout.headerCells[column]);
    }
}

void MonthDrawing::Day(const Rect& cell, std::int16_t day, const MonthStyle& style, bool isSelected) const {
    if (isSelected) SelectedGround(cell, style);
    Write(frame::Decimal(day), cell, isSelected ? style.selectedColour : style.dayColour,
          isSelected ? style.selectedBold : style.dayBold);
}

void MonthDrawing::FocusFrame(const Rect& cell) const {
    constexpr std::int32_t kInset = 2;
    mPlatform.drawing.DrawFocusRect(mBox.Context(), Shrunk(cell, kInset));
}

void MonthDrawing::SelectedGround(const Rect& cell, const MonthStyle& style) const {
    if (style.selectedColour != MonthStyle::kHighlightText) {
        Edge(cell, Drawing::kEdgeSunken, style.dayBevel.selectedFlags);
        return;
    }
    // Intended: closer to the top left of its cell than to the bottom right.
    const Rect box = {cell.left + 2, cell.top + 2, cell.right - 4, cell.bottom - 4};
    mBox.FillBox(mTwips.Twips(box), MonthStyle::kHighlight);
}

Text MonthDrawing::CaptionText(Date day) const {
    return mPlatform.conversions.FormatDate(day, u"Mmmm, yyyy");
}

void MonthDrawing::Edge(const Rect& area, std::uint32_t edge, std::uint32_t flags) const {
    mPlatform.drawing.DrawEdge(mBox.Context(), area, edge, flags);
}

void MonthDrawing::Write(TextView text, const Rect& area) const {
    mPlatform.drawing.DrawText(mBox.Context(), text, area, kTextFormat);
}

void MonthDrawing::Write(TextView text, const Rect& area, Colour colour, bool bold) const {
    mBox.SetForeColour(colour);
    mBox.SetFontBold(bold);
    Write(text, area);
}

}  // namespace kwo::controls
