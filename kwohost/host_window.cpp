#include "host_window.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "form.h"
#include "guard.h"
#include "pointer_shape.h"

namespace kwohost {

namespace {

constexpr SHORT kLeft = 1;
constexpr SHORT kRight = 2;
constexpr SHORT kMiddle = 4;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

/// Shift 1, Ctrl 2, Alt 4.
SHORT ShiftKeys() {
    return static_cast<SHORT>((IsDown(VK_SHIFT) ? 1 : 0) | (IsDown(VK_CONTROL) ? 2 : 0) | (IsDown(VK_MENU) ? 4 : 0));
}

SHORT ButtonOf(UINT message) {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_LBUTTONDBLCLK) return kLeft;
    return message == WM_RBUTTONDOWN || message == WM_RBUTTONUP || message == WM_RBUTTONDBLCLK ? kRight : kMiddle;
}

SHORT ButtonsOf(WPARAM keys) {
    return static_cast<SHORT>(((keys & MK_LBUTTON) ? kLeft : 0) | ((keys & MK_RBUTTON) ? kRight : 0) |
                              ((keys & MK_MBUTTON) ? kMiddle : 0));
}

}  // namespace

EventValues& EventValues::Whole(SHORT value) {
    Add(VT_I2).iVal = value;
    return *this;
}

EventValues& EventValues::Single(double value) {
    Add(VT_R4).fltVal = static_cast<float>(value);
    return *this;
}

EventValues& EventValues::Reference(SHORT& value) {
    Add(VT_BYREF | VT_I2).piVal = &value;
    return *this;
}

VARIANT& EventValues::Add(VARTYPE type) {
    VARIANT value = {};
    value.vt = type;
    mValues.push_back(value);
    return mValues.back();
}

DISPPARAMS EventValues::Params() {
    mBackwards.assign(mValues.rbegin(), mValues.rend());
    return {mBackwards.data(), nullptr, static_cast<UINT>(mBackwards.size()), 0};
}

HWND HostWindow::Window() const {
    if (!mWindow) Fail(RuntimeError::NoObjectSet, L"The window of '" + mName + L"' is gone");
    return mWindow;
}

