#pragma once

#include <cstdint>

#include "controls/month_bevels.h"
#include "controls/month_layout.h"
#include "controls/month_model.h"
#include "controls/picture_box.h"
#include "messages/locale.h"
#include "platform/drawing.h"

namespace kwo::controls {

/// Weights, colours and edges of a calendar. A value: drawing only reads it, and a change shows at the next drawing.
struct MonthStyle {
    /// Whether the texts are bold: month and year, the letters of the week, the days, and the selected days.
    bool captionBold = false;
    bool headerBold = false;
    bool dayBold = false;
    bool selectedBold = false;
    /// The colours of the same texts.
    Colour captionColour = 0;
    Colour headerColour = 0;
    Colour dayColour = 0;
    Colour selectedColour = 0;
    /// The edges of the caption, of the cells with the letters, and of the days.
    Bevel captionBevel;
    Bevel headerBevel;
    Bevel dayBevel;

    /// System colours, which follow the user's colour scheme at the next drawing.
    /// The text of selected days. While it is the selected colour, they have a highlighted box.
    static constexpr Colour kHighlightText = 0x8000000E;
    /// The ground of that box.
    static constexpr Colour kHighlight = 0x8000000D;
    /// The ground of the calendar.
    static constexpr Colour kButtonFace = 0x8000000F;
    /// The letters of the week.
    static constexpr Colour kGreyText = 0x80000011;
    /// Month and year.
    static constexpr Colour kButtonText = 0x80000012;
    /// The days.
    static constexpr Colour kWindowText = 0x80000008;
};

/// Draws a calendar on its picture box.
/// The device context is read again before each call.
///
/// Each call may run code of the host, which may call the calendar again. The focus is read once, at the beginning;
/// layout, style and selection are read where they are used.
/// All members need a box. Without one they raise NoObjectSet, but Calendar returns false.
class MonthDrawing {
public:
    /// Keeps references to all of these; they must outlive it. Draws nothing yet.
    MonthDrawing(const PictureBox& box, const platform::Platform& services, messages::MKWOLocale& locale,
                 const TwipsPerPixel& twips)
        : mBox(box), mPlatform(services), mLocale(locale), mTwips(twips) {}

    /// Draws one arrow: 0 leads to the previous month, 1 to the next.
    /// Does not refresh the box.
    /// Raises what the host raises.
    void SpinButton(const MonthLayout& layout, std::size_t which, bool pressed) const;
    /// Draws month and year of the focus on a fresh ground, in the box's present font and colour.
    /// Does not refresh the box.
    /// Raises what the host raises, and Overflow for a place that does not fit 32 bits in twips.
    void Caption(const MonthLayout& layout, const MonthModel& model) const;
    /// Draws everything but the arrows, and refreshes the box.
    /// Returns false if the host raises an error, which is then lost; the rest is not drawn. With `plain` no day is
    /// drawn as selected.
    bool Calendar(const MonthLayout& layout, const MonthStyle& style, const MonthModel& model,
                  bool plain = false) const;
    /// Month and year as the caption shows them, in the user's language. Raises Overflow outside the calendar.
    Text CaptionText(Date day) const;

private:
    /// Calendar without the handling of errors.
    void DrawAll(const MonthLayout& layout, const MonthStyle& style, const MonthModel& model, bool plain) const;
    void Edge(const Rect& area, std::uint32_t edge, std::uint32_t flags) const;
    /// In the box's present font and colour.
    void Write(TextView text, const Rect& area) const;
    /// Sets colour and weight of the box first.
    void Write(TextView text, const Rect& area, Colour colour, bool bold) const;
    /// The letters of the week, from the user's first day on.
    void Header(const MonthLayout& layout, const MonthStyle& style) const;
    /// The number of a day, on its ground if it is selected.
    void Day(const Rect& cell, std::int16_t day, const MonthStyle& style, bool isSelected) const;
    void FocusFrame(const Rect& cell) const;
    /// The highlighted box, or the sunken edge for another colour than that of highlighted text.
    void SelectedGround(const Rect& cell, const MonthStyle& style) const;

    const PictureBox& mBox;
    const platform::Platform& mPlatform;
    messages::MKWOLocale& mLocale;
    const TwipsPerPixel& mTwips;
};

}  // namespace kwo::controls
