#include "registry/registry.h"

#include "scenario.h"

namespace kwo::fault_tests {

namespace {

using platform::RegistryStore;
using registry::KWORegistry;

constexpr auto kRoot = static_cast<Handle>(0x80000001u);
constexpr TextView kKey = u"Software\\Program";
constexpr TextView kNewKey = u"Software\\Program\\New";
constexpr std::uint32_t kString = 1;
constexpr std::uint32_t kNumber = 4;

/// A key with values, one of them longer than the members read at once.
struct RegistryStage : Stage {
    RegistryStage() {
        desktop.registry.PutValue(kRoot, kKey, u"text", kString, "stored text of some length");
        desktop.registry.PutValue(kRoot, kKey, u"long", kString, std::string(700, 'x'));
        desktop.registry.PutValue(kRoot, kKey, u"date", kString, "11/16/2026");
        desktop.registry.PutValue(kRoot, kKey, u"number", kNumber, std::string("\x11\x22\x33\x44", 4));
        object.emplace(*component);
    }
    std::string State() override {
        const auto* const stored = desktop.registry.Find(kRoot, kKey, u"text");
        return stored == nullptr ? "no text" : stored->bytes;
    }
    void AfterRun() override {
        for (const Handle key : given)
            desktop.registry.CloseKey(key);
        given.clear();
    }
    void Release() override {
        object.reset();
        if (open != 0) desktop.registry.CloseKey(open);
    }
    void OpenOne() { open = object->KWO_RegCreateKey(kRoot, kKey); }
    /// Which key a member has returned.
    std::string Told(Handle key) {
        if (key == 0) return "no key";
        if (key == open) return "the key of before";
        given.push_back(key);
        return "a new key";
    }

    std::optional<KWORegistry> object;
    Handle open = 0;
    std::vector<Handle> given;
};

std::string Status(KWORegistry::Status status) {
    return "status " + std::to_string(status);
}

/// Reads from the open key as the type of the default.
Scenario ReadAs(std::string name, Text valueName, Variant like, Expected onNoDate) {
    return {name + "IsReadFromAnOpenKey",
            {"KWORegistry.KWO_RegGetValueEx"},
            Prepared<RegistryStage>([](RegistryStage& stage) { stage.OpenOne(); }),
            On<RegistryStage>([valueName, like](RegistryStage& stage) {
                const auto value = Member([&] { return stage.object->KWO_RegGetValueEx(stage.open, valueName, like); });
                return value ? Shown(*value) : "the default";
            }),
            {{"RegQueryValueEx", Answers("the default")},
             {"VarDateFromStr", onNoDate},
             {"MultiByteToWideChar", IsOutOfMemory()}}};
}

}  // namespace

std::vector<Scenario> RegistryScenarios() {
    return {
        ReadAs("AText", u"text", Text(u"default"), Unnoticed()),
        ReadAs("ALongText", u"long", Text(u"default"), Unnoticed()),
        ReadAs("ADate", u"date", Date{1}, Answers("the default")),
        ReadAs("ANumber", u"number", std::int32_t{1}, Unnoticed()),
        ReadAs("ASmallNumber", u"number", std::int16_t{1}, Unnoticed()),
        {"AKeyIsDeleted",
         {"KWORegistry.KWO_RegDeleteKey"},
         Prepared<RegistryStage>([](RegistryStage& stage) { stage.desktop.registry.PutKey(kRoot, kNewKey); }),
         On<RegistryStage>([](RegistryStage& stage) {
             return Status(Member([&] { return stage.object->KWO_RegDeleteKey(kRoot, kNewKey); }));
         }),
         {{"RegDeleteKey", Answers("status #")}}},
        {"AValueIsDeleted",
         {"KWORegistry.KWO_RegDeleteValue"},
         Fresh<RegistryStage>(),
         On<RegistryStage>([](RegistryStage& stage) {
             return Status(Member([&] { return stage.object->KWO_RegDeleteValue(kRoot, kKey, u"text"); }));
         }),
         {{"RegOpenKeyEx", AnswersAndStaysAsItWas("status #"), IsOutOfMemoryAndStaysAsItWas()},
          {"RegDeleteValue", AnswersAndStaysAsItWas("status #"), IsOutOfMemoryAndStaysAsItWas()},
          {"RegCloseKey", Unnoticed()}}},
        {"AKeyIsCreated",
         {"KWORegistry.KWO_RegCreateKey"},
         Fresh<RegistryStage>(),
         On<RegistryStage>([](RegistryStage& stage) {
             return stage.Told(Member([&] { return stage.object->KWO_RegCreateKey(kRoot, kNewKey); }));
         }),
         {{"RegCreateKeyEx", Answers("no key")}}},
        {"AnotherKeyIsCreated",
         {"KWORegistry.KWO_RegCreateKey"},
         Prepared<RegistryStage>([](RegistryStage& stage) { stage.OpenOne(); }),
         On<RegistryStage>([](RegistryStage& stage) {
             return stage.Told(Member([&] { return stage.object->KWO_RegCreateKey(kRoot, kNewKey); }));
         }),
         {{"RegCreateKeyEx", Answers("the key of before")}}},
        {"AValueIsStored",
         {"KWORegistry.KWO_RegSetValue"},
         Fresh<RegistryStage>(),
         On<RegistryStage>([](RegistryStage& stage) {
             return Status(
                 Member([&] { return stage.object->KWO_RegSetValue(kRoot, kKey, u"text", u"another text instead"); }));
         }),
         {{"RegCreateKeyEx", AnswersAndStaysAsItWas("status #"), IsOutOfMemoryAndStaysAsItWas()},
          {"WideCharToMultiByte", {}, IsOutOfMemoryAndStaysAsItWas()},
          {"RegSetValueEx", AnswersAndStaysAsItWas("status #"), IsOutOfMemoryAndStaysAsItWas()},
          {"RegCloseKey", Unnoticed()}},
         IsOutOfMemoryAndStaysAsItWas()},
        {"AStoredTextIsRead",
         {"KWORegistry.KWO_RegGetValue"},
         Fresh<RegistryStage>(),
         On<RegistryStage>([](RegistryStage& stage) {
             Text value = u"a value that the caller has put there";
             const auto status = Member([&] { return stage.object->KWO_RegGetValue(kRoot, kKey, u"text", value); });
             return Status(status) + ' ' + Shown(TextView(value));
         }),
         {{"RegOpenKeyEx", Answers("status # ")},
          {"RegQueryValueEx", Answers("status # ")},
          {"MultiByteToWideChar", {}},
          {"RegCloseKey", Unnoticed()}}},
        {"AStoredNumberIsRead",
         {"KWORegistry.KWO_RegGetValue"},
         Fresh<RegistryStage>(),
         On<RegistryStage>([](RegistryStage& stage) {
             Text value;
             const auto status = Member([&] { return stage.object->KWO_RegGetValue(kRoot, kKey, u"number", value); });
             return Status(status) + ' ' + Shown(TextView(value));
         }),
         {{"RegOpenKeyEx", Answers("status # ")},
          {"RegQueryValueEx", Answers("status # ")},
          {"RegCloseKey", Unnoticed()}}},
        {"ARegistryObjectIsCreated",
         {},
         Fresh<RegistryStage>(),
         On<RegistryStage>([](RegistryStage& stage) {
             Member([&] { stage.object.emplace(*stage.component); });
             return "created";
         }),
         {}},
    };
}

}  // namespace kwo::fault_tests
