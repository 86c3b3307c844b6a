#include "registry/registry.h"

#include <concepts>
#include <limits>
#include <string>
#include <type_traits>

#include "frame/text_routines.h"
#include "platform/component_error.h"
#include "platform/conversions.h"

namespace kwo::registry {

namespace {

using platform::RegistryStore;
using platform::Variant;

constexpr std::uint32_t kAllAccess = 0xF003F;
constexpr std::uint32_t kQueryValue = 1;
constexpr std::uint32_t kWrite = 0x20006;
constexpr std::uint32_t kCreatedKeyAccess = 0x20007;

constexpr std::uint32_t kStringType = 1;
constexpr std::uint32_t kNumberType = 4;

constexpr std::uint32_t kValueCapacity = 1024;
constexpr std::uint32_t kTextCapacity = 260;

/// The bytes of a value that was read, as many as the system reported, without the one zero byte that ends a string and
/// without trailing blanks.
std::string ReportedBytes(const RegistryStore::Value& value) {
    if (value.length == 0) return {};
    std::string bytes = value.bytes.substr(0, value.length);
    if (bytes.ends_with('\0')) bytes.pop_back();
    bytes.erase(bytes.find_last_not_of(' ') + 1);
    return bytes;
}

/// Intended: the bytes are cut like a string before they are read as a number, and a byte below 16 gives one digit
/// instead of two. So a number with such a byte, or with a high byte of 0x20, is read wrongly. The digits are those of
/// a 32-bit number: four digits from 8000 on are positive, eight digits from 80000000 on are negative.
Text NumberText(const std::string& bytes) {
    constexpr std::size_t kMostDigits = 8;
    constexpr char kDigits[] = "0123456789ABCDEF";

    std::string digits;
    for (auto at = bytes.rbegin(); at != bytes.rend(); ++at) {
        const auto byte = static_cast<unsigned char>(*at);
        if (byte >= 16) digits += kDigits[byte / 16];
        digits += kDigits[byte % 16];
    }
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.empty()) return u"0";
    if (digits.size() > kMostDigits) return {};
    return frame::Decimal(static_cast<std::int32_t>(std::stoul(digits, nullptr, 16)));
}

std::int32_t LittleEndian(const std::string& bytes) {
    std::uint32_t value = 0;
    for (auto at = bytes.rbegin(); at != bytes.rend(); ++at)
        value = value << 8 | static_cast<unsigned char>(*at);
    return static_cast<std::int32_t>(value);
}

template <class Integer>
bool Fits(std::int32_t number) {
    return number >= std::numeric_limits<Integer>::min() && number <= std::numeric_limits<Integer>::max();
}

/// `number` as a value of the type that it is called with. Nothing if it does not fit.
struct NumberLike {
    std::int32_t number;

    std::optional<Variant> operator()(bool) const { return Variant(number != 0); }
    template <std::integral Integer>
    std::optional<Variant> operator()(const Integer&) const {
        return Fits<Integer>(number) ? std::optional(Variant(static_cast<Integer>(number))) : std::nullopt;
    }
    template <std::floating_point Real>
    std::optional<Variant> operator()(const Real&) const {
        return Variant(static_cast<Real>(number));
    }
    std::optional<Variant> operator()(platform::Currency) const { return Variant(platform::Currency::Whole(number)); }
    std::optional<Variant> operator()(const auto&) const { return {}; }  // uncovered: IsNumber lets none come so far
};

bool IsNumber(const Variant& value) {
    return std::visit(
        [](const auto& held) {
            using Type = std::decay_t<decltype(held)>;
            return std::is_arithmetic_v<Type> || std::is_same_v<Type, platform::Currency>;
        },
        value);
}

/// The buffer size to try after `capacity` bytes were too few; 0 if there is no larger one.
std::uint32_t MoreThan(std::uint32_t capacity, std::uint32_t reported) {
    // If the system does not report a larger size, the buffer is doubled.
    if (reported > capacity) return reported;
    return capacity <= std::numeric_limits<std::uint32_t>::max() / 2 ? 2 * capacity : 0;
}

}  // namespace

/// A key that a member has opened. It is closed last, after all other calls of the member.
class KWORegistry::OpenedKey {
public:
    OpenedKey(KWORegistry& registry, const RegistryStore::KeyResult& result)
        : mRegistry(registry), mStatus(registry.KeepKey(result)), mKey(result.key) {}
    ~OpenedKey() {
        if (mStatus == RegistryStore::kSuccess) mRegistry.Keep(mRegistry.mStore.CloseKey(mKey));
    }
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;

    Status OpenStatus() const { return mStatus; }
    bool IsOpen() const { return mStatus == RegistryStore::kSuccess; }
    Handle Get() const { return mKey; }

private:
    KWORegistry& mRegistry;
    Status mStatus;
    Handle mKey;
};

