#pragma once

#include <cstdint>

#include "controls/picture_box.h"
#include "platform/drawing.h"
#include "platform/geometry.h"

namespace kwo::controls {

/// The look of a button on its picture box, whose device context is read before each call. Members raise what the host
/// raises.
class PicBtnDrawing {
public:
    PicBtnDrawing(const PictureBox& box, platform::Drawing& drawing);

    /// 3 left, 4 right, anything else the centre, which reads 2.
    std::int16_t TextAlignment() const;
    void SetTextAlignment(std::int16_t alignment);
    bool MultiLine() const;
    void SetMultiLine(bool multiLine);

    /// Takes the size of the box's window. Raises Overflow for one that 32 bits do not hold.
    void Measure();
    /// In pixels of the box.
    bool Contains(platform::Point point) const { return mClientArea.Contains(point); }

    /// The whole button. The host may change the caption from its calls before the text is drawn.
    void Button(const Text& caption, bool pressed, bool framed) const;
    /// The frame alone, on what is there.
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
