#include "frame/routines.h"

namespace kwo::frame {

namespace {

using platform::FileSystem;
using platform::Variant;

constexpr std::int32_t kFileNotFound = 2;
constexpr std::int32_t kInvalidHandle = 6;
constexpr std::int32_t kInvalidHexDigitMessage = 1902;

}  // namespace

Variant MKWORoutines::KWO_PathExists(const Text& path, bool returnError, std::int32_t& attributes, bool raiseErrors) {
    if (path.empty()) {
        mSystem.SetLast(kFileNotFound);
        attributes = FileSystem::kNoAttributes;
    } else {
        attributes = mIdentity.KWO_IsWinNT() ? mFiles.Attributes(path) : mFiles.AttributesAnsi(path);
    }
    if (attributes != FileSystem::kNoAttributes) return (attributes & FileSystem::kFolder) == 0;

    mError.KWO_SaveError({},
                         {.source = u"MKWORoutines.KWO_PathExists", .platformCode = mSystem.Last(), .replace = true});
    if (raiseErrors) mError.KWO_RaiseSavedError();
    if (returnError) return platform::ErrorValue{mError.Saved().number};
    return false;
}

bool MKWORoutines::KWO_CheckAPIResult(std::int32_t result, bool useLastError, TextView source, TextView text) {
    if (result != 0 && result != -1) return true;
    if (useLastError) {
        const std::int32_t last = mSystem.Last();
        mError.KWO_RaiseError(last != 0 ? last : kInvalidHandle, source, text, {}, true);
    }
    return false;
}

std::int32_t MKWORoutines::KWO_HexToLong(TextView text) {
    constexpr TextView kSource = u"MKWORoutines.KWO_HexToLong";
    constexpr TextView kDigits = u"0123456789ABCDEF";
    constexpr std::uint32_t kTopDigit = 0xF0000000;

    std::uint32_t value = 0;
    for (const char16_t c : AsciiUpper(text)) {
        const auto digit = kDigits.find(c);
        if (digit == TextView::npos) {
            const Text reason = mError.Message(kInvalidHexDigitMessage, u"Invalid Hex Digit");
            mError.KWO_SaveError({},
                                 {.errNumber = kInvalidHexDigit, .text = reason, .source = kSource, .replace = true});
            mError.KWO_RaiseSavedError();
        }
        if ((value & kTopDigit) != 0) platform::RaiseRuntime(platform::RuntimeError::Overflow, kSource);
        value = value << 4 | static_cast<std::uint32_t>(digit);
    }
    return static_cast<std::int32_t>(value);
}

}  // namespace kwo::frame
