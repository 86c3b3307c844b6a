// A picture button in a hostile host: its members raise only what the host raised and what they may raise
// themselves, nothing of the host is kept, and the button can be used again.

#include "controls/pic_btn.h"

#include <optional>

#include "hostile_controls.h"

namespace kwo::controls {
namespace {

class Session : public fuzz::HostileControls {
public:
    explicit Session(fuzz::Input& theInput) : HostileControls(theInput) {
        button.emplace(component);
        desktop.drawing.clientAreas[kWindow] = {0, 0, 100, 40};
        host.onIntrusion = [this] { Operate(); };
    }

    void Operate() {
        switch (input.Below(13)) {
            case 0:
                button->Create(AnyBox(), input.Text());
                break;
            case 1:
                button->SetCaption(input.Text());
                break;
            case 2: {
                const auto alignment = input.Whole<std::int16_t>();
                button->SetTextAlignment(alignment);
                button->SetMultiLine(input.Flag());
                break;
            }
            case 3:
                button->DblClick();
                break;
            case 4:
                button->GotFocus();
                break;
            case 5:
                button->LostFocus();
                break;
            case 6: {
                const Text caption = button->Caption();
                const std::size_t marker = caption.find(u'&');
                auto key = input.Whole<std::int16_t>();
                if (marker + 1 < caption.size()) key = static_cast<std::int16_t>(caption[marker + 1]);
                auto shift = static_cast<std::int16_t>(input.Below(8));
                if (button->Form_KeyDown(key, shift)) KWO_HOLDS(key == 0 && shift == 0);
                break;
            }
            case 7: {
                constexpr std::int16_t kKeys[] = {13, 32, 37, 38, 39, 40, 9, -1};
                const std::int16_t pressed = input.Of(kKeys);
                std::int16_t key = pressed;
                button->KeyDown(key);
                KWO_HOLDS(key == 0 || key == pressed);
                break;
            }
            case 8: {
                const std::int16_t which = input.Once(8) ? input.Whole<std::int16_t>() : std::int16_t{1};
                const float x = Place();
                button->MouseDown(which, x, Place());
                break;
            }
            case 9: {
                const float x = Place();
                button->MouseMove(x, Place());
                break;
            }
            case 10: {
                const float x = Place();
                button->MouseUp(x, Place());
                break;
            }
            case 11:
                button->Resize();
                break;
            default:
                desktop.Advance(input.Byte());
                desktop.messages.ProcessPending();
                break;
        }
    }

    std::optional<KWOPicBtn> button;
};

KWO_FUZZ_TARGET(pic_btn) {
    constexpr int kMostOperations = 40;
    Session session(input);
    if (input.Flag()) session.host.isCalm = true;
    session.host.Run([&] { session.button->Create(session.MakeBox(), u"&Save"); });
    session.host.isCalm = false;
    for (int operation = 0; operation < kMostOperations && !input.IsEmpty(); ++operation) {
        session.host.Run([&] { session.Operate(); });
        session.desktop.log.Clear();
    }

    session.host.isCalm = true;
    session.button->Create(session.MakeBox(), u"&Open");
    KWO_HOLDS(session.button->Caption() == u"&Open");
    session.button->MouseUp(-1, -1);
    session.button->MouseDown(1, 15, 15);
    session.button->MouseUp(15, 15);
    std::int16_t key = 'O';
    std::int16_t alt = 4;
    KWO_HOLDS(session.button->Form_KeyDown(key, alt));
    session.button.reset();
    session.host.CheckThatNothingIsHeld();
    KWO_HOLDS(session.desktop.accessibility.annotations.empty());
}

}  // namespace
}  // namespace kwo::controls
