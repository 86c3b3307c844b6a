#include "controls/pic_btn.h"

#include <algorithm>
#include <iterator>

#include "controls_stage.h"

namespace kwo::fault_tests {

namespace {

using controls::kLeftButton;
using controls::KWOPicBtn;

constexpr float kInside = 100;
constexpr float kOutside = -100;

struct ButtonStage : ControlsStage {
    ButtonStage() {
        // A clock that goes on while nobody waits.
        desktop.clock.SetCounterFrequency({});
        desktop.clock.msPerReading = 1;
        object.emplace(*component);
    }
    void Create() { object->Create(box, u"&Save the document"); }
    /// The caption, and the letter that clicks the button.
    std::string State() override {
        if (!probes) return {};
        std::string state = Shown(TextView(object->Caption())) + ", Alt+";
        for (std::int16_t letter = 'A'; letter <= 'Z'; ++letter) {
            std::int16_t key = letter;
            std::int16_t shift = 4;
            if (object->Form_KeyDown(key, shift)) state += static_cast<char>(letter);
        }
        return state;
    }
    void Release() override {
        object.reset();
        ControlsStage::Release();
    }

    std::optional<KWOPicBtn> object;
    bool probes = false;
};

/// The error of the host, under the name of the member that was called.
Expected RaisesAs(std::string member, std::string step = {}) {
    return [member, step](const Failure& failure, const Reference& reference) {
        const std::string text = failure.code == 380 ? "Refused." : "Planned failure.";
        return std::vector{Outcome{"", std::to_string(failure.code) + " KWOPicBtn." + member + ": " + text + step,
                                   reference.clean.saved, "", kAnything}};
    };
}

/// `member` is the one that the caller calls, or the one that it calls for a click.
std::vector<Rule> RulesOf(const std::string& member, Expected failure = {}) {
    if (!failure) failure = RaisesAs(member);
    return {
        {"PictureBox.TypeName*", Unnoticed()},
        {"PictureBox.Knows*", Unnoticed()},
        {"PictureBox.*", failure},
        {"Form.*", failure},
        {"TextBox.*", failure},
        {"VariantChangeType", failure},
        {"GetClientRect", SameAnswer()},
        {"Draw*", SameAnswer()},
        {"FrameRect", SameAnswer()},
    };
}

template <class Body>
Scenario Used(std::string name, std::vector<std::string> members, void (*prepare)(ButtonStage&), Body run,
              std::vector<Rule> rules) {
    return {std::move(name), std::move(members), Prepared<ButtonStage>(prepare), On<ButtonStage>(run),
            std::move(rules)};
}

void Ready(ButtonStage& stage) {
    stage.Create();
}
void Pressed(ButtonStage& stage) {
    stage.Create();
    stage.object->MouseDown(kLeftButton, kInside, kInside);
}

/// A failure of a step is told with the name of the step: of the table, or that of an undefined message.
Expected RaisesWithStep(const std::string& member) {
    return Either(RaisesAs(member, "\\r\\na text with %1 and %2 in it"), RaisesAs(member, "\\r\\nUndefined Message"));
}

std::vector<Rule> ReleaseRules(std::vector<std::string> callers) {
    // Form_KeyDown passes on what the host raises.
    Expected failure = Either(RaisesWithStep("MouseUp"), Raises());
    for (const std::string& caller : callers)
        failure = Either(failure, Either(RaisesAs(caller), RaisesWithStep(caller)));
    std::vector<Rule> rules = {{"VariantChangeType", Either(failure, SameAnswer())}};
    std::ranges::move(RulesOf("MouseUp", failure), std::back_inserter(rules));
    // Loading the texts of the steps fails without a notice.
    for (const char* call : {"CoCreateInstance", "Companion.*", "GetLocaleInfo", "GetTimeZoneInformation",
                             "GetModuleFileName", "GetFileVersionInfo", "GetFileAttributes", "GetVersionEx",
                             "QueryPerformanceFrequency", "MsgWaitForMultipleObjects*", "FormatMessage"})
        rules.push_back({call, SameAnswer()});
    return rules;
}

/// What only screen readers miss, in addition to what a member needs.
std::vector<Rule> SpokenRules(std::vector<Rule> rules) {
    // The texts may be loaded for them.
    for (const char* call :
         {"SetHwndProp*", "ClearHwndProps", "CoCreateInstance", "Companion.*", "GetLocaleInfo",
          "GetTimeZoneInformation", "GetModuleFileName", "GetFileVersionInfo", "GetFileAttributes", "FormatMessage"})
        rules.insert(rules.begin(), {call, Unnoticed(), Unnoticed()});
    for (Rule& rule : rules) {
        if (rule.call != "VariantChangeType") continue;
        rule.expected = Either(rule.expected, Unnoticed());
        rule.withoutMemory = Either(rule.withoutMemory, Unnoticed());
    }
    return rules;
}

std::string Keyed(ButtonStage& stage, std::int16_t key) {
    Member([&] { stage.object->KeyDown(key); });
    return std::to_string(key);
}

}  // namespace

std::vector<Scenario> PicBtnScenarios() {
    const auto drawn = [](const char* member) { return RulesOf(member); };
    return {
        Used(
            "AButtonIsCreated", {"KWOPicBtn.Create"}, [](ButtonStage&) {},
            [](ButtonStage& stage) {
                Member([&] { stage.Create(); });
                return "";
            },
            drawn("Create")),
        {"AReaderIsToldOfAButton",
         {"KWOPicBtn.Create", "KWOPicBtn.let Caption"},
         Fresh<ButtonStage>(),
         On<ButtonStage>([](ButtonStage& stage) {
             stage.desktop.accessibility.Install();
             Member([&] {
                 stage.Create();
                 stage.object->SetCaption(u"&Another long caption");
                 // The annotation ends and begins again.
                 stage.Create();
             });
             return "";
         }),
         SpokenRules(RulesOf("Create")),
         Either(IsOutOfMemory(), Unnoticed())},
        {"ACaptionIsSet",
         {"KWOPicBtn.get Caption", "KWOPicBtn.let Caption"},
         Prepared<ButtonStage>([](ButtonStage& stage) {
             stage.Create();
             stage.probes = true;
         }),
         On<ButtonStage>([](ButtonStage& stage) {
             Member([&] { stage.object->SetCaption(u"&Another long caption"); });
             return Shown(TextView(stage.object->Caption()));
         }),
         {},
         IsOutOfMemoryAndStaysAsItWas()},
        Used("AnAlignmentIsSet",
             {"KWOPicBtn.get TextAlignment", "KWOPicBtn.let TextAlignment", "KWOPicBtn.get MultiLine",
              "KWOPicBtn.let MultiLine"},
             Ready,
             [](ButtonStage& stage) {
                 Member([&] {
                     stage.object->SetTextAlignment(4);
                     stage.object->SetMultiLine(false);
                 });
                 return std::to_string(stage.object->TextAlignment()) + Shown(stage.object->MultiLine());
             },
             {}),
        Used(
            "AButtonGetsTheFocus", {"KWOPicBtn.GotFocus"}, Ready,
            [](ButtonStage& stage) {
                Member([&] { stage.object->GotFocus(); });
                return "";
            },
            drawn("GotFocus")),
        Used(
            "AButtonLosesTheFocus", {"KWOPicBtn.LostFocus"}, Ready,
            [](ButtonStage& stage) {
                Member([&] { stage.object->LostFocus(); });
                return "";
            },
            drawn("LostFocus")),
        Used(
            "AButtonIsResized", {"KWOPicBtn.Resize"}, Ready,
            [](ButtonStage& stage) {
                Member([&] { stage.object->Resize(); });
                return "";
            },
            drawn("Resize")),
        Used(
            "AButtonIsPressed", {"KWOPicBtn.MouseDown"}, Ready,
            [](ButtonStage& stage) {
                Member([&] { stage.object->MouseDown(kLeftButton, kInside, kInside); });
                return "";
            },
            drawn("MouseDown")),
        Used(
            "ThePointerLeavesTheButton", {"KWOPicBtn.MouseMove"}, Pressed,
            [](ButtonStage& stage) {
                Member([&] { stage.object->MouseMove(kOutside, kInside); });
                return "";
            },
            drawn("MouseMove")),
        Used(
            "AButtonIsReleased", {"KWOPicBtn.MouseUp"}, Pressed,
            [](ButtonStage& stage) {
                Member([&] { stage.object->MouseUp(kInside, kInside); });
                return "";
            },
            ReleaseRules({})),
        Used(
            "ADoubleClickIsCompleted", {"KWOPicBtn.DblClick", "KWOPicBtn.MouseMove"}, Pressed,
            [](ButtonStage& stage) {
                Member([&] {
                    stage.object->DblClick();
                    stage.object->MouseMove(kInside, kInside);
                });
                return "";
            },
            ReleaseRules({"DblClick", "MouseMove"})),
        Used(
            "AKeyClicks", {"KWOPicBtn.KeyDown"}, Ready, [](ButtonStage& stage) { return Keyed(stage, 13); },
            ReleaseRules({"MouseDown", "KeyDown"})),
        Used("AKeyMovesTheFocusToTheNextControl", {"KWOPicBtn.KeyDown"}, Ready,
             [](ButtonStage& stage) { return Keyed(stage, platform::Key::kRight); }, {{"SendInput", Unnoticed()}}),
        Used(
            "AnAccessKeyClicks", {"KWOPicBtn.Form_KeyDown"}, Ready,
            [](ButtonStage& stage) {
                std::int16_t key = 'S';
                std::int16_t shift = 4;
                const bool used = Member([&] { return stage.object->Form_KeyDown(key, shift); });
                return Shown(used) + ' ' + std::to_string(key) + ' ' + std::to_string(shift);
            },
            ReleaseRules({"MouseDown", "Form_KeyDown"})),
    };
}

}  // namespace kwo::fault_tests
