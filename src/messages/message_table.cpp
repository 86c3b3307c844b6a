#include "messages/message_table.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/component_error.h"
#include "platform/component_factory.h"
#include "platform/conversions.h"
#include "platform/host_application.h"
#include "platform/host_errors.h"

namespace kwo::messages {

namespace {

using frame::AsciiLower;
using platform::HostObject;
using platform::HostObjectRef;
using platform::Int16Array;
using platform::RuntimeError;
using platform::TextArray;
using platform::Try;
using platform::Variant;

constexpr TextView kUndefined = u"Undefined Message";
constexpr TextView kFileName = u"\\KWOInit.nls";
constexpr TextView kNextRelease = u"\\..\\nextrelease\\KWOInit.nls";
constexpr TextView kLastResort = u"H:\\Corvath\\nextrelease\\KWOInit.nls";

/// No real file comes near this number; a companion that reports more is broken.
constexpr std::int64_t kMostMessages = 16'000'000;

/// Programs that read the messages of another one.
struct Alias {
    TextView folded;
    TextView counterpart;
};
constexpr Alias kAliases[] = {{u"belloc", u"Daxter"}, {u"belwin", u"Daxwin"}};

std::shared_ptr<TextArray> EmptyTexts(std::int32_t first, std::int32_t last) {
    const std::int64_t count = std::int64_t{last} - first + 1;
    if (count < 1) platform::RaiseRuntime(RuntimeError::SubscriptOutOfRange);
    if (count > kMostMessages) platform::RaiseRuntime(RuntimeError::Overflow);
    auto texts = std::make_shared<TextArray>();
    texts->lowerBound = first;
    texts->items.resize(static_cast<std::size_t>(count));
    return texts;
}

std::shared_ptr<const TextArray> TextsIn(const Variant& value) {
    if (const auto* const foreign = std::get_if<platform::ForeignRef>(&value)) {
        if (auto texts = std::dynamic_pointer_cast<const TextArray>(*foreign)) return texts;
    }
    platform::RaiseRuntime(RuntimeError::TypeMismatch);
}

/// Fills the markers from left to right. Inserted text is not searched again. "%10" is "%1" followed by a zero.
Text Filled(TextView text, std::span<const Text> values) {
    Text filled;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t number = text[at] == u'%' ? 1 : values.size() + 1;
        Text marker;
        for (; number <= values.size(); ++number) {
            marker = u"%" + frame::Decimal(static_cast<std::int64_t>(number));
            if (text.compare(at, marker.size(), marker) == 0) break;
        }
        if (number <= values.size()) {
            filled += values[number - 1];
            at += marker.size();
        } else {
            filled += text[at++];
        }
    }
    return filled;
}

}  // namespace

MessageTable::MessageTable(const platform::Platform& services, frame::HostIdentity& identity,
                           frame::MKWORoutines& routines, MKWOLocale& locale, frame::ApiResult& apiResult,
                           Text& programName)
    : mHost(services.host),
      mComponents(services.components),
      mConversions(services.conversions),
      mIdentity(identity),
      mRoutines(routines),
      mLocale(locale),
      mApiResult(apiResult),
      mProgramName(programName) {}

void MessageTable::KWOInitialize() {
    if (mInitialised) return;
    // A button asks for a text at every step of a release. A file that cannot be used must not be read each time.
    if (mFailure) throw platform::ComponentError(*mFailure);
    mLocale.KWOLocaleInit();
    if (mMsgFilePath.empty()) mMsgFilePath = DefaultFilePath();
    ChooseProgramName();
    try {
        LoadByCompanion();
    } catch (const platform::ComponentError& error) {
        mFailure = error;
        throw;
    }
    mInitialised = true;
}

void MessageTable::LoadByCompanion() {
    const HostObjectRef companion = mComponents.Create(u"KWOInit.KWOInitialize");
    mLoaded = Load(*companion);
}

Text MessageTable::DefaultFilePath() {
    Text beside = mHost.Folder() + Text(kFileName);
    // Intended: inside the development environment the last place is used without a check.
    if (mIdentity.KWO_IsCompiled() || IsFile(beside)) return beside;
    const Text next = mHost.Folder() + Text(kNextRelease);
    return IsFile(next) ? next : Text(kLastResort);
}

bool MessageTable::IsFile(const Text& path) {
    std::int32_t attributes = 0;
    return mConversions.ToBoolean(mRoutines.KWO_PathExists(path, false, attributes, false));
}

void MessageTable::ChooseProgramName() {
    // The characters that the environment puts before the name of a program under development.
    constexpr std::size_t kPrefix = 2;
    if (mProgramName.empty()) {
        const Text name = mHost.ExecutableName();
        mProgramName = mIdentity.KWO_IsCompiled() ? name : name.substr(std::min(kPrefix, name.size()));
    }
    for (const Alias& alias : kAliases) {
        if (AsciiLower(mProgramName) == alias.folded) mProgramName = alias.counterpart;
    }
}

bool MessageTable::Load(HostObject& companion) {
    constexpr std::array<TextView, 5> kSizeNames = {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd",
                                                    u"TextArraySize"};
    constexpr std::array<TextView, 3> kLoadNames = {u"Language", u"IdxArray", u"TextArray"};

    std::array<Variant, 5> size = {mProgramName, mMsgFilePath, std::int32_t{0}, std::int32_t{0}, std::int32_t{0}};
    const bool found = mConversions.ToBoolean(companion.CallNamed(u"KWO_MsgTableSize", kSizeNames, size));
    constexpr std::int32_t kTrue = -1;
    mApiResult.last = found ? kTrue : 0;
    if (!found) return false;

    auto index = std::make_shared<Int16Array>();
    index->lowerBound = 1;
    index->items.resize(1);
    const auto texts = EmptyTexts(mConversions.ToInt32(size[2]), mConversions.ToInt32(size[3]));
    std::array<Variant, 3> load = {mLocale.Record().language, platform::ForeignRef(index), platform::ForeignRef(texts)};
    companion.CallNamed(u"KWO_MsgTableLoad", kLoadNames, load);
    mTextArray = TextsIn(load[2]);
    return true;
}

TextView MessageTable::Known(std::int32_t msgNo) const {
    if (mTextArray == nullptr) return {};
    const std::int64_t place = std::int64_t{msgNo} - mTextArray->lowerBound;
    const auto& items = mTextArray->items;
    if (place < 0 || place >= static_cast<std::int64_t>(items.size())) return {};
    return items[static_cast<std::size_t>(place)];
}

TextView MessageTable::TextOf(std::int32_t msgNo) const {
    const TextView text = Known(msgNo);
    return text.empty() ? kUndefined : text;
}

Text MessageTable::KWO_GetMsg(std::int32_t msgNo, std::span<const Variant> args) const {
    std::vector<Text> values;
    for (const Variant& arg : args) {
        const auto* const error = std::get_if<platform::ErrorValue>(&arg);
        values.push_back(error != nullptr ? frame::Decimal(error->number) : mConversions.ToText(arg));
    }
    return Filled(TextOf(msgNo), values);
}

Text MessageTable::TextOrBuiltIn(std::int32_t msgNo, TextView builtIn, std::span<const Text> values) {
    // The built-in text does without a table.
    Try([&] { KWOInitialize(); });
    const TextView known = Known(msgNo);
    return Filled(known.empty() ? builtIn : known, values);
}

std::optional<Text> MessageTable::LoadedMessage(std::int32_t number, std::span<const Text> values) {
    if (!mLoaded) return std::nullopt;
    return Filled(TextOf(number), values);
}

}  // namespace kwo::messages
