#include "control.h"

#include "check_box.h"
#include "combo_box.h"
#include "command_button.h"
#include "form.h"
#include "label.h"
#include "list_box.h"
#include "panel.h"
#include "picture_box.h"
#include "text_box.h"

namespace kwohost {

namespace {

template <class Type>
ComPtr<Control> Make(ScriptHost& host, Form& form, const std::wstring& name) {
    return MakeObject<Type>(host, form, name);
}

struct ControlType {
    const wchar_t* name;
    ComPtr<Control> (*make)(ScriptHost& host, Form& form, const std::wstring& name);
};

constexpr ControlType kTypes[] = {
    {L"CheckBox", Make<CheckBox>},     {L"ComboBox", Make<ComboBox>}, {L"CommandButton", Make<CommandButton>},
    {L"Label", Make<Label>},           {L"ListBox", Make<ListBox>},   {L"Panel", Make<Panel>},
    {L"PictureBox", Make<PictureBox>}, {L"TextBox", Make<TextBox>},
};

}  // namespace

Control::Control(ScriptHost& host, Form& form, std::wstring name, bool takesFocus)
    : HostWindow(host, std::move(name)), mForm(&form), mTakesFocus(takesFocus) {
    AddWindowMembers();
    AddProperty(L"Parent", [this](Call& call) { call.ReturnObject(mForm); });
    AddVariable(
        L"Container", [this](Call& call) { call.ReturnObject(mContainer); },
        [this](Call& call) { SetContainer(ContainerOn(*mForm, call.Object(0).Get())); });
    AddVariable(
        L"TabStop", [this](Call& call) { call.ReturnTruth(TabStop()); },
        [this](Call& call) { mTabStop = call.Truth(0); });
    AddVariable(
        L"TabIndex", [this](Call& call) { call.ReturnWhole(mTabIndex); },
        [this](Call& call) { mTabIndex = call.Whole(0); });
}

Control::~Control() = default;

void Control::Open(HostWindow& container) {
    mContainer = ComPtr<HostWindow>(&container);
    MakeWindow(container.Window());
}

bool Control::IsUsable() const {
    return IsThere() && TakesInput(Window(), mForm->Window());
}

void Control::SetEnabled(bool isEnabled) {
    if (!isEnabled && (HasFocus() || IsChild(Window(), GetFocus()))) mForm->Navigation().FocusNextOutside(Window());
    HostWindow::SetEnabled(isEnabled);
}

ComPtr<Form> Control::OwnerForm() {
    return mForm;
}

void Control::SetContainer(HostWindow& container) {
    if (container.Window() == Window() || IsChild(Window(), container.Window()))
        Fail(RuntimeError::InvalidObjectUse, L"A control does not fit into itself");
    ::SetParent(Window(), container.Window());
    mContainer = ComPtr<HostWindow>(&container);
}

void Control::OnGone() {
    // The form holds its controls, and each control holds its form and container.
    mContainer.Reset();
    mForm.Reset();
}

bool TakesInput(HWND window, HWND form) {
    if (!IsWindowVisible(window)) return false;
    for (HWND part = window; part && part != form; part = GetParent(part))
        if (!IsWindowEnabled(part)) return false;
    return true;
}

ComPtr<Control> MakeControl(ScriptHost& host, Form& form, const std::wstring& type, const std::wstring& name) {
    for (const auto& [known, make] : kTypes)
        if (lstrcmpiW(type.c_str(), known) == 0) return make(host, form, name);
    Fail(RuntimeError::CannotCreateObject, L"There is no control of the type '" + type + L"'");
}

HostWindow& ContainerOn(Form& form, IDispatch* object) {
    auto* const window = ScriptObject::Own<HostWindow>(object);
    if (window) window->Window();
    if (window == &form) return form;
    auto* const panel = ScriptObject::Own<Panel>(object);
    if (panel && panel->IsOn(form)) return *panel;
    Fail(RuntimeError::InvalidObjectUse, L"A control fits into its own form and the panels on it alone");
}

}  // namespace kwohost
