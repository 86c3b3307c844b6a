#include "frame/error.h"

#include <array>
#include <utility>
#include <vector>

#include "frame/kept_last_error.h"

namespace kwo::frame {

namespace {

constexpr TextView kAutomationError = u"automation error";
constexpr TextView kSupportSearch = u"https://support.microsoft.com/search";
// Limits the memory of the host that errors take which are attached again and again.
constexpr std::size_t kLongestSavedText = 8'192;

constexpr std::int32_t kBufferTooSmall = 122;
constexpr std::int32_t kNoRootDirectory = 144;
constexpr std::int32_t kExtendedNetworkError = 1208;
constexpr std::int32_t kFirstInternetError = 12000;
constexpr std::int32_t kExtendedInternetError = 12003;
constexpr std::int32_t kLastInternetError = 12999;

constexpr std::int32_t kApplicationErrorMessage = 1900;
constexpr std::int32_t kNoRootDirectoryHintMessage = 1901;

std::int32_t Negated(std::int32_t code) {
    return static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(code));
}

std::int32_t Absolute(std::int32_t code) {
    return code < 0 ? Negated(code) : code;
}

bool Contains(TextView text, TextView part) {
    return text.find(part) != TextView::npos;
}

/// `line` under `text`, or alone when there is no text yet.
void AddLine(Text& text, TextView line) {
    if (!text.empty()) text += kCrLf;
    text += line;
}

void AttachSentence(Text& text, TextView sentence) {
    if (text.empty()) {
        text = sentence;
        return;
    }
    if (sentence.empty() || text.size() > kLongestSavedText) return;
    if (text.ends_with(u'.')) {
        text += u' ';
    } else if (!text.ends_with(kCrLf) && !text.ends_with(u' ')) {
        text += u". ";
    }
    text += sentence;
}

void AttachSource(Text& sources, TextView source) {
    if (source.empty() || Contains(sources, source) || sources.size() > kLongestSavedText) return;
    if (!sources.empty()) sources += u';';
    sources += source;
}

}  // namespace

void MKWOError::KWO_SaveError(const ComponentError& current, const SaveErrorRequest& request) {
    std::int32_t number = request.errNumber != 0 ? request.errNumber : current.number;
    Text description = current.description;
    if (!request.text.empty() && !Contains(description, request.text)) AddLine(description, request.text);
    if (number != 0 && AsciiLower(description) == kAutomationError) AddLine(description, KWO_SystemErrorText(number));

    std::int32_t platformCode = 0;
    if (request.platformCode != SaveErrorRequest::kNoPlatformCode) {
        platformCode = Absolute(request.platformCode);
        mSystem.SetLast(platformCode);
        if (number == 0 && platformCode != 0) {
            number = Negated(platformCode);
            const Text text = KWO_SystemErrorText(platformCode);
            if (!Contains(description, text)) AddLine(description, text);
        }
    }
    if (number != 0 && description.empty()) description = KWO_SystemErrorText(Negated(number));

    // If memory runs out, the saved error stays as it was.
    ComponentError saved = mSaved;
    if (request.replace || saved.number == 0) saved.number = number;
    if (request.replace) {
        saved.description = description;
        saved.source = RoutineOr(request.source);
    } else {
        AttachSentence(saved.description, description);
        AttachSource(saved.source, RoutineOr(request.source));
    }
    if (saved.helpFile.empty()) saved.helpFile = current.helpFile;
    if (saved.helpContext == 0) saved.helpContext = current.helpContext;
    mSaved = std::move(saved);
    if (request.replace || mLastPlatformCode == 0) mLastPlatformCode = platformCode;

    // A trace that cannot be written saves an error of its own.
    const ComponentError raised = request.raiseNow ? mSaved : ComponentError();
    if (request.writeTrace && mSaved.number != 0 && mTrace.IsRecording()) {
        const bool elsewhere = mSaved.source != mTrace.KWO_CurrentRoutine();
        // Intended: three values even if the template has two places; the source then follows the text.
        const std::array values = {Decimal(mSaved.number), mSaved.description, mSaved.source};
        mTrace.KWO_TraceWrite(
            KWO_FillTemplate(elsewhere ? u"Attached error #%1: %2; Source=%3" : u"Attached error #%1: %2", values),
            true, true);
    }
    if (request.raiseNow) throw raised;
}

void MKWOError::KWO_RaiseSavedError() {
    if (mSaved.number == 0) mSaved.number = kNoErrorSaved;
    // A trace that cannot be written saves an error of its own.
    const ComponentError raised = mSaved;
    if (mTrace.IsRecording()) {
        const bool elsewhere = mSaved.source != mTrace.KWO_CurrentRoutine();
        std::vector values = {Decimal(mSaved.number), mSaved.description};
        if (elsewhere) values.push_back(mSaved.source);
        mTrace.KWO_TraceWrite(
            KWO_FillTemplate(elsewhere ? u"Raising error #|: |; Source=|" : u"Raising error #|: |", values), true,
            true);
    }
    throw raised;
}

