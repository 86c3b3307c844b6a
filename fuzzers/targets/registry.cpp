// Values of every type, length and content, read by both members: the results are those of the rules, written out here,
// and whatever fails, every key that was opened is closed.

#include "registry/registry.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>

#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/text_codec.h"
#include "target.h"

namespace kwo::registry {
namespace {

using platform::Variant;
using platform::simulated::CodePage;

constexpr Handle kUser = static_cast<Handle>(0x80000001);
constexpr std::int32_t kMoreData = 234;
constexpr std::size_t kLongestValue = 1'024;

struct Stored {
    std::uint32_t type = 0;
    std::string bytes;
};

std::string WithoutTrailingBlanks(std::string bytes) {
    while (!bytes.empty() && bytes.back() == ' ')
        bytes.pop_back();
    return bytes;
}

/// What KWO_RegGetValue makes of a value of at most 1,024 bytes.
Text Expected(const Stored& stored, CodePage page) {
    std::string bytes = stored.bytes;
    if (!bytes.empty() && bytes.back() == '\0') bytes.pop_back();
    bytes = WithoutTrailingBlanks(bytes);
    if (stored.type == 1) return platform::simulated::FromAnsi(bytes, page);
    if (stored.type != 4) return {};
    std::string digits;
    for (std::size_t at = bytes.size(); at > 0; --at) {
        char shown[3];
        std::snprintf(shown, sizeof shown, "%X", static_cast<unsigned>(static_cast<unsigned char>(bytes[at - 1])));
        digits += shown;
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.size() > 8) return {};
    const std::string number =
        digits.empty() ? "0" : std::to_string(static_cast<std::int32_t>(std::stoul(digits, nullptr, 16)));
    return {number.begin(), number.end()};
}

/// What KWO_RegGetValueEx makes of a value for a default of type text.
Text ExpectedText(const Stored& stored, CodePage page) {
    Text text = platform::simulated::FromAnsi(stored.bytes.substr(0, stored.bytes.find('\0')), page);
    while (!text.empty() && text.back() == u' ')
        text.pop_back();
    return text;
}

std::int32_t NumberOf(const std::string& bytes) {
    std::uint32_t number = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at)
        number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])) << 8 * at;
    return static_cast<std::int32_t>(number);
}

class Session {
public:
    explicit Session(fuzz::Input& input) : mInput(input) {
        if (mInput.Flag()) mPage = CodePage::Utf8;
        mDesktop.SetCodePage(mPage);
        mDesktop.registry.PutKey(kUser, u"k");
    }

    void Step() {
        switch (mInput.Below(8)) {
            case 0:
                return Write();
            case 1:
                return Delete();
            case 2:
                return Fail();
            case 3:
                return Change();
            default:
                return Read();
        }
    }

private:
    Stored AnyValue() {
        constexpr std::uint32_t kTypes[] = {1, 4, 0, 2, 3, 5, 6, 7, 11, 0xFFFFFFFF};
        constexpr std::size_t kLengths[] = {0, 1, 3, 4, 5, 259, 260, 261, 520, 521, 1'023, 1'024, 1'025, 3'000};
        Stored value{mInput.Of(kTypes), std::string(mInput.Bytes())};
        if (!mInput.Once(3)) return value;
        const std::size_t length = mInput.Of(kLengths);
        const char fill = static_cast<char>(mInput.Byte());
        value.bytes.resize(length, fill);
        return value;
    }
    void Put(const Stored& value) { mDesktop.registry.PutValue(kUser, u"k", u"v", value.type, value.bytes); }

