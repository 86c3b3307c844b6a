#include "control.h"

#include "form.h"
#include "label.h"
#include "panel.h"
#include "picture_box.h"

namespace kwohost {

Control::Control(ScriptHost& host, Form& form, std::wstring name, bool takesFocus)
    : HostWindow(host, std::move(name)), mForm(&form), mTakesFocus(takesFocus), mTabStop(takesFocus) {
    AddWindowMembers();
    AddProperty(L"Parent", [this](Call& call) { call.ReturnObject(mForm); });
    AddVariable(
        L"Container", [this](Call& call) { call.ReturnObject(mContainer); },
        [this](Call& call) { SetContainer(ContainerOf(call.Object(0).Get())); });
    AddVariable(
        L"TabStop", [this](Call& call) { call.ReturnTruth(mTabStop); },
        [this](Call& call) { mTabStop = call.Truth(0); });
    AddVariable(
        L"TabIndex", [this](Call& call) { call.ReturnWhole(mTabIndex); },
        [this](Call& call) { mTabIndex = call.Whole(0); });
}

Control::~Control() = default;

void Control::Open(HostWindow& container) {
    mContainer = ComPtr<HostWindow>(&container);
    CreateWindowOf(kControlClass, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, container.Window(),
                   {0, 0, 100, 30});
}

bool Control::IsTabStop() const {
    return mTakesFocus && mTabStop && IsThere() && IsWindowVisible(Window()) && IsWindowEnabled(Window());
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

LRESULT Control::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_PAINT) {
        PAINTSTRUCT painting;
        const HDC context = BeginPaint(Window(), &painting);
        Paint(context);
        EndPaint(Window(), &painting);
        return 0;
    }
    // Painting covers everything.
    if (message == WM_ERASEBKGND) return 1;
    return HostWindow::OnMessage(message, first, second);
}

void Control::OnGone() {
    // The form holds its controls, and each control holds its form and container.
    mContainer.Reset();
    mForm.Reset();
}

ComPtr<Control> MakeControl(ScriptHost& host, Form& form, const std::wstring& type, const std::wstring& name) {
    const auto is = [&](const wchar_t* known) { return lstrcmpiW(type.c_str(), known) == 0; };
    if (is(L"PictureBox")) return MakeObject<PictureBox>(host, form, name);
    if (is(L"Label")) return MakeObject<Label>(host, form, name);
    if (is(L"Panel")) return MakeObject<Panel>(host, form, name);
    Fail(RuntimeError::CannotCreateObject, L"There is no control of the type '" + type + L"'");
}

HostWindow& ContainerOf(IDispatch* object) {
    if (auto* const form = ScriptObject::Own<Form>(object)) return *form;
    if (auto* const panel = ScriptObject::Own<Panel>(object)) return *panel;
    Fail(RuntimeError::InvalidObjectUse, L"Controls fit into forms and panels alone");
}

}  // namespace kwohost
