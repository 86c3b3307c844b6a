#include "controls/pic_btn.h"

#include <utility>

#include "controls/pixels.h"
#include "frame/text_routines.h"
#include "platform/component_error.h"
#include "platform/drawing.h"
#include "platform/keyboard.h"
#include "platform/message_loop.h"

namespace kwo::controls {

namespace {

using platform::ComponentError;
using platform::Drawing;
using platform::Key;
using platform::Rect;

constexpr std::uint32_t kLeft = 0;
constexpr std::uint32_t kCenter = 1;
constexpr std::uint32_t kRight = 2;
constexpr std::uint32_t kVCenter = 0x4;
constexpr std::uint32_t kWordBreak = 0x10;
constexpr std::uint32_t kSingleLine = 0x20;
constexpr std::uint32_t kEndEllipsis = 0x8000;
constexpr std::int32_t kBlackBrush = 4;
constexpr std::int16_t kLeftButton = 1;
/// Stands for the access key among the key codes.
constexpr std::int16_t kAccessKey = -1;

/// Runs a member's body; what it raises goes on under the member's name, with a description of its own choice.
template <class Body, class Describe>
void Trapped(TextView source, Body&& body, Describe&& describe) {
    try {
        body();
    } catch (ComponentError& error) {
        error.source = source;
        describe(error.description);
        throw;
    }
}

template <class Body>
void Trapped(TextView source, Body&& body) {
    Trapped(source, std::forward<Body>(body), [](Text&) {});
}

/// A flag that is up for the length of a scope.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) : mFlag(flag) { mFlag = true; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;
    ~ScopedFlag() { mFlag = false; }

private:
    bool& mFlag;
};

Rect Inset(const Rect& area, std::int32_t by) {
    return {Checked(std::int64_t{area.left} + by), Checked(std::int64_t{area.top} + by),
            Checked(std::int64_t{area.right} - by), Checked(std::int64_t{area.bottom} - by)};
}

Rect Offset(const Rect& area, std::int32_t by) {
    return {area.left + by, area.top + by, area.right + by, area.bottom + by};
}

}  // namespace

KWOPicBtn::KWOPicBtn(component::Component& component)
    : mComponent(component),
      mBox(component.platform),
      mFormat(kVCenter | kWordBreak | kSingleLine | kEndEllipsis),
      mAlignment(kCenter),
      mFrameBrush(component.platform.drawing.StockObject(kBlackBrush)) {
    mComponent.SetProgramName();
    const TwipsPerPixel twips = TwipsPerPixel::Of(component.platform.screen);
    // All buttons share one pair; the newest button measures it again.
    mComponent.buttonScale = {twips.x, twips.y};
}

void KWOPicBtn::Create(const HostObjectRef& pictureBox, TextView caption) {
    // Intended: there is no result, also of a success.
    Trapped(u"KWOPicBtn.Create", [&] { Open(pictureBox, caption); });
}

void KWOPicBtn::Open(const HostObjectRef& pictureBox, TextView caption) {
    if (!IsPictureBox(pictureBox)) return;
    mBox.Assign(pictureBox);
    mForm = ObjectProperty(*pictureBox, u"Parent");
    SetCaption(caption);
    mComponent.platform.drawing.ClientRect(mBox.Window(), mClientArea);
    constexpr std::int32_t kEdge = 2;
    mTextArea = Inset(mClientArea, kEdge);
    DrawButton(false, false);
}

void KWOPicBtn::SetCaption(TextView caption) {
    mCaption = caption;
    mAccessKey.clear();
    const Text trimmed = frame::Trim(caption);
    const std::size_t marker = trimmed.find(u'&');
    if (marker == Text::npos || marker + 1 == trimmed.size()) return;
    // Intended: the place is that in the trimmed text, the letter that of the untrimmed one.
    mAccessKey = mComponent.platform.conversions.ToUpper(mCaption[marker + 1]);
}

std::int16_t KWOPicBtn::TextAlignment() const {
    if (mAlignment == kLeft) return 3;
    return mAlignment == kRight ? 4 : 2;
}

void KWOPicBtn::SetTextAlignment(std::int16_t alignment) {
    mAlignment = alignment == 3 ? kLeft : alignment == 4 ? kRight : kCenter;
}

bool KWOPicBtn::MultiLine() const {
    return (mFormat & kWordBreak) != 0;
}

void KWOPicBtn::SetMultiLine(bool multiLine) {
    mFormat = multiLine ? mFormat | kWordBreak : mFormat & ~kWordBreak;
}

void KWOPicBtn::DrawButton(bool pressed, bool framed) {
    constexpr std::uint32_t kAllSides = 15;
    Trapped(u"KWOPicBtn.DrawButton", [&] {
        Drawing& drawing = mComponent.platform.drawing;
        mBox.Clear();
        drawing.DrawEdge(mBox.Context(), mClientArea, pressed ? Drawing::kEdgeSunken : Drawing::kEdgeRaised, kAllSides);
        if (framed) drawing.FrameRect(mBox.Context(), mClientArea, mFrameBrush);
        const Handle context = mBox.Context();
        drawing.DrawText(context, mCaption, pressed ? Offset(mTextArea, 1) : mTextArea, mAlignment | mFormat);
        mBox.Refresh();
    });
}

bool KWOPicBtn::IsInside(float x, float y) const {
    const auto& scale = mComponent.buttonScale;
    const platform::Point point = {Rounded<std::int32_t>(double{std::nearbyint(x)} / scale.twipsPerPixelX),
                                   Rounded<std::int32_t>(double{std::nearbyint(y)} / scale.twipsPerPixelY)};
    return mClientArea.Contains(point);
}

