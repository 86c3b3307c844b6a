// A splitter in a hostile host: its members raise only what the host raised and what they may raise themselves,
// the screen gets every context and pen back, nothing of the host is kept, and the splitter can be used again.

#include "controls/splitter_v.h"

#include <optional>

#include "hostile_controls.h"

namespace kwo::controls {
namespace {

class Session : public fuzz::HostileControls {
public:
    explicit Session(fuzz::Input& theInput) : HostileControls(theInput) {
        splitter.emplace(component);
        host.onIntrusion = [this] { Operate(); };
    }

    void Operate() {
        switch (input.Below(8)) {
            case 0: {
                const HostObjectRef left = AnyPane();
                const HostObjectRef right = input.Once(8) ? left : AnyPane();
                const HostObjectRef bar = AnyPane();
                splitter->Create(left, right, bar,
                                 {.splitterSizeInPixels = AnyOption(),
                                  .marginLeft = AnyOption(),
                                  .marginTop = AnyOption(),
                                  .marginRight = AnyOption(),
                                  .marginBottom = AnyOption()});
                break;
            }
            case 1:
                splitter->Resize();
                break;
            case 2:
            case 3: {
                const std::int16_t which = input.Once(8) ? input.Whole<std::int16_t>() : std::int16_t{1};
                splitter->MouseDown(which, Place());
                break;
            }
            case 4:
            case 5:
                splitter->MouseMove(Place());
                break;
            case 6:
                splitter->MouseUp(Place());
                break;
            default:
                splitter->SetLeftMargin(Place());
                splitter->SetTopMargin(Place());
                splitter->SetRightMargin(Place());
                splitter->SetBottomMargin(Place());
                break;
        }
    }

    std::optional<KWOSplitterV> splitter;
};

KWO_FUZZ_TARGET(splitter_v) {
    constexpr int kMostOperations = 60;
    Session session(input);
    if (input.Flag()) session.host.isCalm = true;
    session.host.Run([&] { session.splitter->Create(session.MakePane(), session.MakePane(), session.MakePane(), {}); });
    session.host.isCalm = false;
    for (int operation = 0; operation < kMostOperations && !input.IsEmpty(); ++operation) {
        session.host.Run([&] { session.Operate(); });
        KWO_HOLDS(session.desktop.screenDrawing.openContexts == 0);
        KWO_HOLDS(session.desktop.screenDrawing.livePens == 0);
        session.desktop.log.Clear();
    }

    session.host.isCalm = true;
    KWO_HOLDS(session.splitter->Create(session.MakePane(), session.MakePane(), session.MakePane(),
                                       {.splitterSizeInPixels = 4.0f,
                                        .marginLeft = 0.0f,
                                        .marginTop = 0.0f,
                                        .marginRight = 0.0f,
                                        .marginBottom = 0.0f}));
    session.splitter->MouseDown(1, 30);
    session.splitter->MouseMove(90);
    session.splitter->MouseUp(90);
    session.splitter.reset();
    session.host.CheckThatNothingIsHeld();
    KWO_HOLDS(session.desktop.accessibility.annotations.empty());
}

}  // namespace
}  // namespace kwo::controls