    void Read() {
        const Stored stored = AnyValue();
        Put(stored);
        Text value = u"before";
        const auto status = mRegistry.KWO_RegGetValue(kUser, u"k", u"v", value);
        if (stored.bytes.size() > kLongestValue) {
            KWO_HOLDS(status == kMoreData && value.empty());
        } else {
            KWO_HOLDS(status == 0 && value == Expected(stored, mPage));
        }
        const Handle key = mDesktop.registry.OpenKey(kUser, u"k", 1).key;
        CheckTexts(key, stored);
        CheckNumbers(key, stored);
        KWO_HOLDS(!mRegistry.KWO_RegGetValueEx(key, u"v", platform::Null{}));
        KWO_HOLDS(!mRegistry.KWO_RegGetValueEx(key, u"none", Text(u"default")));
        KWO_HOLDS(mDesktop.registry.CloseKey(key) == 0);
        KWO_HOLDS(!mRegistry.KWO_RegGetValueEx(key, u"v", std::int32_t{5}));
        KWO_HOLDS(mDesktop.registry.OpenKeys() == 0);
    }
    void CheckTexts(Handle key, const Stored& stored) {
        const Text expected = ExpectedText(stored, mPage);
        KWO_HOLDS(mRegistry.KWO_RegGetValueEx(key, u"v", Text(u"default")) == Variant(expected));
        const auto date = mRegistry.KWO_RegGetValueEx(key, u"v", platform::Date{1});
        const auto parsed =
            expected == u"0" ? std::optional(platform::Date{}) : mDesktop.conversions.ParseDate(expected);
        KWO_HOLDS(date.has_value() == parsed.has_value());
        KWO_HOLDS(!date || *date == Variant(*parsed));
    }
    void CheckNumbers(Handle key, const Stored& stored) {
        const Variant defaults[] = {
            std::int16_t{1}, std::int32_t{1}, 1.0f, 1.0, true, std::uint8_t{1}, platform::Currency::Whole(1)};
        const bool fitsNumber = stored.bytes.size() <= 4;
        const std::int32_t number = fitsNumber ? NumberOf(stored.bytes) : 0;
        for (const Variant& like : defaults) {
            const auto value = mRegistry.KWO_RegGetValueEx(key, u"v", like);
            bool fits = fitsNumber;
            if (std::holds_alternative<std::int16_t>(like)) fits = fits && number == static_cast<std::int16_t>(number);
            if (std::holds_alternative<std::uint8_t>(like)) fits = fits && number == static_cast<std::uint8_t>(number);
            KWO_HOLDS(value.has_value() == fits);
            if (!value) continue;
            KWO_HOLDS(value->index() == like.index());
            if (const auto* const truth = std::get_if<bool>(&*value)) {
                KWO_HOLDS(*truth == (number != 0));
            } else {
                const double single = static_cast<double>(static_cast<float>(number));
                const bool isSingle = std::holds_alternative<float>(like);
                KWO_HOLDS(mDesktop.conversions.ToDouble(*value) == (isSingle ? single : static_cast<double>(number)));
            }
        }
    }
    /// A written text is read as it was, but for what the code page lacks.
    void Write() {
        const Text given = mInput.Text();
        KWO_HOLDS(mRegistry.KWO_RegSetValue(kUser, u"k", u"v", given) == 0);
        const auto* const stored = mDesktop.registry.Find(kUser, u"k", u"v");
        const std::string bytes = platform::simulated::ToAnsi(given.empty() ? Text(u" ") : given, mPage);
        KWO_HOLDS(stored != nullptr && stored->type == 1 && stored->bytes == bytes + '\0');
        KWO_HOLDS(mDesktop.registry.OpenKeys() == 0);
    }
    void Delete() {
        Put(AnyValue());
        KWO_HOLDS(mRegistry.KWO_RegDeleteValue(kUser, u"k", u"v") == 0);
        KWO_HOLDS(mRegistry.KWO_RegDeleteValue(kUser, u"k", u"v") == 2);
        const Handle key = mRegistry.KWO_RegCreateKey(kUser, u"k\\below");
        KWO_HOLDS(key != 0);
        KWO_HOLDS(mRegistry.KWO_RegDeleteKey(kUser, u"k") == 5);
        KWO_HOLDS(mRegistry.KWO_RegDeleteKey(kUser, u"k\\below") == 0);
        mDesktop.registry.CloseKey(key);
        KWO_HOLDS(mDesktop.registry.OpenKeys() == 0);
    }
    /// A call of the system fails: its status is the result, and no key stays open.
    void Fail() {
        constexpr const char* kCalls[] = {"RegOpenKeyEx", "RegQueryValueEx", "RegSetValueEx", "RegCreateKeyEx",
                                          "RegDeleteValue"};
        constexpr std::int32_t kCodes[] = {5, 6, 8, 14, 87, kMoreData, 1'018, -1};
        Put(AnyValue());
        const int call = mInput.Below(5);
        const std::int32_t code = mInput.Of(kCodes);
        mDesktop.FailCall(kCalls[call], 1, code);
        Text value = u"before";
        std::int32_t status = 0;
        if (call <= 1) status = mRegistry.KWO_RegGetValue(kUser, u"k", u"v", value);
        if (call == 2 || call == 3) status = mRegistry.KWO_RegSetValue(kUser, u"k", u"v", mInput.Text());
        if (call == 4) status = mRegistry.KWO_RegDeleteValue(kUser, u"k", u"v");
        KWO_HOLDS(status == code);
        KWO_HOLDS(call > 1 || value.empty());
        KWO_HOLDS(mDesktop.registry.OpenKeys() == 0);
        mDesktop.faults.Clear();
    }
    /// Another program changes the value between two looks at it.
    void Change() {
        Put(AnyValue());
        const Stored later = AnyValue();
        int left = 1 + mInput.Below(4);
        mDesktop.registry.onQuery = [&] {
            if (--left == 0) Put(later);
        };
        const Handle key = mDesktop.registry.OpenKey(kUser, u"k", 1).key;
        KWO_HOLDS(mRegistry.KWO_RegGetValueEx(key, u"v", Text()).has_value());
        mDesktop.registry.onQuery = nullptr;
        mDesktop.registry.CloseKey(key);
    }

    fuzz::Input& mInput;
    platform::simulated::SimulatedDesktop mDesktop;
    component::Component mComponent{mDesktop.Services()};
    KWORegistry mRegistry{mComponent};
    CodePage mPage = CodePage::Windows1252;
};

KWO_FUZZ_TARGET(registry) {
    constexpr int kMostSteps = 50;
    Session session(input);
    for (int step = 0; step < kMostSteps && !input.IsEmpty(); ++step)
        session.Step();
}

}  // namespace
}  // namespace kwo::registry
