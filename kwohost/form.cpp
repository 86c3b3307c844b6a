#include "form.h"

#include <algorithm>
#include <utility>

#include "control.h"
#include "modal_scope.h"
#include "window_text.h"

namespace kwohost {

namespace {

constexpr DISPID kFirstOther = 10'000;
constexpr LONG kNormal = 0;
constexpr LONG kMinimised = 1;
constexpr LONG kMaximised = 2;
constexpr RECT kFirstPlace = {60, 60, 460, 360};

WINDOWPLACEMENT PlacementOf(HWND window) {
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    return placement;
}

/// Where the working area of a monitor begins in the monitor: the placement of a window counts from there.
POINT WorkingAreaAt(const RECT& place) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return {monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top};
}

}  // namespace

Form::Form(ScriptHost& host, Forms& forms, std::wstring name, Kind kind, Form* parent)
    : HostWindow(host, std::move(name)), mForms(forms), mKind(kind), mParent(parent) {
    AddWindowMembers();
    AddScaleMembers();
    AddMembers();
}

Form::~Form() = default;

void Form::Open() {
    RegisterWindowClasses();
    if (mKind == Kind::MdiChild) {
        MDICREATESTRUCTW child = {kFormClass,
                                  Name().c_str(),
                                  GetModuleHandleW(nullptr),
                                  0,
                                  0,
                                  kFirstPlace.right - kFirstPlace.left,
                                  kFirstPlace.bottom - kFirstPlace.top,
                                  WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                  reinterpret_cast<LPARAM>(static_cast<HostWindow*>(this))};
        SendMessageW(mParent->mMdiClient, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&child));
        if (!IsThere()) Fail(RuntimeError::CannotCreateObject, L"The system has no window for '" + Name() + L"'");
        ShowWindow(Window(), SW_HIDE);
    } else {
        CreateWindowOf(kFormClass, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, nullptr, kFirstPlace);
    }
    if (mKind == Kind::MdiParent) {
        CLIENTCREATESTRUCT first = {nullptr, 1};
        RECT area = {};
        GetClientRect(Window(), &area);
        mMdiClient = CreateWindowExW(WS_EX_CLIENTEDGE, L"MDICLIENT", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                     area.right, area.bottom, Window(), nullptr, GetModuleHandleW(nullptr), &first);
        if (!mMdiClient) Fail(RuntimeError::CannotCreateObject, L"The system has no window for '" + Name() + L"'");
    }
    mForms.all.push_back(this);
    mIsOpen = true;
    ApplyEnabled();
    Fire(L"Load");
}

void Form::AddMembers() {
    AddVariable(
        L"Caption", [this](Call& call) { call.ReturnText(TextOf(Window())); },
        [this](Call& call) {
            if (!SetWindowTextW(Window(), call.Text(0).c_str()))
                Fail(RuntimeError::OutOfMemory, L"The system has no memory for the caption");
        });
    AddVariable(
        L"WindowState", [this](Call& call) { call.ReturnWhole(WindowState()); },
        [this](Call& call) { SetWindowState(call.Whole(0)); });
    AddProperty(L"MDIChild", [this](Call& call) { call.ReturnTruth(mKind == Kind::MdiChild); });
    AddVariable(
        L"KeyPreview", [this](Call& call) { call.ReturnTruth(mKeyPreview); },
        [this](Call& call) { mKeyPreview = call.Truth(0); });
    AddTitleButton(L"MinButton", WS_MINIMIZEBOX);
    AddTitleButton(L"MaxButton", WS_MAXIMIZEBOX);
    AddProperty(L"ActiveControl", [this](Call& call) {
        Control* const focused = mNavigator.Focused();
        call.ReturnObject(focused ? ComPtr<IDispatch>(focused) : nullptr);
    });
    AddMethod(L"Show", 0, 0, [this](Call&) { Show(); });
    AddMethod(L"Hide", 0, 0, [this](Call&) { SetVisible(false); });
    AddMethod(L"Close", 0, 0, [this](Call&) { SendMessageW(Window(), WM_CLOSE, 0, 0); });
    AddMethod(L"AddControl", 2, 3, [this](Call& call) { AddControl(call); });
}

void Form::AddTitleButton(const wchar_t* name, LONG style) {
    AddVariable(
        name, [this, style](Call& call) { call.ReturnTruth((GetWindowLongW(Window(), GWL_STYLE) & style) != 0); },
        [this, style](Call& call) {
            const LONG others = GetWindowLongW(Window(), GWL_STYLE) & ~style;
            SetWindowLongW(Window(), GWL_STYLE, call.Truth(0) ? others | style : others);
            constexpr UINT kFrameAlone = SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;
            SetWindowPos(Window(), nullptr, 0, 0, 0, 0, kFrameAlone);
        });
}

