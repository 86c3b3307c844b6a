#pragma once

#include <cstdint>
#include <functional>

#include "controls/month_bevels.h"
#include "controls/month_dates.h"
#include "controls/month_layout.h"
#include "controls/picture_box.h"
#include "messages/locale.h"
#include "platform/drawing.h"

namespace kwo::controls {

/// The colours and weights of a calendar's texts.
struct MonthStyle {
    bool captionBold = false;
    bool headerBold = false;
    bool dayBold = false;
    bool selectedBold = false;
    Colour captionColour = 0;
    Colour headerColour = 0;
    Colour dayColour = 0;
    Colour selectedColour = 0;
    Bevel captionBevel;
    Bevel headerBevel;
    Bevel dayBevel;

    /// System colours. A selected colour that is this one goes with a highlighted box.
    static constexpr Colour kHighlightText = 0x8000000E;
    static constexpr Colour kHighlight = 0x8000000D;
    static constexpr Colour kButtonFace = 0x8000000F;
    static constexpr Colour kGreyText = 0x80000011;
    static constexpr Colour kButtonText = 0x80000012;
    static constexpr Colour kWindowText = 0x80000008;
};

/// What a calendar shows.
struct MonthContent {
    Date focusDate;
    std::int16_t focusDay = 0;
    std::function<bool(std::int16_t day)> isSelected;
};

/// Draws a calendar on its picture box, whose device context is read before each call. Raises what the host raises.
class MonthDrawing {
public:
    MonthDrawing(const PictureBox& box, const platform::Platform& services, messages::MKWOLocale& locale,
                 const TwipsPerPixel& twips)
        : mBox(box), mPlatform(services), mLocale(locale), mTwips(twips) {}

    void SpinButton(const MonthLayout& layout, std::size_t which, bool pressed) const;
    /// With `plain`, every day is drawn as one that is not selected.
    void Calendar(const MonthLayout& layout, const MonthStyle& style, const MonthContent& content, bool plain) const;
    /// The caption alone, on a fresh ground.
    void Caption(const MonthLayout& layout, Date focusDate) const;

    /// 0 is Monday.
    std::int32_t FirstDayOfWeek() const;

private:
    Text CaptionText(Date focusDate) const;
    void Edge(const Rect& area, std::uint32_t edge, std::uint32_t flags) const;
    void Write(TextView text, const Rect& area) const;
    void Write(TextView text, const Rect& area, Colour colour, bool bold) const;
    void Header(const MonthLayout& layout, const MonthStyle& style) const;
    void Day(const Rect& cell, std::int16_t day, const MonthStyle& style, const MonthContent& content,
             bool plain) const;
    void SelectedGround(const Rect& cell, const MonthStyle& style) const;

    const PictureBox& mBox;
    const platform::Platform& mPlatform;
    messages::MKWOLocale& mLocale;
    const TwipsPerPixel& mTwips;
};

}  // namespace kwo::controls
