#include "scenario.h"
#include "tray/sys_tray.h"

namespace kwo::fault_tests {

namespace {

using tray::KWOSysTray;

constexpr Handle kWindow = 500;
constexpr char kRemoved[] = "the tip of the icon the icon, no icon is shown";

struct TrayStage : Stage {
    TrayStage() {
        for (const auto& made : {icon, other}) {
            made->SetProperty(u"Type", std::int16_t{3});
            made->SetProperty(u"Handle", std::int32_t{4711});
        }
        object.emplace(*component);
    }
    std::string State() override {
        if (!object) return "no object";
        const HostObjectRef picture = object->Icon();
        return Shown(TextView(object->Tip())) +
               (picture == nullptr ? " no icon"
                : picture == icon  ? " the icon"
                                   : " the other icon") +
               ", " + Shows();
    }
    void Release() override {
        object.reset();
        icon.reset();
        other.reset();
    }
    void Show() { object->Create(kWindow, icon, u"the tip of the icon"); }
    std::string Shows() const {
        const auto shown = desktop.notificationArea.icons.find(kWindow);
        return shown == desktop.notificationArea.icons.end() ? "no icon is shown" : "an icon is shown";
    }

    std::shared_ptr<SimulatedObject> icon = Make(u"Picture", "icon");
    std::shared_ptr<SimulatedObject> other = Make(u"Picture", "other");
    std::optional<KWOSysTray> object;
};

}  // namespace

std::vector<Scenario> SysTrayScenarios() {
    return {
        {"AnIconIsShown",
         {"KWOSysTray.Create"},
         Fresh<TrayStage>(),
         On<TrayStage>([](TrayStage& stage) {
             return Shown(Member([&] { return stage.object->Create(kWindow, stage.icon, u"the tip of the icon"); }));
         }),
         {{"Picture.*", RaisesAndStaysAsItWas(), IsOutOfMemoryAndStaysAsItWas()},
          {"VariantChangeType", RaisesAndStaysAsItWas(), IsOutOfMemoryAndStaysAsItWas()},
          {"Shell_NotifyIcon", Answers("False", "the tip of the icon the icon, no icon is shown"),
           IsOutOfMemory("the tip of the icon the icon, no icon is shown")},
          {"CreateWindowEx", {}, IsOutOfMemory("the tip of the icon the icon, no icon is shown")}},
         IsOutOfMemoryAndStaysAsItWas()},
        {"AnIconIsShownInThePlaceOfAnother",
         {"KWOSysTray.Create"},
         Prepared<TrayStage>([](TrayStage& stage) { stage.Show(); }),
         On<TrayStage>([](TrayStage& stage) {
             return Shown(Member([&] { return stage.object->Create(kWindow, stage.other, u"another tip"); }));
         }),
         // The icon of before is removed first.
         {{"Picture.*", Raises(kRemoved), IsOutOfMemory(kRemoved)},
          {"VariantChangeType", Raises(kRemoved), IsOutOfMemory(kRemoved)},
          {"Shell_NotifyIcon",
           Either(Answers("False", "another tip the other icon, no icon is shown"),
                  Either(Answers("False", "another tip the other icon, an icon is shown"),
                         Answers("False", "the tip of the icon the icon, an icon is shown"))),
           Either(IsOutOfMemory("another tip the other icon, no icon is shown"),
                  IsOutOfMemory("the tip of the icon the icon, an icon is shown"))},
          {"CreateWindowEx", {}, IsOutOfMemory("another tip the other icon, no icon is shown")}},
         IsOutOfMemory(kRemoved),
         // An icon that the taskbar has kept goes with its window.
         By<TrayStage>([](TrayStage& stage) {
             if (!stage.Shows().starts_with("no")) stage.object->Destroy();
             stage.desktop.notificationArea.icons.clear();
         })},
        {"AnIconIsRemoved",
         {"KWOSysTray.Destroy"},
         Prepared<TrayStage>([](TrayStage& stage) { stage.Show(); }),
         On<TrayStage>([](TrayStage& stage) {
             Member([&] { stage.object->Destroy(); });
             return "";
         }),
         {{"Shell_NotifyIcon", SameAnswer()}}},
        {"AnIconGoesWithItsObject",
         {"KWOSysTray.Destroy"},
         Prepared<TrayStage>([](TrayStage& stage) { stage.Show(); }),
         On<TrayStage>([](TrayStage& stage) {
             Member([&] { stage.object.reset(); });
             return "";
         }),
         {{"Shell_NotifyIcon", Unnoticed(), Unnoticed()}},
         Unnoticed()},
        {"ATipIsChanged",
         {"KWOSysTray.get Tip", "KWOSysTray.let Tip"},
         Prepared<TrayStage>([](TrayStage& stage) { stage.Show(); }),
         On<TrayStage>([](TrayStage& stage) {
             return Shown(TextView(Member([&] {
                 stage.object->SetTip(u"another tip");
                 return stage.object->Tip();
             })));
         }),
         {{"Shell_NotifyIcon", Unnoticed()}}},
        {"AnIconIsChanged",
         {"KWOSysTray.get Icon", "KWOSysTray.set Icon"},
         Prepared<TrayStage>([](TrayStage& stage) { stage.Show(); }),
         On<TrayStage>([](TrayStage& stage) {
             const HostObjectRef icon = Member([&] {
                 stage.object->SetIcon(stage.other);
                 return stage.object->Icon();
             });
             return icon == stage.other ? "changed" : "not changed";
         }),
         {{"Picture.*", RaisesAndStaysAsItWas(), IsOutOfMemoryAndStaysAsItWas()},
          {"VariantChangeType", RaisesAndStaysAsItWas(), IsOutOfMemoryAndStaysAsItWas()},
          {"Shell_NotifyIcon", Unnoticed()}}},
        {"TheTaskbarIsCreatedAgain",
         {"KWOSysTray.Create"},
         Prepared<TrayStage>([](TrayStage& stage) { stage.Show(); }),
         On<TrayStage>([](TrayStage& stage) {
             stage.desktop.notificationArea.RecreateTaskbar();
             return stage.Shows();
         }),
         {{"Shell_NotifyIcon", Answers("no icon is shown", kRemoved)}}},
        {"TheMouseMessagesAreTold",
         {"KWOSysTray.get DoubleClickMsg", "KWOSysTray.get MouseDownMsg", "KWOSysTray.get MouseUpMsg"},
         Fresh<TrayStage>(),
         On<TrayStage>([](TrayStage&) {
             return std::to_string(KWOSysTray::DoubleClickMsg(1) + KWOSysTray::MouseDownMsg(2) +
                                   KWOSysTray::MouseUpMsg(1));
         }),
         {}},
    };
}

}  // namespace kwo::fault_tests