void Form::AddControl(Call& call) {
    const std::wstring type = call.Text(0);
    HostWindow* container = this;
    if (call.Has(2)) container = &ContainerOn(*this, call.Object(2).Get());
    const ComPtr<Control> control = MakeControl(Host(), *this, type, call.Text(1));
    mControls.reserve(mControls.size() + 1);  // without a place here, its window would stay
    control->Open(*container);
    mControls.push_back(control);
    call.ReturnObject(control);
}

LONG Form::WindowState() const {
    if (!IsWindowVisible(Window())) return mStateWhenShown;
    if (IsIconic(Window())) return kMinimised;
    return IsZoomed(Window()) ? kMaximised : kNormal;
}

void Form::SetWindowState(LONG state) {
    if (state < kNormal || state > kMaximised) Fail(RuntimeError::InvalidPropertyValue, L"WindowState is 0, 1 or 2");
    mStateWhenShown = state;
    if (IsWindowVisible(Window()) && WindowState() != state) Show();
}

void Form::Show() {
    constexpr int kCommands[] = {SW_SHOWNORMAL, SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED};
    const bool isShown = IsWindowVisible(Window()) && WindowState() == mStateWhenShown;
    const LONG wanted = mStateWhenShown;
    if (!isShown) ShowWindow(Window(), kCommands[wanted]);
    // A form that was maximised before it was minimised is maximised again at first.
    if (wanted == kNormal && IsZoomed(Window())) ShowWindow(Window(), kCommands[wanted]);
    if (mStateWhenShown != kMinimised) BringToFront();
    UpdateWindow(Window());
}

void Form::BringToFront() {
    if (mKind == Kind::MdiChild) {
        SendMessageW(mParent->mMdiClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(Window()), 0);
    } else if (mForms.boxes == 0) {
        SetForegroundWindow(Window());
    } else {
        SetWindowPos(Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        mForms.behindTheBox = this;
    }
    if (mForms.boxes > 0) BringBoxToFront();
}

void Form::ComeForward() {
    if (IsWindowVisible(Window())) BringToFront();
}

void Form::SetVisible(bool isVisible) {
    if (isVisible) {
        Show();
    } else {
        ShowWindow(Window(), SW_HIDE);
    }
}

void Form::SetEnabled(bool isEnabled) {
    mIsEnabled = isEnabled;
    ApplyEnabled();
}

void Form::ApplyEnabled() {
    const bool isBehindABox = mForms.boxes > 0 && mKind != Kind::MdiChild;
    EnableWindow(Window(), mIsEnabled && !isBehindABox);
}

bool Form::IsHiddenElsewhere() const {
    return !IsWindowVisible(Window()) && (IsIconic(Window()) || IsZoomed(Window()));
}

RECT Form::Place() const {
    if (!IsHiddenElsewhere()) return HostWindow::Place();
    RECT place = PlacementOf(Window()).rcNormalPosition;
    if (mKind == Kind::MdiChild) return place;
    const POINT origin = WorkingAreaAt(place);
    OffsetRect(&place, origin.x, origin.y);
    return place;
}

void Form::Reposition(const RECT& place, UINT flags) {
    if (!IsHiddenElsewhere()) return HostWindow::Reposition(place, flags);
    WINDOWPLACEMENT placement = PlacementOf(Window());
    placement.rcNormalPosition = place;
    if (mKind != Kind::MdiChild) {
        const POINT origin = WorkingAreaAt(place);
        OffsetRect(&placement.rcNormalPosition, -origin.x, -origin.y);
    }
    placement.showCmd = SW_HIDE;
    SetWindowPlacement(Window(), &placement);
}

void Form::CheckMovable() const {
    if (IsWindowVisible(Window()) && WindowState() != kNormal)
        Fail(RuntimeError::CannotMove, L"A form cannot be moved or sized while it is minimised or maximised");
}

RECT Form::ClientArea() const {
    RECT area = {};
    GetClientRect(mMdiClient ? mMdiClient : Window(), &area);
    return area;
}

LRESULT Form::Default(UINT message, WPARAM first, LPARAM second) {
    if (!IsThere()) return 0;
    switch (mKind) {
        case Kind::MdiParent:
            return DefFrameProcW(Window(), mMdiClient, message, first, second);
        case Kind::MdiChild:
            return DefMDIChildProcW(Window(), message, first, second);
        default:
            return DefWindowProcW(Window(), message, first, second);
    }
}

LRESULT Form::OnMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_CLOSE:
            Close();
            return 0;
        case WM_ACTIVATE: {
            const LRESULT result = Default(message, first, second);
            if (LOWORD(first) != WA_INACTIVE && IsThere()) {
                RestoreFocus();
                Fire(L"Activate");
            }
            return result;
        }
        case WM_MDIACTIVATE:
        case WM_WINDOWPOSCHANGED: {
            if (message == WM_MDIACTIVATE) mIsInFront = reinterpret_cast<HWND>(second) == Window();
            const LRESULT result = HostWindow::OnMessage(message, first, second);
            NoteActivity();
            return result;
        }
        case WM_SIZE:
            if (IsWindowVisible(Window()))
                mStateWhenShown = first == SIZE_MINIMIZED ? kMinimised : first == SIZE_MAXIMIZED ? kMaximised : kNormal;
            break;
        default:
            break;
    }
    return HostWindow::OnMessage(message, first, second);
}

