#include "controls/splitter_v.h"

#include "controls/mouse_button.h"
#include "scenario.h"

namespace kwo::fault_tests {

namespace {

using controls::kLeftButton;
using controls::KWOSplitterV;

/// Two panes and a bar on a form, one of the panes in another container.
struct SplitterStage : Stage {
    static constexpr std::int32_t kBar = 700;

    SplitterStage() {
        for (const auto& container : {form, frame}) {
            container->SetProperty(u"hWnd", std::int32_t{container == form ? 900 : 901});
            container->SetProperty(u"ScaleMode", std::int16_t{1});
            container->SetProperty(u"ScaleWidth", 6000.0f);
            container->SetProperty(u"ScaleHeight", 4000.0f);
            container->SetProperty(u"WindowState", std::int16_t{0});
            for (const TextView name : {u"ScaleX", u"ScaleY"})
                container->SetMethod(name, [](std::span<Variant>) -> Variant { return 15.0f; });
        }
        for (const auto& pane : {left, right, bar}) {
            pane->SetProperty(u"Parent", HostObjectRef(form));
            pane->SetProperty(u"Container", HostObjectRef(pane == right ? frame : form));
            for (const TextView place : {u"Left", u"Top", u"Width", u"Height"})
                pane->SetProperty(place, 600.0f);
            pane->SetMethod(u"Move", [](std::span<Variant>) -> Variant { return platform::Empty{}; });
        }
        InstallCompanion(*this);
        object.emplace(*component);
    }
    std::string Create() {
        return Shown(Member([&] {
            return object->Create(left, right, bar, {.splitterSizeInPixels = Text(u"6"), .marginLeft = 60.0f});
        }));
    }
    /// Whether the bar can be dragged: only then a press draws the line.
    std::string State() override {
        if (!probes) return {};
        const auto lines = desktop.log.Starting("LineTo").size();
        try {
            object->MouseDown(kLeftButton, 0);
            if (desktop.log.Starting("LineTo").size() == lines) return "no splitter";
            object->MouseUp(0);
            return "a splitter";
        } catch (const platform::ComponentError& error) {
            return "a splitter that raises " + std::to_string(error.number);
        }
    }
    void Release() override {
        object.reset();
        for (auto* const each : {&form, &frame, &left, &right, &bar})
            each->reset();
    }