void KWOPicBtn::MouseDown(std::int16_t button, float x, float y) {
    Trapped(u"KWOPicBtn.MouseDown", [&] {
        mLastButton = button;
        if (button != kLeftButton) return;
        mLastX = x;
        mLastY = y;
        if (!IsInside(x, y)) return;
        DrawButton(true, true);
        mButtonDown = true;
        mShownPressed = true;
        mNotifying = false;
    });
}

void KWOPicBtn::MouseMove(float x, float y) {
    Trapped(u"KWOPicBtn.MouseMove", [&] {
        // A button that is released stays so, although it counts as down until the procedure of its click is back.
        if (mButtonDown && !mNotifying) {
            const bool isInside = IsInside(x, y);
            if (isInside != mShownPressed) {
                DrawButton(isInside, true);
                mShownPressed = isInside;
            }
        }
        // Movements that arrive during the click complete nothing any more.
        if (mDblClickPending && !mNotifying) {
            MouseUp(x, y);
            mDblClickPending = false;
        }
    });
}

void KWOPicBtn::MouseUp(float x, float y) {
    Text step;
    Trapped(
        u"KWOPicBtn.MouseUp", [&] { Release(x, y, step); }, [&](Text& description) { description += step; });
}

void KWOPicBtn::Release(float x, float y, Text& step) {
    step = StepText(1923);
    mBox.Clear();
    step = StepText(1924);
    DrawButton(false, true);
    step = StepText(1925);
    mShownPressed = false;
    step = StepText(1926);
    if (!mButtonDown) return;
    step = StepText(1927);
    if (IsInside(x, y)) {
        step = StepText(1928);
        const ScopedFlag notifies(mNotifying);
        NotifyClick();
    }
    step = StepText(1926);
    mButtonDown = false;
}

void KWOPicBtn::NotifyClick() {
    if (mForm == nullptr) platform::RaiseRuntime(platform::RuntimeError::NoObjectSet);
    platform::Argument arguments[] = {{mBox.Object()}};
    mForm->Notify(u"OnButtonClick", arguments);
    auto* const box = std::get_if<HostObjectRef>(&arguments[0].value);
    if (box == nullptr) platform::RaiseRuntime(platform::RuntimeError::ObjectRequired);
    mBox.Assign(*box);
}

Text KWOPicBtn::StepText(std::int32_t message) {
    try {
        mComponent.messages.KWOInitialize();
    } catch (const ComponentError&) {
        // A button works without the texts of its steps.
    }
    return u"\r\n" + mComponent.messages.KWO_GetMsg(message);
}

void KWOPicBtn::DblClick() {
    Trapped(u"KWOPicBtn.DblClick", [&] {
        MouseDown(mLastButton, mLastX, mLastY);
        mDblClickPending = true;
    });
}

void KWOPicBtn::GotFocus() {
    Trapped(u"KWOPicBtn.GotFocus", [&] {
        mComponent.platform.drawing.FrameRect(mBox.Context(), mClientArea, mFrameBrush);
        mBox.Refresh();
    });
}

void KWOPicBtn::LostFocus() {
    Trapped(u"KWOPicBtn.LostFocus", [&] { DrawButton(false, false); });
}

void KWOPicBtn::Resize() {
    Trapped(u"KWOPicBtn.Resize", [&] { Open(HostObjectRef(mBox.Object()), Text(mCaption)); });
}

void KWOPicBtn::KeyDown(std::int16_t& keyCode) {
    switch (keyCode) {
        case Key::kEnter:
            keyCode = 0;
            Click();
            break;
        case Key::kSpace:
        case kAccessKey:
            Click();
            break;
        case Key::kLeft:
        case Key::kUp:
            keyCode = 0;
            mComponent.platform.keyboard.SendTab(true);
            break;
        case Key::kRight:
        case Key::kDown:
            keyCode = 0;
            mComponent.platform.keyboard.SendTab(false);
            break;
        default:
            break;
    }
}

/// Key presses that arrive while a click is shown or its procedure runs start none: a held key would pile them up.
void KWOPicBtn::Click() {
    // A place inside every button that has an inside.
    constexpr float kPlace = 1;
    constexpr std::int32_t kShownMs = 100;
    if (mKeyClickRuns) return;
    const ScopedFlag runs(mKeyClickRuns);
    MouseDown(kLeftButton, kPlace, kPlace);
    mComponent.platform.messages.ProcessPending();
    mComponent.wait.KWO_Wait(kShownMs, true);
    MouseUp(kPlace, kPlace);
}

bool KWOPicBtn::Form_KeyDown(std::int16_t& keyCode, std::int16_t& shift) {
    constexpr std::int16_t kAltAlone = 4;
    if (shift != kAltAlone || mAccessKey.empty() || keyCode != static_cast<std::int16_t>(mAccessKey.front())) {
        return false;
    }
    if (mForm == nullptr) platform::RaiseRuntime(platform::RuntimeError::NoObjectSet);
    const HostObjectRef active = ObjectProperty(*mForm, u"ActiveControl");
    if (active == nullptr) platform::RaiseRuntime(platform::RuntimeError::NoObjectSet);
    if (mComponent.platform.conversions.To32Bits(active->Get(u"hWnd")) != mBox.Window()) mBox.SetFocus();
    std::int16_t click = kAccessKey;
    KeyDown(click);
    keyCode = 0;
    shift = 0;
    return true;
}

}  // namespace kwo::controls
