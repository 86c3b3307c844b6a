#include "frame/message_box.h"

namespace kwo::frame {

namespace {

using platform::Handle;
using platform::Screen;

constexpr std::int32_t kStopIcon = 16;
constexpr std::int32_t kAnyWarningIcon = 48;
constexpr std::uint32_t kHelpButton = 0x4000;
constexpr std::uint32_t kSetForeground = 0x10000;
constexpr std::int32_t kFlashMs = 750;

// Intended: the exclamation mark (48) has the bit of the stop icon (16), so its entry is an error.
EventType EventTypeOf(std::int32_t buttons) {
    if ((buttons & kStopIcon) != 0) return EventType::Error;
    return (buttons & kAnyWarningIcon) != 0 ? EventType::Warning : EventType::Information;
}

/// Shows the default pointer while a box is shown.
class DefaultPointer {
public:
    explicit DefaultPointer(Screen& screen) : mScreen(screen), mBefore(screen.MousePointer()) {
        mScreen.SetMousePointer(0);
    }
    ~DefaultPointer() { mScreen.SetMousePointer(mBefore); }
    DefaultPointer(const DefaultPointer&) = delete;
    DefaultPointer& operator=(const DefaultPointer&) = delete;

private:
    Screen& mScreen;
    std::intptr_t mBefore;
};

/// Sets another help context on a form while a box is shown. Does nothing without a form.
class BorrowedHelpContext {
public:
    BorrowedHelpContext(Screen& screen, Handle form, std::int32_t context) : mScreen(screen), mForm(form) {
        if (mForm == 0) return;
        mBefore = mScreen.HelpContext(mForm);
        mScreen.SetHelpContext(mForm, context);
    }
    ~BorrowedHelpContext() {
        if (mForm != 0) mScreen.SetHelpContext(mForm, mBefore);
    }
    BorrowedHelpContext(const BorrowedHelpContext&) = delete;
    BorrowedHelpContext& operator=(const BorrowedHelpContext&) = delete;

private:
    Screen& mScreen;
    Handle mForm;
    std::int32_t mBefore = 0;
};

}  // namespace

std::int16_t MessageBoxes::KWOMsgBox(const MessageBoxRequest& request) {
    const TracedRoutine traced(mTrace, u"MKWORoutines.KWOMsgBox");
    if (mUnattended) {
        mEventLog.KWO_LogEvent(request.prompt, static_cast<std::int32_t>(EventTypeOf(request.buttons)), 1);
        return request.defaultResult;
    }

    const DefaultPointer pointer(mScreen);
    const bool hasHelp = request.ownerWindow != 0 && request.helpContext != 0;
    const BorrowedHelpContext helpContext(mScreen, hasHelp ? mScreen.ActiveForm() : 0, request.helpContext);
    const Handle owner = request.ownerWindow != 0 ? request.ownerWindow : mScreen.ActiveForm();
    const Text title = TitleFor(request.title, owner);

    std::uint32_t style = kSetForeground;
    if (hasHelp) style |= kHelpButton;
    if (request.buttons > 0) style |= static_cast<std::uint32_t>(request.buttons);

    if (mDesktop.WindowExists(owner) && mDesktop.IsMinimised(owner)) FlashWhileMinimised(owner);
    mTrace.KWO_TraceWrite(u"MsgBox: " + Text(request.prompt), true, true);
    return static_cast<std::int16_t>(mDesktop.AskUser(owner, request.prompt, title, style));
}

Text MessageBoxes::TitleFor(TextView given, Handle owner) {
    Text title(given);
    if (title.empty() && owner != 0) title = KWO_CutAtNul(mDesktop.WindowText(owner));
    if (title.empty()) title = mHost.Title();
    return title;
}

void MessageBoxes::FlashWhileMinimised(Handle owner) {
    while (mDesktop.IsMinimised(owner)) {
        mDesktop.Flash(owner, true);
        if (!mWait.KWO_Wait(kFlashMs, false)) break;
    }
    mDesktop.Flash(owner, false);
}

}  // namespace kwo::frame
