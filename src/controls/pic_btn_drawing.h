#pragma once

#include <cstdint>

#include "controls/picture_box.h"
#include "platform/drawing.h"
#include "platform/geometry.h"

namespace kwo::controls {

/// Draws a button on its picture box. The device context is read again before each call. Members raise what the host
/// raises.
class PicBtnDrawing {
public:
    /// Keeps references to both; they must outlive it.
    PicBtnDrawing(const PictureBox& box, platform::Drawing& drawing);

    /// 3 left, 4 right, 2 centre.
    std::int16_t TextAlignment() const;
    /// 3 left, 4 right, any other value centre.
    void SetTextAlignment(std::int16_t alignment);
    /// Whether lines break between words; true at first.
    bool MultiLine() const;
    void SetMultiLine(bool multiLine);

    /// Takes the size of the box's window. Raises Overflow for a size that does not fit 32 bits.
    void Measure();
    /// Whether a point, in pixels of the box, is on the button.
    bool Contains(platform::Point point) const { return mClientArea.Contains(point); }

    /// Draws the whole button. The host may change the caption during its calls before the text is drawn.
    void Button(const Text& caption, bool pressed, bool framed) const;
    /// Draws the frame over the picture.
    void Frame() const;

private:
    const PictureBox& mBox;
    platform::Drawing& mDrawing;
    platform::Rect mClientArea;
    platform::Rect mTextArea;
    std::uint32_t mFormat;
    std::uint32_t mAlignment;
    Handle mFrameBrush;
};

}  // namespace kwo::controls
