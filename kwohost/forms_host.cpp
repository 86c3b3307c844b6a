#include "forms_host.h"

#include <olectl.h>
#include <shlwapi.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include "bitmap_file.h"
#include "boxes.h"
#include "picture_box.h"
#include "pointer_shape.h"
#include "user_input.h"

namespace kwohost {

namespace {

struct ScreenCloser {
    void operator()(HDC screen) const { ReleaseDC(nullptr, screen); }
};

/// `Screen`.
class ScreenObject final : public ScriptObject {
public:
    explicit ScreenObject(std::shared_ptr<Forms> forms) : mForms(std::move(forms)) {
        const auto addSize = [this](const wchar_t* name, int metric, Axis axis) {
            AddProperty(name, [=](Call& call) { call.ReturnSingle(GetSystemMetrics(metric) * TwipsPerPixel(axis)); });
        };
        addSize(L"Width", SM_CXSCREEN, Axis::X);
        addSize(L"Height", SM_CYSCREEN, Axis::Y);
        AddProperty(L"TwipsPerPixelX", [](Call& call) { call.ReturnSingle(TwipsPerPixel(Axis::X)); });
        AddProperty(L"TwipsPerPixelY", [](Call& call) { call.ReturnSingle(TwipsPerPixel(Axis::Y)); });
        AddVariable(
            L"MousePointer", [this](Call& call) { call.ReturnWhole(mPointer); },
            [this](Call& call) {
                constexpr LONG kArrow = 1;
                const LONG wanted = call.Whole(0);
                mForms->pointer = PointerShape(wanted);
                mPointer = wanted;
                SetCursor(mForms->pointer ? mForms->pointer : PointerShape(kArrow));
                RefreshPointer();
            });
        AddProperty(L"ActiveForm", [this](Call& call) {
            const HWND active = GetActiveWindow();
            const auto found = std::find_if(mForms->all.begin(), mForms->all.end(),
                                            [&](Form* form) { return form->Window() == active; });
            call.ReturnObject(found == mForms->all.end() ? nullptr : ComPtr<IDispatch>(*found));
        });
    }

private:
    std::shared_ptr<Forms> mForms;
    LONG mPointer = 0;
};

/// `Host`.
class HostObject final : public ScriptObject {
public:
    HostObject(ScriptHost& host, std::shared_ptr<Forms> forms) : mHost(host), mForms(std::move(forms)) {
        AddForms();
        AddLoop();
        AddPictures();
        AddInput();
    }

private:
    void AddForms() {
        AddMethod(L"CreateForm", 1, 2, [this](Call& call) {
            if (!call.Has(1)) return Open(call, Form::Kind::Plain, nullptr);
            auto* const parent = ScriptObject::Own<Form>(call.Object(1).Get());
            if (!parent || !parent->MdiClient()) Fail(RuntimeError::TypeMismatch, L"The parent is not an MDI form");
            Open(call, Form::Kind::MdiChild, parent);
        });
        AddMethod(L"CreateMDIForm", 1, 1, [this](Call& call) { Open(call, Form::Kind::MdiParent, nullptr); });
        AddMethod(L"Forward", 2, 3, [](Call& call) { Forward(call); });
    }

    void AddLoop() {
        AddMethod(L"DoEvents", 0, 0, [this](Call&) { mHost.Wait(std::chrono::milliseconds(0)); });
        AddMethod(L"Run", 0, 0, [this](Call&) {
            mHost.WaitUntil([this, before = mStops] { return mStops != before || !IsAnyFormVisible(); });
        });
        AddMethod(L"RunUntilStopped", 0, 0,
                  [this](Call&) { mHost.WaitUntil([this, before = mStops] { return mStops != before; }); });
        AddMethod(L"Stop", 0, 0, [this](Call&) { ++mStops; });
    }

    void AddPictures() {
        AddMethod(L"LoadPicture", 1, 1, [](Call& call) { LoadPictureOf(call); });
        AddMethod(L"SavePicture", 2, 2, [this](Call& call) { SavePicture(call.Object(0).Get(), call.Text(1)); });
    }

    void AddInput() {
        AddMethod(L"MovePointer", 3, 3, [this](Call& call) { mInput.MovePointer(PlaceOf(call)); });
        AddMethod(L"PressButton", 0, 1, [this](Call& call) { mInput.PressButton(call.Has(0) ? call.Whole(0) : 1); });
        AddMethod(L"ReleaseButton", 0, 1,
                  [this](Call& call) { mInput.ReleaseButton(call.Has(0) ? call.Whole(0) : 1); });
        AddMethod(L"HoldButton", 1, 2, [this](Call& call) {
            const LONG milliseconds = call.Whole(0);
            if (milliseconds < 0)
                Fail(RuntimeError::InvalidProcedureCall, L"A button cannot be held for less than no time");
            mInput.HoldButton(call.Has(1) ? call.Whole(1) : 1, static_cast<DWORD>(milliseconds));
        });
        AddMethod(L"Click", 3, 4, [this](Call& call) {
            const LONG button = call.Has(3) ? call.Whole(3) : 1;
            mInput.MovePointer(PlaceOf(call));
            mInput.ClickButton(button);
        });
        AddMethod(L"TypeKeys", 1, 1, [this](Call& call) { mInput.TypeKeys(call.Text(0)); });
    }

