#include "scenario.h"
#include "sysinfo/form_placement.h"

namespace kwo::fault_tests {

namespace {

using sysinfo::FormPlacement;

/// A minimised form that is too large and too far to the right, and its parent.
struct PlacementStage : Stage {
    PlacementStage() { Reset(); }
    void Reset() {
        for (const auto& made : {form, parent}) {
            made->SetProperty(u"WindowState", std::int16_t{1});
            made->SetProperty(u"MDIChild", false);
            made->SetProperty(u"Left", 9000.0f);
            made->SetProperty(u"Top", 9000.0f);
            made->SetProperty(u"Width", 4000.0f);
            made->SetProperty(u"Height", 3000.0f);
            made->SetProperty(u"ScaleWidth", 3800.0f);
            made->SetProperty(u"ScaleHeight", 2800.0f);
        }
        form->SetProperty(u"Width", 20000.0f);
    }
    void Release() override {
        object.reset();
        form.reset();
        parent.reset();
    }
    std::string Place() const {
        std::string place;
        for (const TextView name : {u"Left", u"Top", u"Width", u"Height", u"WindowState"})
            place += Shown(*form->Property(name)) + ' ';
        return place;
    }

    std::shared_ptr<SimulatedObject> form = Make(u"Form", "form");
    std::shared_ptr<SimulatedObject> parent = Make(u"Form", "parent");
    platform::Platform services = desktop.Services();
    std::optional<FormPlacement> object{services};
};

// Each step that the form or its parent refuses is skipped; the place then differs.
Outcome Skipped(const Reference& reference) {
    Outcome outcome = reference.clean;
    outcome.answer = kAnything;
    return outcome;
}

Expected SkipsTheStep() {
    return [](const Failure&, const Reference& reference) { return std::vector{Skipped(reference)}; };
}

Scenario Placed(std::string name, std::string member, void (*prepare)(PlacementStage&),
                std::function<void(PlacementStage&)> place) {
    return {std::move(name),
            {std::move(member)},
            Prepared<PlacementStage>(prepare),
            On<PlacementStage>([place](PlacementStage& stage) {
                Member([&] { place(stage); });
                return stage.Place();
            }),
            {{"Form.*", SkipsTheStep()}, {"VariantChangeType", SkipsTheStep()}},
            IsOutOfMemory(),
            By<PlacementStage>([prepare](PlacementStage& stage) {
                stage.Reset();
                prepare(stage);
            })};
}

constexpr char kCenter[] = "KWOUtility.KWO_CenterForm";
constexpr char kPosition[] = "KWOUtility.KWO_SetFormPosition";

void AsChild(PlacementStage& stage) {
    stage.form->SetProperty(u"MDIChild", true);
}
void AsItIs(PlacementStage&) {}

}  // namespace

std::vector<Scenario> FormPlacementScenarios() {
    const sysinfo::FormPosition stored = {std::int16_t{2}, 12'000.0f, 11'000.0f, 5'000.0f, 20'000.0f};
    return {
        Placed("AFormIsCentredOnTheScreen", kCenter, AsItIs,
               [](PlacementStage& stage) { stage.object->KWO_CenterForm(stage.form, platform::Missing()); }),
        Placed("AFormIsCentredOverAnother", kCenter, AsItIs,
               [](PlacementStage& stage) { stage.object->KWO_CenterForm(stage.form, HostObjectRef(stage.parent)); }),
        Placed("AChildIsCentredInItsParent", kCenter, AsChild,
               [](PlacementStage& stage) { stage.object->KWO_CenterForm(stage.form, HostObjectRef(stage.parent)); }),
        Placed("AStoredPositionIsFittedOntoTheScreen", kPosition, AsItIs,
               [stored](PlacementStage& stage) {
                   stage.object->KWO_SetFormPosition(stage.form, stored, platform::Missing());
               }),
        Placed("AStoredPositionIsFittedIntoTheParent", kPosition, AsItIs,
               [](PlacementStage& stage) {
                   stage.object->KWO_SetFormPosition(stage.form, {}, HostObjectRef(stage.parent));
               }),
    };
}

}  // namespace kwo::fault_tests