KWORegistry::KWORegistry(component::Component& component)
    : mStore(component.platform.registry),
      mConversions(component.platform.conversions),
      mApiResult(component.apiResult) {
    component.SetProgramName();
}

std::optional<Variant> KWORegistry::KWO_RegGetValueEx(Handle key, TextView valueName, const Variant& defaultValue) {
    if (std::holds_alternative<Text>(defaultValue) || std::holds_alternative<platform::Date>(defaultValue)) {
        return ReadText(key, valueName, defaultValue);
    }
    return IsNumber(defaultValue) ? ReadNumber(key, valueName, defaultValue) : std::nullopt;
}

KWORegistry::Status KWORegistry::KWO_RegDeleteKey(Handle root, TextView keyName) {
    return Keep(mStore.DeleteKey(root, keyName));
}

KWORegistry::Status KWORegistry::KWO_RegDeleteValue(Handle root, TextView keyName, TextView valueName) {
    const OpenedKey key(*this, mStore.OpenKey(root, keyName, kAllAccess));
    return key.IsOpen() ? Keep(mStore.DeleteValue(key.Get(), valueName)) : key.OpenStatus();
}

Handle KWORegistry::KWO_RegCreateKey(Handle root, TextView keyName) {
    KeepKey(mStore.CreateKey(root, keyName, kCreatedKeyAccess, true));
    // Intended: after a failure this is the key of the previous call, open or not.
    return mKey;
}

KWORegistry::Status KWORegistry::KWO_RegSetValue(Handle root, TextView keyName, TextView valueName, TextView value) {
    const OpenedKey key(*this, mStore.CreateKey(root, keyName, kWrite, true));
    if (!key.IsOpen()) return key.OpenStatus();
    // Intended: the registry never receives an empty string from here.
    const TextView data = value.empty() ? u" " : value;
    // A character of a multi-byte code page counts as its bytes, so that the terminating zero is always included.
    const auto characters = static_cast<std::uint32_t>(mConversions.ToAnsi(data).size());
    return Keep(mStore.SetString(key.Get(), valueName, data, characters + 1));
}

KWORegistry::Status KWORegistry::KWO_RegGetValue(Handle root, TextView keyName, TextView valueName, Text& value) {
    value.clear();
    const OpenedKey key(*this, mStore.OpenKey(root, keyName, kQueryValue));
    if (!key.IsOpen()) return key.OpenStatus();

    const RegistryStore::Value found = mStore.Query(key.Get(), valueName, kValueCapacity, '\0');
    Keep(found.status);
    if (found.status == RegistryStore::kSuccess) value = TextOf(found);
    return found.status;
}

KWORegistry::Status KWORegistry::Keep(Status status) {
    mApiResult.last = status;
    return status;
}

KWORegistry::Status KWORegistry::KeepKey(const RegistryStore::KeyResult& result) {
    if (result.status == RegistryStore::kSuccess) mKey = result.key;
    return Keep(result.status);
}

Text KWORegistry::TextOf(const RegistryStore::Value& value) {
    const std::string bytes = ReportedBytes(value);
    if (value.type == kStringType) return mConversions.FromAnsi(bytes);
    if (value.type == kNumberType) return NumberText(bytes);
    return {};
}

std::optional<Variant> KWORegistry::ReadText(Handle key, TextView valueName, const Variant& like) {
    RegistryStore::Value found = mStore.Query(key, valueName, kTextCapacity, ' ');
    std::uint32_t capacity = kTextCapacity;
    while (Keep(found.status) == RegistryStore::kMoreData) {
        capacity = MoreThan(capacity, found.length);
        if (capacity == 0) break;
        found = mStore.Query(key, valueName, capacity, ' ');
    }
    if (found.status != RegistryStore::kSuccess) return std::nullopt;

    const std::string bytes = found.bytes.substr(0, found.bytes.find('\0'));
    const Text text = frame::TrimRight(mConversions.FromAnsi(bytes));
    if (std::holds_alternative<Text>(like)) return text;
    if (text == u"0") return platform::Date{};
    return mConversions.ParseDate(text);
}

/// Intended: the bytes of a value of any type are the number, so the text "1" is 49 and the text "0" is True.
std::optional<Variant> KWORegistry::ReadNumber(Handle key, TextView valueName, const Variant& like) {
    const RegistryStore::Value found = mStore.Query(key, valueName, sizeof(std::int32_t), '\0');
    if (Keep(found.status) != RegistryStore::kSuccess) return std::nullopt;
    return std::visit(NumberLike{LittleEndian(found.bytes)}, like);
}

}  // namespace kwo::registry