void MKWOError::KWO_RaiseError(std::int32_t code, TextView source, TextView text1, TextView text2,
                               bool raiseIfNoError) {
    constexpr std::int32_t kCodeBits = 0xFFFF;

    Text raisedSource = RoutineOr(source);
    if (raisedSource.empty()) raisedSource = mHost.ExecutableName();

    std::int32_t platformCode = Absolute(code) & kCodeBits;
    if (code == 0) {
        platformCode = mSystem.Last();
        mLastPlatformCode = platformCode;
    }
    Text description = KWO_SystemErrorText(platformCode);
    if (platformCode == 0 && !raiseIfNoError) return;

    const std::int32_t number = platformCode == 0 ? kObjectError : Negated(platformCode);
    if (!text1.empty()) description = Trim(Text(text1) + u" " + description);
    if (!text2.empty()) description = Trim(Text(text2) + u" " + description);
    if (description.empty()) description = u"Unknown error.";

    if (mTrace.IsRecording()) {
        const bool elsewhere = raisedSource != mTrace.KWO_CurrentRoutine();
        const std::array values = {Decimal(number), description, raisedSource};
        // Intended: no blank after the colon, unlike the line of an error that is raised again. If the template has no
        // place for the source, it follows the text.
        mTrace.KWO_TraceWrite(
            KWO_FillTemplate(elsewhere ? u"Raising error #|:|; Source=|" : u"Raising error #|:|", values), true, true);
    }
    platform::Raise(number, raisedSource, description);
}

Text MKWOError::KWO_SystemErrorText(std::int32_t code) {
    if (code == 0) return {};
    const KeptLastError kept(mSystem);
    Text text = Trim(ReplaceAll(KWO_CutAtNul(PlatformText(code)), kCrLf, u" "));
    if (code == kNoRootDirectory) {
        text += kCrLf;
        text += Message(kNoRootDirectoryHintMessage,
                        u"Please refer to Microsoft Knowledge Base Articles Q167871, Q160843, Q176445 at " +
                            Text(kSupportSearch) + u".");
    }
    return text;
}

void MKWOError::KWO_AppError(const ComponentError& current, TextView text, std::int16_t style, bool ideOnly,
                             bool attachError) {
    constexpr std::int16_t kStopIcon = 16;

    if (ideOnly && mIdentity.KWO_IsCompiled()) return;
    if (attachError) KWO_SaveError(current, {.text = text});
    if (style != 0 && style != 16 && style != 48 && style != 64) style = kStopIcon;

    Text message = Message(kApplicationErrorMessage, u"An internal application error has occurred.");
    message += kCrLf;
    message += kCrLf;
    const auto addLine = [&message](const Text& line) {
        message += line;
        message += kCrLf;
    };
    if (!mSaved.source.empty()) addLine(u"Error source: " + mSaved.source);
    if (mSaved.number != 0) addLine(u"Err number:" + Decimal(mSaved.number));
    if (!mSaved.description.empty()) addLine(mSaved.description);
    mTrace.KWO_TraceWrite(message, true, true);

    const Text title = mHost.ProductName() + u" Application Error: " + mHost.ExecutableName();
    mBoxes.KWOMsgBox({.prompt = message, .buttons = style, .title = title});
}

Text MKWOError::Message(std::int32_t number, TextView builtIn, std::span<const Text> values) {
    if (mMessages != nullptr) {
        if (auto text = mMessages->LoadedMessage(number, values)) return *text;
    }
    return KWO_FillTemplate(builtIn, values);
}

Text MKWOError::PlatformText(std::int32_t code) {
    if (code == kExtendedInternetError) {
        auto response = mSystem.LastInternetResponse(0);
        if (!response.succeeded && mSystem.Last() == kBufferTooSmall) {
            response = mSystem.LastInternetResponse(response.length + 1);
        }
        return response.succeeded ? response.text : Text();
    }
    if (code >= kFirstInternetError && code <= kLastInternetError) return mSystem.ModuleText(u"wininet.dll", code);
    if (code == kExtendedNetworkError) {
        const auto error = mSystem.LastNetworkError();
        return KWO_CutAtNul(error.text) + u" " + KWO_CutAtNul(error.provider);
    }
    return mSystem.SystemText(code);
}

Text MKWOError::RoutineOr(TextView source) const {
    return source.empty() ? mTrace.KWO_CurrentRoutine() : Text(source);
}

}  // namespace kwo::frame
