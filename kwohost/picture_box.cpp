#include "picture_box.h"

#include <algorithm>
#include <iterator>

namespace kwohost {

namespace {

constexpr LONG kFilledBox = 38;

SIZE SizeOf(const RECT& area) {
    return {area.right, area.bottom};
}

}  // namespace

PictureBox::PictureBox(ScriptHost& host, Form& form, std::wstring name)
    : PaintedControl(host, form, std::move(name), true) {
    AddScaleMembers();
    AddSettings();
    AddDrawingMembers();
    Describe(L"PictureBox");
}

void PictureBox::AddSettings() {
    AddVariable(
        L"AutoRedraw", [this](Call& call) { call.ReturnTruth(mAutoRedraw); },
        [this](Call& call) { SetAutoRedraw(call.Truth(0)); });
    AddVariable(
        L"BackColor", [this](Call& call) { call.ReturnWhole(mBackColour); },
        [this](Call& call) {
            mBackColour = call.Whole(0);
            Clear();
        });
    AddVariable(
        L"BorderStyle", [this](Call& call) { call.ReturnWhole(mBorderStyle); },
        [this](Call& call) {
            mBorderStyle = call.Whole(0);
            const LONG style = GetWindowLongW(Window(), GWL_STYLE) & ~static_cast<LONG>(WS_BORDER);
            SetWindowLongW(Window(), GWL_STYLE, mBorderStyle ? style | static_cast<LONG>(WS_BORDER) : style);
            Reposition({}, SWP_NOMOVE | SWP_NOSIZE | SWP_FRAMECHANGED);
        });
    AddVariable(
        L"Font", [this](Call& call) { call.ReturnObject(mFont.Object()); },
        [this](Call& call) { mFont.Share(call.Object(0).Get()); });
    AddVariable(
        L"FontTransparent", [this](Call& call) { call.ReturnTruth(mFontTransparent); },
        [this](Call& call) { mFontTransparent = call.Truth(0); });
    AddWhole(L"ForeColor", mForeColour);
    AddWhole(L"FillColor", mFillColour);
    AddWhole(L"FillStyle", mFillStyle);
    AddVariable(
        L"CurrentX", [this](Call& call) { call.ReturnSingle(mCurrentX); },
        [this](Call& call) { mCurrentX = call.Number(0); });
    AddVariable(
        L"CurrentY", [this](Call& call) { call.ReturnSingle(mCurrentY); },
        [this](Call& call) { mCurrentY = call.Number(0); });
}

void PictureBox::AddWhole(const wchar_t* name, LONG& value) {
    AddVariable(
        name, [&value](Call& call) { call.ReturnWhole(value); }, [&value](Call& call) { value = call.Whole(0); });
}

void PictureBox::AddDrawingMembers() {
    AddProperty(L"hDC",
                [this](Call& call) { call.ReturnWhole(static_cast<LONG>(reinterpret_cast<INT_PTR>(Context()))); });
    AddMethod(L"Cls", 0, 0, [this](Call&) { Clear(); });
    AddMethod(L"Refresh", 0, 0, [this](Call&) {
        InvalidateRect(Window(), nullptr, FALSE);
        UpdateWindow(Window());
    });
    AddMethod(L"Line", 6, 6, [this](Call& call) { Line(call); });
    AddMethod(L"TextHeight", 1, 1,
              [this](Call& call) { call.ReturnSingle(ToUnits(SizeOfText(call.Text(0)).cy, OwnScale(), Axis::Y)); });
    AddMethod(L"TextWidth", 1, 1,
              [this](Call& call) { call.ReturnSingle(ToUnits(SizeOfText(call.Text(0)).cx, OwnScale(), Axis::X)); });
    AddMethod(L"Print", 1, 1, [this](Call& call) {
        const std::wstring text = call.Text(0);
        const int top = ToPixels(mCurrentY, OwnScale(), Axis::Y);
        TextOutW(Context(), ToPixels(mCurrentX, OwnScale(), Axis::X), top, text.c_str(), static_cast<int>(text.size()));
        mCurrentX = 0;
        mCurrentY = ToUnits(top + SizeOfText(text).cy, OwnScale(), Axis::Y);
    });
}

HDC PictureBox::Context() {
    const HDC context = mAutoRedraw ? mSurface.Context() : GetDC(Window());
    SelectObject(context, mFont.Handle());
    SetTextColor(context, ToColour(mForeColour));
    SetBkColor(context, ToColour(mBackColour));
    SetBkMode(context, mFontTransparent ? TRANSPARENT : OPAQUE);
    return context;
}

void PictureBox::Clear() {
    const RECT area = ClientArea();
    const HBRUSH brush = CreateSolidBrush(ToColour(mBackColour));
    FillRect(Context(), &area, brush);
    DeleteObject(brush);
    mCurrentX = 0;
    mCurrentY = 0;
    if (mAutoRedraw) InvalidateRect(Window(), nullptr, FALSE);
}

/// From corner to corner. A box has both of them, a line ends before the second one.
void PictureBox::Line(Call& call) {
    const LONG flags = call.Whole(0);
    const auto x = [&](int index) { return ToPixels(call.Number(index), OwnScale(), Axis::X); };
    const auto y = [&](int index) { return ToPixels(call.Number(index), OwnScale(), Axis::Y); };
    const RECT ends = {x(1), y(2), x(3), y(4)};
    const COLORREF colour = ToColour(call.Whole(5));
    const HDC context = Context();
    if (flags == kFilledBox) {
        const RECT area = {std::min(ends.left, ends.right), std::min(ends.top, ends.bottom),
                           std::max(ends.left, ends.right) + 1, std::max(ends.top, ends.bottom) + 1};
        const HBRUSH brush = CreateSolidBrush(colour);
        FillRect(context, &area, brush);
        DeleteObject(brush);
    } else {
        const HPEN pen = CreatePen(PS_SOLID, 1, colour);
        const HGDIOBJ before = SelectObject(context, pen);
        MoveToEx(context, ends.left, ends.top, nullptr);
        LineTo(context, ends.right, ends.bottom);
        SelectObject(context, before);
        DeleteObject(pen);
    }
    if (mAutoRedraw) InvalidateRect(Window(), nullptr, FALSE);
}

SIZE PictureBox::SizeOfText(const std::wstring& text) {
    const HDC context = Context();
    RECT area = {};
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &area, DT_CALCRECT | DT_NOPREFIX);
    TEXTMETRICW metrics;
    GetTextMetricsW(context, &metrics);
    return {area.right, std::max(area.bottom, metrics.tmHeight)};
}