    void Open(Call& call, Form::Kind kind, Form* parent) {
        const ComPtr<Form> form = MakeObject<Form>(mHost, *mForms, call.Text(0), kind, parent);
        form->Open();
        call.ReturnObject(form);
    }

    /// The arguments: a form or control, an object or Nothing, and the names of events.
    static void Forward(Call& call) {
        const ComPtr<IDispatch> source = call.Object(0);
        auto* const window = ScriptObject::Own<HostWindow>(source.Get());
        if (!window) Fail(RuntimeError::TypeMismatch, L"Only events of forms and controls can be forwarded");
        window->Window();
        const OwnedVariant target = call.Value(1);
        if (target.vt == VT_DISPATCH && !target.pdispVal) return window->ForwardNothing();
        window->Forward(call.Object(1), call.Has(2) ? call.Text(2) : L"");
    }

    bool IsAnyFormVisible() const {
        return std::any_of(mForms->all.begin(), mForms->all.end(),
                           [](Form* form) { return IsWindowVisible(form->Window()) != FALSE; });
    }

    static void LoadPictureOf(Call& call) {
        const std::wstring path = call.Text(0);
        if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
            Fail(RuntimeError::FileNotFound, L"There is no file '" + path + L"'");
        // OleLoadPicturePath refuses long names.
        constexpr DWORD kMode = STGM_READ | STGM_SHARE_DENY_WRITE;
        ComPtr<IStream> file;
        ComPtr<IDispatch> picture;
        if (FAILED(SHCreateStreamOnFileEx(path.c_str(), kMode, 0, FALSE, nullptr, file.Out())) ||
            FAILED(OleLoadPicture(file.Get(), 0, FALSE, IID_IDispatch, picture.OutVoid())))
            Fail(RuntimeError::InvalidPicture, L"'" + path + L"' is not a picture");
        call.ReturnObject(picture);
    }

    void SavePicture(IDispatch* target, const std::wstring& path) {
        if (auto* const box = ScriptObject::Own<PictureBox>(target); box && box->Drawing()) {
            const Surface& drawing = *box->Drawing();
            return SaveArea(drawing.Context(), {0, 0, drawing.Size().cx, drawing.Size().cy}, path);
        }
        if (ScriptObject::Own<ScreenObject>(target))
            return SaveScreen({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, path);
        if (auto* const window = ScriptObject::Own<HostWindow>(target)) {
            mHost.Wait(std::chrono::milliseconds(100));
            RECT area = {};
            GetWindowRect(window->Window(), &area);
            return SaveScreen(area, path);
        }
        ComPtr<IPicture> picture;
        SHORT type = 0;
        OLE_HANDLE handle = 0;
        if (FAILED(target->QueryInterface(IID_IPicture, picture.OutVoid())) || FAILED(picture->get_Type(&type)) ||
            type != PICTYPE_BITMAP || FAILED(picture->get_Handle(&handle)))
            Fail(RuntimeError::InvalidPicture, L"Only bitmaps, picture boxes and windows can be saved");
        SaveBitmap(reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(static_cast<LONG>(handle))), path);
    }

    /// The part that is on a screen: with one pixel beyond it, Wine reads nothing but black.
    static void SaveScreen(const RECT& area, const std::wstring& path) {
        const int left = GetSystemMetrics(SM_XVIRTUALSCREEN);
        const int top = GetSystemMetrics(SM_YVIRTUALSCREEN);
        const RECT screens = {left, top, left + GetSystemMetrics(SM_CXVIRTUALSCREEN),
                              top + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
        RECT visible = {};
        IntersectRect(&visible, &area, &screens);
        const std::unique_ptr<std::remove_pointer_t<HDC>, ScreenCloser> screen(GetDC(nullptr));
        SaveArea(screen.get(), visible, path);
    }

    /// The arguments are a window and a place in it, in the window's own units; or the screen and twips.
    static POINT PlaceOf(Call& call) {
        const ComPtr<IDispatch> target = call.Object(0);
        if (ScriptObject::Own<ScreenObject>(target.Get()))
            return {ToPixels(call.Number(1), Scale::Twips, Axis::X), ToPixels(call.Number(2), Scale::Twips, Axis::Y)};
        auto* const window = ScriptObject::Own<HostWindow>(target.Get());
        if (!window) Fail(RuntimeError::TypeMismatch, L"The pointer needs a form or a control");
        POINT place = {ToPixels(call.Number(1), window->OwnScale(), Axis::X),
                       ToPixels(call.Number(2), window->OwnScale(), Axis::Y)};
        ClientToScreen(window->Window(), &place);
        return place;
    }

    ScriptHost& mHost;
    std::shared_ptr<Forms> mForms;
    UserInput mInput{mHost};
    /// How often the script has called Stop: this ends every Run that has begun before.
    unsigned mStops = 0;
};

}  // namespace

void AddFormObjects(ScriptHost& host) {
    const auto forms = std::make_shared<Forms>();
    AddBoxes(host, forms);
    host.AddGlobal(L"Host", MakeObject<HostObject>(host, forms));
    host.AddGlobal(L"Screen", MakeObject<ScreenObject>(forms));
    host.AtClose([forms] {
        while (!forms->all.empty())
            forms->all.back()->End();
    });
}

}  // namespace kwohost
