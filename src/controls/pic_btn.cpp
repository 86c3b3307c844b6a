#include "controls/pic_btn.h"

#include <cmath>
#include <utility>

#include "controls/mouse_button.h"
#include "frame/text_routines.h"
#include "platform/component_error.h"
#include "platform/host_errors.h"
#include "platform/keyboard.h"
#include "platform/message_loop.h"
#include "platform/twips.h"

namespace kwo::controls {

namespace {

using platform::ComponentError;
using platform::Key;
using platform::Try;

/// Stands for the access key among the key codes.
constexpr std::int16_t kAccessKey = -1;

/// The message that names what a button does.
constexpr std::int32_t kPress = 1931;

/// The steps of a release, by the messages that name them.
struct ReleaseStep {
    static constexpr std::int32_t kClear = 1923;
    static constexpr std::int32_t kDraw = 1924;
    static constexpr std::int32_t kShowReleased = 1925;
    static constexpr std::int32_t kEndPress = 1926;
    static constexpr std::int32_t kFindPointer = 1927;
    static constexpr std::int32_t kNotify = 1928;
};

/// Runs the body of a member. An error is raised again with the member as its source and with the description that
/// `describe` makes.
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

/// The caption as it is shown: "&&" stands for "&", any other "&" marks the letter behind it.
Text WithoutMarks(TextView caption) {
    Text shown;
    for (std::size_t at = 0; at < caption.size(); ++at) {
        if (caption[at] == u'&' && ++at == caption.size()) break;
        shown += caption[at];
    }
    return shown;
}

/// Whether there is a key for an access key: the code of other characters is that of another key or of none.
bool IsKey(TextView accessKey) {
    if (accessKey.empty()) return false;
    const char16_t letter = accessKey.front();
    return (letter >= u'A' && letter <= u'Z') || (letter >= u'0' && letter <= u'9');
}

/// A flag that is set while the scope lasts.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) : mFlag(flag) { mFlag = true; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;
    ~ScopedFlag() { mFlag = false; }

private:
    bool& mFlag;
};

}  // namespace

KWOPicBtn::KWOPicBtn(component::Component& component)
    : mComponent(component),
      mBox(component.platform),
      mDrawing(mBox, component.platform.drawing),
      mAnnotation(component) {
    mComponent.SetProgramName();
    // All buttons share one pair of factors; each new button reads them again.
    mComponent.buttonTwips = platform::TwipsPerPixel::Of(component.platform.screen);
}

void KWOPicBtn::Create(const HostObjectRef& pictureBox, TextView caption) {
    // Intended: there is no result, not even for success.
    Trapped(u"KWOPicBtn.Create", [&] {
        if (!IsPictureBox(pictureBox)) return;
        mAnnotation.Release();
        Open(pictureBox, caption);
    });
}

void KWOPicBtn::Open(const HostObjectRef& pictureBox, TextView caption) {
    mBox.Assign(pictureBox);
    const HostObjectRef form = ObjectProperty(*pictureBox, u"Parent");
    // The host may have given this object another box meanwhile, which has its own form.
    if (mBox.Object() == pictureBox) mForm = form;
    SetCaption(caption);
    const Handle window = mDrawing.Measure();
    if (mBox.Object() == pictureBox) mAnnotation.Take(window, Role::PushButton);
    TellCaption();
    DrawButton(false, false);
}

void KWOPicBtn::SetCaption(TextView caption) {
    Text text(caption);
    Text accessKey;
    const Text trimmed = frame::Trim(caption);
    const std::size_t marker = trimmed.find(u'&');
    if (marker != Text::npos && marker + 1 != trimmed.size()) {
        // Intended: the position comes from the trimmed text, the letter from the untrimmed one.
        accessKey = mComponent.platform.conversions.ToUpper(text[marker + 1]);
    }
    // Without memory for all of it, caption and access key stay as they are.
    mCaption.swap(text);
    mAccessKey.swap(accessKey);
    TellCaption();
}

void KWOPicBtn::DrawButton(bool pressed, bool framed) {
    Trapped(u"KWOPicBtn.DrawButton", [&] { mDrawing.Button(mCaption, pressed, framed); });
    mDrawnPressed = pressed;
    TellState();
}

