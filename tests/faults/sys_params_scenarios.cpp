#include "scenario.h"
#include "sysinfo/sys_params.h"

namespace kwo::fault_tests {

namespace {

using sysinfo::KWOSysParams;

struct FontsStage : Stage {
    FontsStage() {
        desktop.fonts.nonClient = {{-12, 700, 0, 0, 0, u"Caption Font"},
                                   {-11, 400, 1, 0, 0, u"Small Caption Font"},
                                   {-12, 400, 0, 1, 0, u"Menu Font"},
                                   {-12, 400, 0, 0, 1, u"Status Font"},
                                   {-12, 400, 0, 0, 0, u"Message Font"}};
    }
    void Release() override { object.reset(); }
    void Create() { object.emplace(*component); }
    static std::string Told(const HostObjectRef& font) {
        if (font == nullptr) return "Nothing";
        const auto& made = static_cast<const SimulatedObject&>(*font);
        return Shown(*made.Property(u"Name")) + ' ' + Shown(*made.Property(u"Size")) + ' ' +
               Shown(*made.Property(u"Bold"));
    }

    std::optional<KWOSysParams> object;
};

constexpr char kNoFonts[] = R"("" 0 False, "" 0 False, "" 0 False, "" 0 False)";

}  // namespace

std::vector<Scenario> SysParamsScenarios() {
    return {
        {"TheFontsAreReadWhenTheObjectIsCreated",
         {"KWOSysParams.get CaptionFont", "KWOSysParams.get MenuFont", "KWOSysParams.get StatusFont",
          "KWOSysParams.get MessageFont"},
         Fresh<FontsStage>(),
         On<FontsStage>([](FontsStage& stage) {
             const auto fonts = Member([&] {
                 stage.Create();
                 const KWOSysParams& made = *stage.object;
                 return std::array{made.CaptionFont(), made.MenuFont(), made.StatusFont(), made.MessageFont()};
             });
             return FontsStage::Told(fonts[0]) + ", " + FontsStage::Told(fonts[1]) + ", " + FontsStage::Told(fonts[2]) +
                    ", " + FontsStage::Told(fonts[3]);
         }),
         {{"SystemParametersInfo", Answers(kNoFonts)}, {"OleCreateFontIndirect", Raises()}, {"Font.Let*", Raises()}}},
        {"TheSmallCaptionFontGivesItsName",
         {"KWOSysParams.get SmCaptionFont"},
         Prepared<FontsStage>([](FontsStage& stage) { stage.Create(); }),
         On<FontsStage>([](FontsStage& stage) {
             const HostObjectRef font = Member([&] { return stage.object->SmCaptionFont(); });
             return FontsStage::Told(font) + ", " + FontsStage::Told(stage.object->CaptionFont());
         }),
         {{"Font.Get Name", Raises()}, {"Font.Let Name", Raises()}}},
    };
}

}  // namespace kwo::fault_tests