HostWindow* HostWindow::From(HWND window) {
    if (!window || GetWindowLongPtrW(window, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(&Procedure)) return nullptr;
    return reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void HostWindow::Fire(const wchar_t* event, EventValues values) {
    const DISPPARAMS params = values.Params();
    PassOn(event, params);
    if (mWindow) mHost.HandleEvent(mName + L"_" + event, params, nullptr);
}

bool HostWindow::Handles(const std::wstring& event) const {
    const std::vector<ComPtr<IDispatch>> objects = mForwarding.ObjectsFor(event);
    return mHost.HasProcedure(mName + L"_" + event) ||
           std::any_of(objects.begin(), objects.end(), [&](const ComPtr<IDispatch>& object) {
               return IdOfMember(object.Get(), event) != DISPID_UNKNOWN;
           });
}

void HostWindow::PassOn(const std::wstring& event, const DISPPARAMS& params) {
    for (const ComPtr<IDispatch>& object : mForwarding.ObjectsFor(event))
        if (mWindow) mHost.PassOn(object.Get(), event, params);
}

void HostWindow::CreateWindowOf(const wchar_t* className, DWORD style, DWORD extendedStyle, HWND parent, RECT place) {
    if (!CreateWindowExW(extendedStyle, className, mName.c_str(), style, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, parent, nullptr, GetModuleHandleW(nullptr),
                         this))
        Fail(RuntimeError::CannotCreateObject, L"The system has no window for '" + mName + L"'");
}

void HostWindow::Adopt(HWND window) {
    mWindow = window;
    AddRef();
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    mSystemProcedure =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
}

HWND HostWindow::Disown() {
    const HWND window = std::exchange(mWindow, nullptr);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(std::exchange(mSystemProcedure, nullptr)));
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    Release();
    return window;
}

void HostWindow::AddWindowMembers() {
    AddProperty(L"Name", [this](Call& call) { call.ReturnText(mName); });
    AddProperty(L"hWnd",
                [this](Call& call) { call.ReturnWhole(static_cast<LONG>(reinterpret_cast<INT_PTR>(Window()))); });
    AddPlace(L"Left", &RECT::left, nullptr, Axis::X);
    AddPlace(L"Top", &RECT::top, nullptr, Axis::Y);
    AddPlace(L"Width", &RECT::left, &RECT::right, Axis::X);
    AddPlace(L"Height", &RECT::top, &RECT::bottom, Axis::Y);
    AddVariable(
        L"Visible", [this](Call& call) { call.ReturnTruth(IsWindowVisible(Window()) != FALSE); },
        [this](Call& call) { SetVisible(call.Truth(0)); });
    AddVariable(
        L"Enabled", [this](Call& call) { call.ReturnTruth(IsWindowEnabled(Window()) != FALSE); },
        [this](Call& call) { SetEnabled(call.Truth(0)); });
    AddVariable(
        L"MousePointer", [this](Call& call) { call.ReturnWhole(mPointer); },
        [this](Call& call) {
            const LONG wanted = call.Whole(0);
            PointerShape(wanted);
            mPointer = wanted;
            RefreshPointer();
        });
    AddMethod(L"SetFocus", 0, 0, [this](Call&) { ::SetFocus(Window()); });
    AddMethod(L"ZOrder", 0, 0, [this](Call&) { BringToFront(); });
    AddMethod(L"Move", 1, 4, [this](Call& call) {
        const Scale scale = PlaceScale();
        RECT place = Place();
        const auto pixels = [&](int index, Axis axis, LONG now) {
            return call.Has(index) ? ToPixels(call.Number(index), scale, axis) : now;
        };
        const LONG left = pixels(0, Axis::X, place.left);
        const LONG top = pixels(1, Axis::Y, place.top);
        const LONG width = pixels(2, Axis::X, place.right - place.left);
        const LONG height = pixels(3, Axis::Y, place.bottom - place.top);
        SetPlace({left, top, left + width, top + height});
    });
}

/// A position when there is no `to`, else a size.
void HostWindow::AddPlace(const wchar_t* name, LONG RECT::*from, LONG RECT::*to, Axis axis) {
    AddVariable(
        name,
        [=, this](Call& call) {
            const RECT place = Place();
            call.ReturnSingle(ToUnits(to ? place.*to - place.*from : place.*from, PlaceScale(), axis));
        },
        [=, this](Call& call) {
            const LONG wanted = ToPixels(call.Number(0), PlaceScale(), axis);
            RECT place = Place();
            if (to) {
                place.*to = place.*from + wanted;
            } else if (axis == Axis::X) {
                OffsetRect(&place, wanted - place.left, 0);
            } else {
                OffsetRect(&place, 0, wanted - place.top);
            }
            SetPlace(place);
        });
}

void HostWindow::AddScaleMembers() {
    AddVariable(
        L"ScaleMode", [this](Call& call) { call.ReturnWhole(static_cast<LONG>(mScale)); },
        [this](Call& call) {
            const auto scale = static_cast<Scale>(call.Whole(0));
            if (scale != Scale::Twips && scale != Scale::Pixels)
                Fail(RuntimeError::InvalidPropertyValue, L"ScaleMode is 1 (twips) or 3 (pixels)");
            mScale = scale;
        });
    const auto addConversion = [this](const wchar_t* name, Axis axis) {
        AddMethod(name, 1, 3, [this, axis](Call& call) {
            const auto scale = [&](int index) {
                const auto given = call.Has(index) ? static_cast<Scale>(call.Whole(index)) : mScale;
                if (given != Scale::Twips && given != Scale::Pixels)
                    Fail(RuntimeError::InvalidProcedureCall, L"A scale is 1 (twips) or 3 (pixels)");
                return given;
            };
            call.ReturnSingle(call.Number(0) / UnitsPerPixel(scale(1), axis) * UnitsPerPixel(scale(2), axis));
        });
    };
    addConversion(L"ScaleX", Axis::X);
    addConversion(L"ScaleY", Axis::Y);
    AddProperty(L"ScaleWidth", [this](Call& call) { call.ReturnSingle(ToUnits(ClientArea().right, mScale, Axis::X)); });
    AddProperty(L"ScaleHeight",
                [this](Call& call) { call.ReturnSingle(ToUnits(ClientArea().bottom, mScale, Axis::Y)); });
}

RECT HostWindow::ClientArea() const {
    RECT area = {};
    GetClientRect(Window(), &area);
    return area;
}

RECT HostWindow::Place() const {
    RECT place = {};
    GetWindowRect(Window(), &place);
    MapWindowPoints(nullptr, PlaceWindow(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void HostWindow::SetPlace(const RECT& place) {
    if (place.right < place.left || place.bottom < place.top)
        Fail(RuntimeError::InvalidPropertyValue, L"A size is not negative");
    CheckMovable();
    const RECT before = Place();
    try {
        Reposition(place, 0);
    } catch (...) {
        if (IsThere()) Reposition(before, 0);
        throw;
    }
}

void HostWindow::Reposition(const RECT& place, UINT flags) {
    const HWND window = Window();
    const bool before = std::exchange(mRaisesFailures, true);
    const RECT requested = Requested(place);
    SetWindowPos(window, nullptr, requested.left, requested.top, requested.right - requested.left,
                 requested.bottom - requested.top, flags | SWP_NOZORDER | SWP_NOACTIVATE);
    mRaisesFailures = before;
    if (const auto failure = std::exchange(mFailure, nullptr)) std::rethrow_exception(failure);
}

LRESULT CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_NCCREATE) {
        auto* parameter = reinterpret_cast<CREATESTRUCTW*>(second)->lpCreateParams;
        // A child of the MDI kind gets its parameter wrapped.
        if (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_MDICHILD)
            parameter = reinterpret_cast<void*>(static_cast<MDICREATESTRUCTW*>(parameter)->lParam);
        auto* const created = static_cast<HostWindow*>(parameter);
        created->mWindow = window;
        created->AddRef();
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, first, second);
    // A script may close the window from inside its event.
    const ComPtr<IDispatch> keep(self);
    const LRESULT result = Guarded([&] { return self->OnMessage(message, first, second); },
                                   [self](const ScriptFailure& failure) { return self->OnFailure(failure); });
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->mWindow = nullptr;
        self->OnGone();
        self->mForwarding.Clear();
        self->Release();
    }
    return result;
}

LRESULT HostWindow::OnFailure(const ScriptFailure& failure) noexcept {
    if (mRaisesFailures) {
        mFailure = std::current_exception();
    } else if (mWindow) {
        mHost.EndAfter(mName, failure);
    }
    // Otherwise the window went away in the middle of the message.
    return 0;
}

LRESULT HostWindow::Default(UINT message, WPARAM first, LPARAM second) {
    if (!mWindow) return 0;
    if (!mSystemProcedure) return DefWindowProcW(mWindow, message, first, second);
    const auto run = [&] { return CallWindowProcW(mSystemProcedure, mWindow, message, first, second); };
    // While the user holds a scroll bar, a message loop of the system runs: events go on, as everything else does.
    if (message == WM_NCLBUTTONDOWN || message == WM_SYSCOMMAND) return run();
    const ComPtr<Form> form = OwnerForm();
    return form->Events().Inside(run);
}

LRESULT HostWindow::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message >= WM_MOUSEFIRST && message <= WM_MBUTTONDBLCLK) return OnMouse(message, first, second);
    if (message >= WM_KEYFIRST && message <= WM_KEYLAST) return OnKeyboard(message, first, second);
    switch (message) {
        case WM_COMMAND:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
            return OnChild(message, first, second);
        case WM_SETFOCUS:
        case WM_KILLFOCUS: {
            const LRESULT result = Default(message, first, second);
            if (const ComPtr<Form> form = OwnerForm()) form->OnFocus(*this, message == WM_SETFOCUS);
            return result;
        }
        case WM_SETCURSOR:
            return OnSetCursor(first, second);
        case WM_SIZE: {
            const LRESULT result = Default(message, first, second);
            OnResized();
            return result;
        }
        default:
            return Default(message, first, second);
    }
}

