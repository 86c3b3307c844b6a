#include "controls/pic_btn_drawing.h"

#include "platform/whole_numbers.h"

namespace kwo::controls {

namespace {

using platform::Drawing;
using platform::Narrowed;
using platform::Rect;

constexpr std::uint32_t kLeft = 0;
constexpr std::uint32_t kCenter = 1;
constexpr std::uint32_t kRight = 2;
constexpr std::uint32_t kVCenter = 0x4;
constexpr std::uint32_t kWordBreak = 0x10;
constexpr std::uint32_t kSingleLine = 0x20;
constexpr std::uint32_t kEndEllipsis = 0x8000;
constexpr std::int32_t kBlackBrush = 4;

Rect Inset(const Rect& area, std::int32_t by) {
    return {Narrowed<std::int32_t>(std::int64_t{area.left} + by), Narrowed<std::int32_t>(std::int64_t{area.top} + by),
            Narrowed<std::int32_t>(std::int64_t{area.right} - by),
            Narrowed<std::int32_t>(std::int64_t{area.bottom} - by)};
}

Rect Offset(const Rect& area, std::int32_t by) {
    return {area.left + by, area.top + by, area.right + by, area.bottom + by};
}

}  // namespace

PicBtnDrawing::PicBtnDrawing(const PictureBox& box, Drawing& drawing)
    : mBox(box),
      mDrawing(drawing),
      mFormat(kVCenter | kWordBreak | kSingleLine | kEndEllipsis),
      mAlignment(kCenter),
      mFrameBrush(drawing.StockObject(kBlackBrush)) {}

std::int16_t PicBtnDrawing::TextAlignment() const {
    if (mAlignment == kLeft) return 3;
    return mAlignment == kRight ? 4 : 2;
}

void PicBtnDrawing::SetTextAlignment(std::int16_t alignment) {
    mAlignment = alignment == 3 ? kLeft : alignment == 4 ? kRight : kCenter;
}

bool PicBtnDrawing::MultiLine() const {
    return (mFormat & kWordBreak) != 0;
}

void PicBtnDrawing::SetMultiLine(bool multiLine) {
    mFormat = multiLine ? mFormat | kWordBreak : mFormat & ~kWordBreak;
}

Handle PicBtnDrawing::Measure() {
    constexpr std::int32_t kEdge = 2;
    const Handle window = mBox.Window();
    mDrawing.ClientRect(window, mClientArea);
    mTextArea = Inset(mClientArea, kEdge);
    return window;
}

void PicBtnDrawing::Button(const Text& caption, bool pressed, bool framed) const {
    constexpr std::uint32_t kAllSides = 15;
    mBox.Clear();
    mDrawing.DrawEdge(mBox.Context(), mClientArea, pressed ? Drawing::kEdgeSunken : Drawing::kEdgeRaised, kAllSides);
    if (framed) mDrawing.FrameRect(mBox.Context(), mClientArea, mFrameBrush);
    const Handle context = mBox.Context();
    mDrawing.DrawText(context, caption, pressed ? Offset(mTextArea, 1) : mTextArea, mAlignment | mFormat);
    mBox.Refresh();
}

void PicBtnDrawing::Frame() const {
    mDrawing.FrameRect(mBox.Context(), mClientArea, mFrameBrush);
    mBox.Refresh();
}

}  // namespace kwo::controls