void Form::End() {
    if (mKind == Kind::MdiChild && mParent->IsThere()) {
        SendMessageW(mParent->mMdiClient, WM_MDIDESTROY, reinterpret_cast<WPARAM>(Window()), 0);
    } else {
        DestroyWindow(Window());
    }
}

void Form::Close() {
    if (CloseChildren() && IsThere() && MayClose() && IsThere()) End();
}

/// One after the other, until one of them refuses.
bool Form::CloseChildren() {
    const auto isChild = [this](const Form* form) { return form->mParent.Get() == this; };
    std::vector<ComPtr<Form>> children;
    for (Form* const form : mForms.all)
        if (isChild(form)) children.emplace_back(form);
    return std::all_of(children.begin(), children.end(), [](const ComPtr<Form>& child) {
        if (child->IsThere()) child->Close();
        return !child->IsThere();
    });
}

/// A child has no WM_ACTIVATE. It is active when it is visible and in front of the other children.
void Form::NoteActivity() {
    if (mKind != Kind::MdiChild || !mIsOpen || !IsThere()) return;
    const bool isActive = mIsInFront && IsWindowVisible(Window());
    if (std::exchange(mIsActiveChild, isActive) || !isActive) return;
    RestoreFocus();
    Fire(L"Activate");
}

bool Form::MayClose() {
    // The form closes when its Unload returns, so there is nothing to do for a script that closes it there.
    if (std::exchange(mIsUnloading, true)) return false;
    SHORT cancel = 0;
    Fire(L"Unload", EventValues().Reference(cancel));
    mIsUnloading = false;
    return cancel == 0;
}

void Form::OnGone() {
    std::erase(mForms.all, this);
    if (mForms.behindTheBox == this) mForms.behindTheBox = nullptr;
    mLastFocus = nullptr;
    mControls.clear();
}

void Form::Preview(HostWindow& window, const wchar_t* event, SHORT& code, SHORT& shift) {
    EventValues values = EventValues().Reference(code).Reference(shift);
    const DISPPARAMS params = values.Params();
    // The controls may change meanwhile.
    for (const ComPtr<Control>& control : std::vector(mControls))
        if (code != 0) control->PassOn(std::wstring(L"Form_") + event, params);
    if (code != 0 && &window != this && mKeyPreview) Fire(event, std::move(values));
}

void Form::OnFocus(HostWindow& window, bool hasIt) {
    if (&window == this) {
        // The form itself has the focus only while it has nothing to give it to.
        if (hasIt && !RestoreFocus()) mNavigator.FocusFirst();
        return;
    }
    if (hasIt) mLastFocus = &window;
    mNavigator.MarkDefaultButton();
    mForms.events.Fire(window, hasIt ? L"GotFocus" : L"LostFocus");
}

bool Form::RestoreFocus() {
    if (!mLastFocus || !mLastFocus->IsThere()) return false;
    const HWND last = mLastFocus->Window();
    if (!IsChild(Window(), last) || !TakesInput(last, Window())) return false;
    ::SetFocus(last);
    return true;
}

DISPID Form::IdOfOther(std::wstring_view name) {
    const std::wstring procedure = Name() + L"_" + std::wstring(name);
    if (!Host().HasProcedure(procedure)) return DISPID_UNKNOWN;
    const auto known = std::find(mOtherNames.begin(), mOtherNames.end(), procedure);
    if (known == mOtherNames.end()) {
        mOtherNames.push_back(procedure);
        return kFirstOther + static_cast<DISPID>(mOtherNames.size()) - 1;
    }
    return kFirstOther + static_cast<DISPID>(known - mOtherNames.begin());
}

HRESULT Form::InvokeOther(DISPID id, DISPPARAMS& params, VARIANT* result, EXCEPINFO* exception) {
    const auto place = static_cast<std::size_t>(id - kFirstOther);
    if (id < kFirstOther || place >= mOtherNames.size()) return DISP_E_MEMBERNOTFOUND;
    return Host().CallProcedure(mOtherNames[place], params, result, exception);
}

}  // namespace kwohost
