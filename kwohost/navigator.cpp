#include "navigator.h"

#include <algorithm>
#include <iterator>

#include "access_key.h"
#include "command_button.h"

namespace kwohost {

namespace {

constexpr SHORT kShift = 1;
constexpr SHORT kAlt = 4;

/// With the null pointer, the place before the first one.
std::ptrdiff_t PlaceOf(const Control* control, const std::vector<Control*>& controls) {
    const auto found = std::find(controls.begin(), controls.end(), control);
    return found == controls.end() ? -1 : found - controls.begin();
}

/// True when the key is for a button: it clicks when the key goes down.
bool ClickByKey(CommandButton* button, bool isDown) {
    if (!button || !button->IsUsable()) return false;
    const ComPtr<CommandButton> keep(button);
    if (isDown) button->Click();
    return true;
}

}  // namespace

Control* Navigator::Focused() const {
    const auto found = std::find_if(mControls.begin(), mControls.end(),
                                    [](const ComPtr<Control>& control) { return control->HasFocus(); });
    return found == mControls.end() ? nullptr : found->Get();
}

void Navigator::FocusFirst() const {
    if (const auto stops = TabStops(); !stops.empty()) stops.front()->TakeFocus();
}

void Navigator::FocusNext(bool backwards) const {
    const auto stops = TabStops();
    if (stops.empty()) return;
    const auto count = static_cast<std::ptrdiff_t>(stops.size());
    const auto place = PlaceOf(Focused(), stops);
    const auto next = place < 0 ? 0 : (place + (backwards ? count - 1 : 1)) % count;
    stops[static_cast<std::size_t>(next)]->TakeFocus();
}

void Navigator::FocusNextOutside(HWND window) const {
    auto stops = TabStops();
    std::rotate(stops.begin(), stops.begin() + PlaceOf(Focused(), stops) + 1, stops.end());
    const auto next = std::find_if(stops.begin(), stops.end(), [window](const Control* stop) {
        return stop->Window() != window && !IsChild(window, stop->Window());
    });
    if (next != stops.end()) (*next)->TakeFocus();
}

void Navigator::FocusAfter(const Control& control) const {
    const auto controls = InOrder();
    const auto next = std::find_if(controls.begin() + PlaceOf(&control, controls) + 1, controls.end(),
                                   [](const Control* other) { return other->CanTakeFocus(); });
    if (next != controls.end()) (*next)->TakeFocus();
}

void Navigator::FocusByPointer(const HostWindow& window) const {
    const auto stops = TabStops();
    const auto found = std::find_if(stops.begin(), stops.end(), [&](const Control* stop) { return stop == &window; });
    if (found != stops.end() && !(*found)->HasFocus()) (*found)->TakeFocus();
}

bool Navigator::TakesKey(WORD key, SHORT shift, bool isDown) {
    if (shift & kAlt) return false;
    const Control* const focused = Focused();
    if (focused && focused->KeepsKey(key, shift)) return false;
    switch (key) {
        case VK_TAB:
            if (isDown) FocusNext((shift & kShift) != 0);
            return true;
        case VK_RETURN:
            return ClickByKey(ButtonOfEnter(), isDown);
        case VK_ESCAPE:
            return ClickByKey(mCancel, isDown);
        default:
            return false;
    }
}

bool Navigator::PressAccessKey(wchar_t letter) const {
    const wchar_t key = UpperCase(letter);
    if (key == 0) return false;
    auto controls = InOrder();
    // The search begins behind the focus, so that the key goes round among several controls.
    std::rotate(controls.begin(), controls.begin() + PlaceOf(Focused(), controls) + 1, controls.end());
    std::vector<Control*> meant;
    std::copy_if(controls.begin(), controls.end(), std::back_inserter(meant),
                 [key](const Control* control) { return control->IsUsable() && control->AccessKey() == key; });
    if (meant.empty()) return false;
    const ComPtr<Control> chosen(meant.front());
    chosen->FocusByAccessKey();
    if (meant.size() == 1 && chosen->IsThere()) chosen->UseByAccessKey();
    return true;
}

void Navigator::SetDefaultButton(CommandButton* button) {
    mDefault = button;
    MarkDefaultButton();
}

void Navigator::MarkDefaultButton() const {
    const CommandButton* const marked = ButtonOfEnter();
    for (const ComPtr<Control>& control : mControls)
        if (auto* const button = dynamic_cast<CommandButton*>(control.Get())) button->ShowAsDefault(button == marked);
}

CommandButton* Navigator::ButtonOfEnter() const {
    auto* const focused = dynamic_cast<CommandButton*>(Focused());
    return focused ? focused : mDefault;
}

std::vector<Control*> Navigator::InOrder() const {
    std::vector<Control*> controls;
    for (const ComPtr<Control>& control : mControls)
        controls.push_back(control.Get());
    std::stable_sort(controls.begin(), controls.end(),
                     [](const Control* a, const Control* b) { return a->TabIndex() < b->TabIndex(); });
    return controls;
}

std::vector<Control*> Navigator::TabStops() const {
    auto stops = InOrder();
    std::erase_if(stops, [](const Control* control) { return !control->IsTabStop(); });
    return stops;
}

}  // namespace kwohost
