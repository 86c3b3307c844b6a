#include "contract_test.h"

namespace kwo::contract {
namespace {

using platform::Point;
using platform::Rect;

class DrawingContract : public ContractTest {
protected:
    platform::Drawing& drawing = platform().drawing;
    platform::ScreenDrawing& screen = platform().screenDrawing;
};

TEST_F(DrawingContract, TheClientAreaOfAWindowBeginsAtZero) {
    Rect area = {1, 2, 3, 4};
    drawing.ClientRect(outside().MakeWindow(u"area"), area);
    EXPECT_EQ(area.left, 0);
    EXPECT_EQ(area.top, 0);
    EXPECT_GT(area.right, 100);
    EXPECT_GT(area.bottom, 20);
}

TEST_F(DrawingContract, WhatIsNoWindowLeavesTheAreaAlone) {
    Rect area = {1, 2, 3, 4};
    drawing.ClientRect(123'456, area);
    EXPECT_EQ(area, (Rect{1, 2, 3, 4}));
    Point point = {5, 6};
    screen.ClientToScreen(123'456, point);
    EXPECT_EQ(point, (Point{5, 6}));
}

TEST_F(DrawingContract, DrawingOnNothingIsHarmless) {
    const Rect area = {0, 0, 10, 10};
    drawing.DrawEdge(0, area, 5, 15);
    drawing.DrawFrameControl(0, area, 3, 2);
    drawing.DrawText(0, u"text", area, 0x8025);
    drawing.DrawText(0, u"", area, 0x8025);
    drawing.DrawFocusRect(0, area);
    drawing.FrameRect(0, area, drawing.StockObject(4));
    screen.MoveTo(0, {1, 2});
    screen.LineTo(0, {3, 4});
}

TEST_F(DrawingContract, StockObjectsAreThereAndDiffer) {
    constexpr std::int32_t kBlackBrush = 4;
    constexpr std::int32_t kNullBrush = 5;
    EXPECT_NE(drawing.StockObject(kBlackBrush), 0);
    EXPECT_NE(screen.StockObject(kNullBrush), 0);
    EXPECT_NE(drawing.StockObject(kBlackBrush), screen.StockObject(kNullBrush));
}

TEST_F(DrawingContract, AClientPointIsMovedToItsPlaceOnTheScreen) {
    const Handle window = outside().MakeWindow(u"place");
    Point first = {0, 0};
    Point second = {7, 9};
    screen.ClientToScreen(window, first);
    screen.ClientToScreen(window, second);
    EXPECT_GE(first.x, 10);
    EXPECT_GE(first.y, 10);
    EXPECT_EQ(second, (Point{first.x + 7, first.y + 9}));
}

TEST_F(DrawingContract, TheScreensContextGivesBackWhatWasSelected) {
    constexpr std::int32_t kNot = 6;
    constexpr std::int32_t kCopyPen = 13;
    const Handle context = screen.CreateDisplayContext();
    const Handle pen = screen.CreatePen(6, 4, 0x80000003);
    ASSERT_NE(context, 0);
    ASSERT_NE(pen, 0);
    EXPECT_EQ(screen.SetRasterOperation(context, kNot), kCopyPen);
    EXPECT_EQ(screen.SetRasterOperation(context, kCopyPen), kNot);
    const Handle firstPen = screen.SelectObject(context, pen);
    const Handle firstBrush = screen.SelectObject(context, screen.StockObject(5));
    EXPECT_NE(firstPen, 0);
    EXPECT_NE(firstBrush, 0);
    EXPECT_EQ(screen.SelectObject(context, firstPen), pen);
    EXPECT_EQ(screen.SelectObject(context, firstBrush), screen.StockObject(5));
    screen.DeleteObject(pen);
    screen.DeleteContext(context);
}

TEST_F(DrawingContract, ALineBeginsWhereTheLastOneEnds) {
    constexpr std::int32_t kNop = 11;
    const Handle context = screen.CreateDisplayContext();
    const Handle other = screen.CreateDisplayContext();
    // The lines change nothing on the screen.
    screen.SetRasterOperation(context, kNop);
    EXPECT_EQ(outside().NextLineBegins(context), (Point{0, 0}));
    screen.MoveTo(context, {40, 30});
    EXPECT_EQ(outside().NextLineBegins(context), (Point{40, 30}));
    screen.LineTo(context, {60, 35});
    EXPECT_EQ(outside().NextLineBegins(context), (Point{60, 35}));
    screen.LineTo(context, {-10, 7});
    EXPECT_EQ(outside().NextLineBegins(context), (Point{-10, 7}));
    EXPECT_EQ(outside().NextLineBegins(other), (Point{0, 0}));
    screen.DeleteContext(other);
    screen.DeleteContext(context);
}

}  // namespace
}  // namespace kwo::contract