void PictureBox::SetAutoRedraw(bool wanted) {
    if (wanted) {
        mSurface.Resize(SizeOf(ClientArea()), ToColour(mBackColour));
    } else {
        mSurface.Drop();
    }
    mAutoRedraw = wanted;
}

void PictureBox::Paint(HDC context) {
    const RECT area = ClientArea();
    if (mAutoRedraw) {
        BitBlt(context, 0, 0, area.right, area.bottom, mSurface.Context(), 0, 0, SRCCOPY);
        return;
    }
    const HBRUSH brush = CreateSolidBrush(ToColour(mBackColour));
    FillRect(context, &area, brush);
    DeleteObject(brush);
    Fire(L"Paint");
}

void PictureBox::OnResized() {
    if (mAutoRedraw) mSurface.Resize(SizeOf(ClientArea()), ToColour(mBackColour));
    PaintedControl::OnResized();
}

bool PictureBox::IsTabStopByDefault() const {
    constexpr const wchar_t* kEvents[] = {L"GotFocus", L"LostFocus", L"KeyDown", L"KeyPress", L"KeyUp"};
    return std::any_of(std::begin(kEvents), std::end(kEvents), [this](const wchar_t* event) { return Handles(event); });
}

void PictureBox::OnGone() {
    mSurface.Drop();
    PaintedControl::OnGone();
}

}  // namespace kwohost