LRESULT HostWindow::OnKeyboard(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
        case WM_KEYUP:
        case WM_SYSKEYUP:
            if (!OnKey(message, first)) return Default(message, first, second);
            if (message == WM_KEYDOWN || message == WM_SYSKEYDOWN) DropCharacters();
            return 0;
        case WM_CHAR: {
            SHORT key = static_cast<SHORT>(first);
            Fire(L"KeyPress", EventValues().Reference(key));
            return key == 0 ? 0 : LeaveToSystem(message, static_cast<WORD>(key), second);
        }
        case WM_SYSCHAR: {
            const ComPtr<Form> form = OwnerForm();
            return form && form->Navigation().PressAccessKey(static_cast<wchar_t>(first))
                       ? 0
                       : Default(message, first, second);
        }
        default:
            return Default(message, first, second);
    }
}

/// What the screen wants comes first, then what the window wants, then what its container wants.
LRESULT HostWindow::OnSetCursor(WPARAM first, LPARAM second) {
    const ComPtr<Form> form = OwnerForm();
    const HCURSOR everywhere = form ? form->Pointer() : nullptr;
    const HCURSOR shape = everywhere ? everywhere : PointerShape(mPointer);
    // The system asks the container.
    if (!shape || LOWORD(second) != HTCLIENT) return Default(WM_SETCURSOR, first, second);
    SetCursor(shape);
    return TRUE;
}

