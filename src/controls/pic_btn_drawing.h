#pragma once

#include <cstdint>

#include "controls/picture_box.h"
#include "platform/drawing.h"
#include "platform/geometry.h"

namespace kwo::controls {

/// Draws a button on its picture box.
/// The device context is read again before each call.
///
/// Members raise what the host raises, and NoObjectSet while the box has none. Each call into the host may run any
/// code of it, also code that measures or draws again.
class PicBtnDrawing {
public:
    /// Keeps references to both; they must outlive it. The button is empty until Measure.
    PicBtnDrawing(const PictureBox& box, platform::Drawing& drawing);

    /// 3 left, 4 right, 2 centre.
    std::int16_t TextAlignment() const;
    /// 3 left, 4 right, any other value centre.
    void SetTextAlignment(std::int16_t alignment);
    /// See KWOPicBtn::MultiLine.
    bool MultiLine() const;
    /// Sets the flag. The next drawing uses it.
    void SetMultiLine(bool multiLine);

    /// Takes the size of the box's window.
    /// Returns that window.
    /// Raises Overflow for a size that does not fit 32 bits. If the window is gone, the size stays as it was.
    Handle Measure();
    /// Whether a point, in pixels of the box, is on the button. False before Measure.
    bool Contains(platform::Point point) const { return mClientArea.Contains(point); }

    /// Draws the whole button on an emptied box, and refreshes it.
    /// `pressed` sinks the edge and moves the text by a pixel, `framed` adds the black frame.
    /// The host may change the caption during its calls before the text is drawn.
    void Button(const Text& caption, bool pressed, bool framed) const;
    /// Draws the frame over the picture, and refreshes the box. Only a new Button removes it.
    void Frame() const;

private:
    const PictureBox& mBox;
    platform::Drawing& mDrawing;
    /// The whole button.
    platform::Rect mClientArea;
    /// The button without its edges.
    platform::Rect mTextArea;
    /// DT_ numbers, but for the alignment.
    std::uint32_t mFormat;
    std::uint32_t mAlignment;
    Handle mFrameBrush;
};

}  // namespace kwo::controls
