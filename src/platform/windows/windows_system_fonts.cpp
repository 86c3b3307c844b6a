#include "platform/windows/windows_system_fonts.h"

#include <olectl.h>

#include <cstddef>

#include "com_support/com_ptr.h"
#include "platform/windows/ansi.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/dispatch_object.h"

namespace kwo::platform::windows {

namespace {

// The record as it was before its last member came.
constexpr UINT kRecordSize = offsetof(NONCLIENTMETRICSA, lfMessageFont) + sizeof(LOGFONTA);
static_assert(kRecordSize == 340);

FontRecord RecordOf(const LOGFONTA& font) {
    return {font.lfHeight,    font.lfWeight,    font.lfItalic,
            font.lfUnderline, font.lfStrikeOut, FromBufferUpToZero(font.lfFaceName)};
}

}  // namespace

bool WindowsSystemFonts::QueryNonClient(NonClientFonts& fonts) {
    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = kRecordSize;
    if (!mLastError.After(::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0))) return false;
    fonts = {RecordOf(metrics.lfCaptionFont), RecordOf(metrics.lfSmCaptionFont), RecordOf(metrics.lfMenuFont),
             RecordOf(metrics.lfStatusFont), RecordOf(metrics.lfMessageFont)};
    return true;
}

HostObjectRef WindowsSystemFonts::MakeFont() {
    // Only what a font must have: without a description the system would choose a font itself.
    wchar_t noName[] = L"";
    FONTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = noName;
    description.sWeight = FW_NORMAL;
    description.sCharset = DEFAULT_CHARSET;
    com_support::ComPtr<IDispatch> font;
    const HRESULT code = ::OleCreateFontIndirect(&description, IID_IDispatch, font.OutVoid());
    if (FAILED(code)) RaiseFailure(code);
    auto object = std::make_shared<DispatchObject>(*font);
    object->SetKnownId(u"Name", DISPID_FONT_NAME);
    object->SetKnownId(u"Size", DISPID_FONT_SIZE);
    object->SetKnownId(u"Bold", DISPID_FONT_BOLD);
    object->SetKnownId(u"Italic", DISPID_FONT_ITALIC);
    object->SetKnownId(u"Underline", DISPID_FONT_UNDER);
    object->SetKnownId(u"Strikethrough", DISPID_FONT_STRIKE);
    return object;
}

}  // namespace kwo::platform::windows