LRESULT HostWindow::OnMouse(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_MOUSEMOVE:
            FireMouse(L"MouseMove", ButtonsOf(first), second);
            return LeaveToSystem(message, first, second);
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
            if (const ComPtr<Form> form = OwnerForm()) form->Navigation().FocusByPointer(*this);
            if (mWindow && !mSystemProcedure) SetCapture(mWindow);
            FireMouse(L"MouseDown", ButtonOf(message), second);
            return LeaveToSystem(message, first, second);
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
            if (ButtonsOf(first) == 0 && GetCapture() == mWindow && !mSystemProcedure) ReleaseCapture();
            FireMouse(L"MouseUp", ButtonOf(message), second);
            return LeaveToSystem(message, first, second);
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDBLCLK:
            if (!mSystemProcedure) SetCapture(mWindow);
            Fire(L"DblClick");
            return LeaveToSystem(message, first, second);
        default:
            return Default(message, first, second);
    }
}

LRESULT HostWindow::LeaveToSystem(UINT message, WPARAM first, LPARAM second) {
    return mSystemProcedure ? Default(message, first, second) : 0;
}

LRESULT HostWindow::OnChild(UINT message, WPARAM first, LPARAM second) {
    HostWindow* const child = From(reinterpret_cast<HWND>(second));
    if (!child) return Default(message, first, second);
    const ComPtr<IDispatch> keep(child);
    if (message == WM_COMMAND) {
        child->OnNotification(HIWORD(first));
        return 0;
    }
    const HBRUSH brush = child->OnColours(reinterpret_cast<HDC>(first));
    return brush ? reinterpret_cast<LRESULT>(brush) : Default(message, first, second);
}

void HostWindow::FireMouse(const wchar_t* event, SHORT button, LPARAM place) {
    Fire(event, EventValues()
                    .Whole(button)
                    .Whole(ShiftKeys())
                    .Single(ToUnits(GET_X_LPARAM(place), mScale, Axis::X))
                    .Single(ToUnits(GET_Y_LPARAM(place), mScale, Axis::Y)));
}

/// True when the key has been used up.
bool HostWindow::OnKey(UINT message, WPARAM key) {
    const bool isDown = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
    const wchar_t* const event = isDown ? L"KeyDown" : L"KeyUp";
    const ComPtr<Form> form = OwnerForm();
    SHORT code = static_cast<SHORT>(key);
    SHORT shift = ShiftKeys();
    if (form) form->Preview(*this, event, code, shift);
    if (code == 0) return true;
    if (form && form->Navigation().TakesKey(static_cast<WORD>(code), shift, isDown)) return true;
    Fire(event, EventValues().Reference(code).Reference(shift));
    return code == 0;
}

/// The characters of a key are posted before its own message runs.
void HostWindow::DropCharacters() {
    MSG character;
    while (mWindow && (PeekMessageW(&character, mWindow, WM_CHAR, WM_DEADCHAR, PM_REMOVE) ||
                       PeekMessageW(&character, mWindow, WM_SYSCHAR, WM_SYSDEADCHAR, PM_REMOVE))) {
    }
}

void RegisterWindowClasses() {
    static bool isDone = false;
    if (std::exchange(isDone, true)) return;
    WNDCLASSW form = {};
    form.style = CS_DBLCLKS;
    form.hInstance = GetModuleHandleW(nullptr);
    form.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    form.hIcon = LoadIconW(nullptr, MAKEINTRESOURCEW(32512));
    form.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    form.lpszClassName = kFormClass;
    form.lpfnWndProc = HostWindow::ProcedureOfClass();
    RegisterClassW(&form);
    WNDCLASSW control = form;
    control.style = CS_DBLCLKS | CS_OWNDC;
    control.hIcon = nullptr;
    control.lpszClassName = kControlClass;
    RegisterClassW(&control);
}

}  // namespace kwohost