void KWOPicBtn::AnnotateNewBox(const HostObjectRef& before) {
    const HostObjectRef box = mBox.Object();
    if (box != nullptr && box->IsSameAs(platform::Required(before))) return;
    const Handle window = mAnnotation.WindowOf(box);
    // The host may have given this object yet another box meanwhile.
    if (mBox.Object() != box) return;
    mAnnotation.Take(window, Role::PushButton);
    TellCaption();
}

void KWOPicBtn::TellCaption() {
    mAnnotation.Tell([&](Spoken& spoken) {
        spoken.name = WithoutMarks(mCaption);
        spoken.shortcut = IsKey(mAccessKey) ? u"Alt+" + mAccessKey : Text();
        spoken.action = mComponent.messages.TextOrBuiltIn(kPress, u"Press");
        spoken.state = SpokenState();
    });
}

void KWOPicBtn::TellState() {
    mAnnotation.Tell([&](Spoken& spoken) { spoken.state = SpokenState(); });
}

std::int32_t KWOPicBtn::SpokenState() const {
    const bool hasFocus = mFocusWindow != 0 && mFocusWindow == mAnnotation.Window();
    return (mDrawnPressed ? Spoken::kPressed : 0) + (hasFocus ? Spoken::kFocused : 0);
}

bool KWOPicBtn::IsInside(float x, float y) const {
    // The place is rounded to whole twips first: where a pixel has 15 twips, 22.5 of them are in pixel 1.
    return mDrawing.Contains(mComponent.buttonTwips.Pixels(double{std::nearbyint(x)}, double{std::nearbyint(y)}));
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
        // A released button stays raised although it counts as down until the procedure of its click returns.
        if (mButtonDown && !mNotifying) {
            const bool isInside = IsInside(x, y);
            if (isInside != mShownPressed) {
                DrawButton(isInside, true);
                mShownPressed = isInside;
            }
        }
        // Movements during the click complete nothing.
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
    step = StepText(ReleaseStep::kClear);
    mBox.Clear();
    step = StepText(ReleaseStep::kDraw);
    DrawButton(false, true);
    step = StepText(ReleaseStep::kShowReleased);
    mShownPressed = false;
    step = StepText(ReleaseStep::kEndPress);
    if (!mButtonDown) return;
    step = StepText(ReleaseStep::kFindPointer);
    if (IsInside(x, y)) {
        step = StepText(ReleaseStep::kNotify);
        const ScopedFlag notifies(mNotifying);
        NotifyClick();
    }
    step = StepText(ReleaseStep::kEndPress);
    mButtonDown = false;
}

void KWOPicBtn::NotifyClick() {
    const HostObjectRef before = mBox.Object();
    platform::Argument arguments[] = {{before}};
    platform::Required(mForm).Notify(u"OnButtonClick", arguments);
    auto* const box = std::get_if<HostObjectRef>(&arguments[0].value);
    if (box == nullptr) platform::RaiseRuntime(platform::RuntimeError::ObjectRequired);
    mBox.Assign(*box);
    AnnotateNewBox(before);
}

Text KWOPicBtn::StepText(std::int32_t message) {
    // The button works without the texts of its steps.
    Try([&] { mComponent.messages.KWOInitialize(); });
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
        mFocusWindow = mAnnotation.Window();
        TellState();
        mDrawing.Frame();
    });
}

void KWOPicBtn::LostFocus() {
    Trapped(u"KWOPicBtn.LostFocus", [&] {
        mFocusWindow = 0;
        mDrawnPressed = false;
        TellState();
        DrawButton(false, false);
    });
}

void KWOPicBtn::Resize() {
    Trapped(u"KWOPicBtn.Resize", [&] {
        const HostObjectRef box = mBox.Object();
        const Text caption = mCaption;
        if (IsPictureBox(box)) Open(box, caption);
    });
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

/// Keys pressed while a click is shown or its procedure runs start no click: a held key would pile them up.
void KWOPicBtn::Click() {
    // A place on every button that has an area.
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
    const HostObjectRef active = ObjectProperty(platform::Required(mForm), u"ActiveControl");
    if (mComponent.platform.conversions.To32Bits(platform::Required(active).Get(u"hWnd")) != mBox.Window())
        mBox.SetFocus();
    std::int16_t click = kAccessKey;
    KeyDown(click);
    keyCode = 0;
    shift = 0;
    return true;
}

}  // namespace kwo::controls