    std::shared_ptr<SimulatedObject> form = Make(u"Form", "form");
    std::shared_ptr<SimulatedObject> frame = Make(u"Form", "frame");
    std::shared_ptr<SimulatedObject> left = Make(u"PictureBox", "left");
    std::shared_ptr<SimulatedObject> right = Make(u"PictureBox", "right");
    std::shared_ptr<SimulatedObject> bar = Make(u"PictureBox", "bar");
    std::optional<KWOSplitterV> object;
    bool probes = false;
};

constexpr char kBoxBegin[] =
    "Ask owner=0 style=0x10010 title=Host Suite Application Error: HOSTAPP prompt=An internal application error has "
    "occurred.\\r\\n\\r\\nError source: KWOSplitterV.Create\\r\\nErr number:";

/// False, the error is saved, and a box shows it.
Expected IsShownInABox() {
    return [](const Failure& failure, const Reference&) {
        const std::string number = std::to_string(failure.code);
        const std::string text = failure.code == 380 ? "Refused." : "Planned failure.";
        return std::vector{Outcome{"False", "", number + " KWOSplitterV.Create: " + text,
                                   kBoxBegin + number + "\\r\\n" + text + "\\r\\n; ", "no splitter"}};
    };
}

template <class Body>
Scenario Dragged(std::string name, std::vector<std::string> members, void (*prepare)(SplitterStage&), Body run) {
    return {std::move(name),
            std::move(members),
            Prepared<SplitterStage>([prepare](SplitterStage& stage) {
                stage.Create();
                prepare(stage);
            }),
            On<SplitterStage>([run](SplitterStage& stage) {
                Member([&] { run(*stage.object); });
                return "";
            }),
            {{"PictureBox.*", Either(Raises(), SameAnswer())},
             {"Form.*", Either(Raises(), SameAnswer())},
             {"VariantChangeType", Either(Raises(), SameAnswer())},
             {"CreateDC", Unnoticed()},
             {"CreatePen", Unnoticed()},
             {"SetROP2", Unnoticed()},
             {"SelectObject", Unnoticed()},
             {"ClientToScreen", Unnoticed()},
             {"MoveTo", Unnoticed()},
             {"LineTo", Unnoticed()}}};
}

void Press(SplitterStage& stage) {
    stage.object->MouseDown(kLeftButton, 30);
}

}  // namespace

std::vector<Scenario> SplitterVScenarios() {
    const std::vector<Rule> creation = {
        // What lacks a member is no container.
        {"Form.Knows*", Answers("False"), IsOutOfMemory("no splitter")},
        {"GetFileVersionInfo", {}},
        {"GetModuleFileName", Unnoticed()},
        {"IsWindow", Unnoticed()},
        {"MessageBox", Unnoticed()},
        // The panes are fitted at the end; what they refuse is skipped.
        {"PictureBox.*", Either(IsShownInABox(), Unnoticed()), IsOutOfMemory("no splitter")},
        {"Form.*", Either(IsShownInABox(), Unnoticed()), IsOutOfMemory("no splitter")},
        {"VariantChangeType", Either(IsShownInABox(), Unnoticed()), IsOutOfMemory("no splitter")},
    };
    std::vector<Rule> spoken = creation;
    for (const char* call : {"SetHwndProp*", "ClearHwndProps", "CoCreateInstance"})
        spoken.insert(spoken.begin(), {call, Unnoticed(), Unnoticed()});
    return {
        {"ASplitterIsCreated",
         {"KWOSplitterV.Create"},
         Prepared<SplitterStage>([](SplitterStage& stage) { stage.probes = true; }),
         On<SplitterStage>([](SplitterStage& stage) { return stage.Create(); }),
         creation,
         IsOutOfMemory("no splitter")},
        {"ASplitterIsCreatedAgain",
         {"KWOSplitterV.Create"},
         Prepared<SplitterStage>([](SplitterStage& stage) {
             stage.Create();
             stage.probes = true;
         }),
         On<SplitterStage>([](SplitterStage& stage) { return stage.Create(); }),
         creation,
         IsOutOfMemory("no splitter")},
        {"AReaderIsToldOfASplitter",
         {"KWOSplitterV.Create"},
         Prepared<SplitterStage>([](SplitterStage& stage) { stage.probes = true; }),
         On<SplitterStage>([](SplitterStage& stage) {
             stage.desktop.accessibility.Install();
             stage.desktop.windows.windows[SplitterStage::kBar] = {u"Bar"};
             stage.bar->SetProperty(u"hWnd", SplitterStage::kBar);
             return stage.Create();
         }),
         spoken,
         Either(IsOutOfMemory("no splitter"), Unnoticed())},
        {"MarginsAreSet",
         {"KWOSplitterV.get LeftMargin", "KWOSplitterV.let LeftMargin", "KWOSplitterV.get TopMargin",
          "KWOSplitterV.let TopMargin", "KWOSplitterV.get RightMargin", "KWOSplitterV.let RightMargin",
          "KWOSplitterV.get BottomMargin", "KWOSplitterV.let BottomMargin"},
         Fresh<SplitterStage>(),
         On<SplitterStage>([](SplitterStage& stage) {
             KWOSplitterV& splitter = *stage.object;
             Member([&] {
                 splitter.SetLeftMargin(1);
                 splitter.SetTopMargin(2);
                 splitter.SetRightMargin(3);
                 splitter.SetBottomMargin(4);
             });
             return std::to_string(splitter.LeftMargin() + splitter.TopMargin() + splitter.RightMargin() +
                                   splitter.BottomMargin());
         }),
         {}},
        Dragged(
            "PanesAreFitted", {"KWOSplitterV.Resize"}, [](SplitterStage&) {},
            [](KWOSplitterV& splitter) { splitter.Resize(); }),
        Dragged(
            "ABarIsGrabbed", {"KWOSplitterV.MouseDown"}, [](SplitterStage&) {},
            [](KWOSplitterV& splitter) { splitter.MouseDown(kLeftButton, 30); }),
        Dragged("ABarIsDragged", {"KWOSplitterV.MouseMove"}, Press,
                [](KWOSplitterV& splitter) { splitter.MouseMove(900); }),
        Dragged("ABarIsDropped", {"KWOSplitterV.MouseUp"}, Press,
                [](KWOSplitterV& splitter) { splitter.MouseUp(900); }),
    };
}

}  // namespace kwo::fault_tests
