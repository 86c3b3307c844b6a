#include "form.h"

#include <olectl.h>

#include <chrono>
#include <cstdio>

#include "bitmap_file.h"
#include "memory.h"
#include "message_loop.h"
#include "script_test.h"
#include "text_enumerator.h"

namespace kwohost::tests {

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

/// A form `frm` with a picture box `box`, both visible. `kept` is the object that the script gives to `Source.Keep`.
class FormsTest : public ScriptTest {
protected:
    FormsTest() {
        source->OnCall(L"Keep", [this](Call& call) { kept = call.Object(0); });
    }
    ~FormsTest() override { kept.Reset(); }

    int RunWithForm(const std::wstring& script) {
        return Run(
            L"Set frm = Host.CreateForm(\"frm\")\r\n"
            L"frm.Move 0, 0, 4500, 4500\r\n"
            L"Set box = frm.AddControl(\"PictureBox\", \"box\")\r\n"
            L"box.ScaleMode = 3\r\n"
            L"frm.Show\r\n" +
            script);
    }
    static HWND Form() { return FindWindowW(kFormClass, L"frm"); }
    static HWND Control(const wchar_t* name) { return FindWindowExW(Form(), nullptr, kControlClass, name); }

    HRESULT CallKept(const wchar_t* member, VARIANT argument) {
        DISPPARAMS params = {&argument, nullptr, 1, 0};
        return kept->Invoke(IdOf(*kept, member), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr,
                            nullptr, nullptr);
    }
    static COLORREF PixelOf(const wchar_t* control, int x, int y) {
        const HWND window = Control(control);
        const HDC context = GetDC(window);
        const COLORREF colour = GetPixel(context, x, y);
        ReleaseDC(window, context);
        return colour;
    }

    ComPtr<IDispatch> kept;
};

/// What ends the process: each runs in a process of its own.
using FormsDeathTest = FormsTest;

/// The script's number of the error that `statement` raises; 0 for none.
std::wstring NoteErrorOf(const std::wstring& statement) {
    return L"On Error Resume Next\r\nErr.Clear\r\n" + statement + L"\r\nSource.Note Err.Number\r\nOn Error GoTo 0\r\n";
}

}  // namespace

TEST_F(FormsTest, FormMayEndInItsPreviewOfTheTabKey) {
    RunWithForm(
        L"frm.KeyPreview = True\r\n"
        L"box.SetFocus\r\n"
        L"Set box = Nothing\r\n"
        L"Sub frm_KeyDown(KeyCode, Shift)\r\n"
        L"frm.Close\r\n"
        L"Set frm = Nothing\r\n"
        L"Source.Note KeyCode\r\n"
        L"End Sub");

    SendMessageW(Control(L"box"), WM_KEYDOWN, VK_TAB, 0);

    EXPECT_EQ(notes, Notes({L"9"}));
    EXPECT_EQ(Form(), nullptr);
}

TEST_F(FormsTest, ClosedWindowHasNoMoreEvents) {
    RunWithForm(
        L"frm.KeyPreview = True\r\n"
        L"Sub frm_KeyDown(KeyCode, Shift)\r\n"
        L"frm.Close\r\n"
        L"End Sub\r\n"
        L"Sub box_KeyDown(KeyCode, Shift)\r\n"
        L"Source.Note \"box\"\r\n"
        L"End Sub");

    SendMessageW(Control(L"box"), WM_KEYDOWN, 'A', 0);

    EXPECT_EQ(notes, Notes());
}

TEST_F(FormsTest, ProcedureGetsTheValueBehindNestedReferences) {
    RunWithForm(L"Source.Keep frm\r\nSub frm_OnAsk(v)\r\nSource.Note v\r\nv = 8\r\nEnd Sub");
    LONG value = 7;
    VARIANT inner = Reference(VT_I4, &value);
    VARIANT outer = Reference(VT_VARIANT, &inner);

    EXPECT_EQ(CallKept(L"OnAsk", Reference(VT_VARIANT, &outer)), S_OK);

    EXPECT_EQ(notes, Notes({L"7"}));
    EXPECT_EQ(value, 8);
}

TEST_F(FormsTest, ProcedureOfAFormIsCalledButNotAssignedTo) {
    RunWithForm(L"Sub frm_OnAsk(v)\r\nSource.Note \"called\"\r\nEnd Sub\r\n" + NoteErrorOf(L"frm.OnAsk = 3") +
                NoteErrorOf(L"Set frm.OnAsk = box") + NoteErrorOf(L"frm.OnAsk 3"));

    EXPECT_EQ(notes, Notes({L"438", L"438", L"called", L"0"}));
}

TEST_F(FormsTest, ReferenceToNothingIsAFailureOfTheCall) {
    RunWithForm(L"Source.Keep frm\r\nSub frm_OnAsk(v)\r\nSource.Note \"called\"\r\nEnd Sub");
    VARIANT itself = Reference(VT_VARIANT, nullptr);
    itself.pvarVal = &itself;

    EXPECT_EQ(CallKept(L"OnAsk", Reference(VT_BSTR, nullptr)), DISP_E_BADVARTYPE);
    EXPECT_EQ(CallKept(L"OnAsk", Reference(VT_VARIANT, nullptr)), DISP_E_BADVARTYPE);
    EXPECT_EQ(CallKept(L"OnAsk", itself), DISP_E_BADVARTYPE);
    EXPECT_EQ(CallKept(L"Move", Reference(VT_R8, nullptr)), DISP_E_BADVARTYPE);

    EXPECT_EQ(notes, Notes());
}

TEST_F(FormsTest, MembersReturnThatMemoryIsUsedUp) {
    RunWithForm(L"Source.Keep frm\r\nSub frm_OnAsk(v)\r\nEnd Sub");
    auto* name = const_cast<LPOLESTR>(L"OnAsk");
    DISPID id = DISPID_UNKNOWN;
    VARIANT argument = Number(1);
    DISPPARAMS params = {&argument, nullptr, 1, 0};
    const ComPtr<IUnknown> texts = EnumerateTexts({L"longer than what fits without an allocation"});
    const auto list = texts.As<IEnumVARIANT>();
    ComPtr<IEnumVARIANT> copy;
    const auto resultWithout = [](int allocation, auto call) {
        const FailingAllocation failing(allocation);
        return call();
    };
    const auto identify = [&] { return kept->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id); };
    const auto clone = [&] { return list->Clone(copy.Out()); };
    const auto invoke = [&] {
        return kept->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
    };

    EXPECT_EQ(resultWithout(0, identify), E_OUTOFMEMORY);
    ASSERT_EQ(identify(), S_OK);
    EXPECT_EQ(resultWithout(0, invoke), E_OUTOFMEMORY);
    EXPECT_EQ(resultWithout(1, invoke), E_OUTOFMEMORY);
    EXPECT_EQ(invoke(), S_OK);
    EXPECT_EQ(resultWithout(0, clone), E_OUTOFMEMORY);
    EXPECT_EQ(resultWithout(1, clone), E_OUTOFMEMORY);
    EXPECT_EQ(clone(), S_OK);
    VARIANT text = {};
    const auto next = [&] { return list->Next(1, &text, nullptr); };
    EXPECT_EQ(resultWithout(0, next), E_OUTOFMEMORY);
    EXPECT_EQ(text.vt, VT_EMPTY);
    EXPECT_EQ(next(), S_OK);
    EXPECT_EQ(next(), S_FALSE);
    VariantClear(&text);
}

TEST_F(FormsDeathTest, EventThatFindsNoMemoryEndsTheScript) {
    EXPECT_EXIT(
        {
            RunWithForm(L"Sub box_KeyDown(KeyCode, Shift)\r\nEnd Sub");
            const FailingAllocation failing(0);
            SendMessageW(Control(L"box"), WM_KEYDOWN, 'A', 0);
        },
        testing::ExitedWithCode(1), "0x8007000E");
}

TEST_F(FormsDeathTest, ErrorThatCannotBeReportedForLackOfMemoryStillEndsTheScriptWithItsCode) {
    source->OnCall(L"LetTheNextAllocationFail", [](Call&) { static const FailingAllocation failing(0); });
    EXPECT_EXIT(std::exit(Run(L"Source.LetTheNextAllocationFail\r\nErr.Raise 5")), testing::ExitedWithCode(1),
                "out of memory");
}

TEST_F(FormsTest, DoEventsAndSleepProcessAllPendingMessages) {
    source->OnCall(L"PressKeys", [](Call&) {
        for (const WPARAM key : {'A', 'B', 'C'})
            PostMessageW(Control(L"box"), WM_KEYDOWN, key, 0);
    });
    RunWithForm(
        L"Sub box_KeyDown(KeyCode, Shift)\r\nSource.Note KeyCode\r\nEnd Sub\r\n"
        L"Host.DoEvents\r\n"
        L"Source.PressKeys\r\nHost.DoEvents\r\nSource.Note \"events done\"\r\n"
        L"Source.PressKeys\r\nWScript.Sleep 0\r\nSource.Note \"slept\"");

    EXPECT_EQ(notes, Notes({L"65", L"66", L"67", L"events done", L"65", L"66", L"67", L"slept"}));
}

TEST_F(FormsTest, StopEndsRun) {
    source->OnCall(L"PressKey", [](Call&) { PostMessageW(Control(L"box"), WM_KEYDOWN, 'A', 0); });
    RunWithForm(
        L"Sub box_KeyDown(KeyCode, Shift)\r\nHost.Stop\r\nEnd Sub\r\n"
        L"Source.PressKey\r\nHost.Run\r\nSource.Note frm.Visible");

    EXPECT_EQ(notes, Notes({L"True"}));
}

namespace {

EventSourceObject* ticking = nullptr;

void CALLBACK TickOnce(HWND, UINT, UINT_PTR, DWORD) {
    ticking->Fire(EventSourceObject::kTick, {Number(1)});
}

}  // namespace

TEST_F(FormsTest, RunUntilStoppedGoesOnWhileNoFormIsVisible) {
    ticking = source.Get();
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, TickOnce);
    RunWithForm(
        L"WScript.ConnectObject Source, \"s\"\r\nDim ticks\r\nfrm.Hide\r\n"
        L"Sub s_Tick(n)\r\nticks = ticks + 1\r\nIf ticks = 2 Then frm.Close\r\n"
        L"If ticks = 4 Then Host.Stop\r\nEnd Sub\r\n"
        L"Host.Run\r\nSource.Note ticks\r\nHost.RunUntilStopped\r\nSource.Note ticks");
    KillTimer(nullptr, timer);

    EXPECT_EQ(notes, Notes({L"", L"4"}));
}

TEST_F(FormsTest, StopEndsARunAlsoIfTheEventThenBeginsAnother) {
    source->OnCall(L"PressKey", [](Call&) { PostMessageW(Control(L"box"), WM_KEYDOWN, 'A', 0); });
    ticking = source.Get();
    const UINT_PTR timer = SetTimer(nullptr, 0, 3000, TickOnce);
    RunWithForm(
        L"WScript.ConnectObject Source, \"s\"\r\n"
        L"Sub s_Tick(n)\r\nSource.Note \"still running\"\r\nHost.Stop\r\nEnd Sub\r\n"
        L"Sub box_KeyDown(KeyCode, Shift)\r\nHost.Stop\r\nfrm.Hide\r\nHost.Run\r\nSource.Note \"inner\"\r\nEnd Sub\r\n"
        L"Source.PressKey\r\nHost.RunUntilStopped\r\nSource.Note \"outer\"");
    KillTimer(nullptr, timer);

    EXPECT_EQ(notes, Notes({L"inner", L"outer"}));
}

TEST_F(FormsTest, RunEndsWhenTheLastVisibleFormIsHidden) {
    ticking = source.Get();
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, TickOnce);
    RunWithForm(
        L"WScript.ConnectObject Source, \"s\"\r\nDim ticks\r\n"
        L"Sub s_Tick(n)\r\nticks = ticks + 1\r\nfrm.Hide\r\nEnd Sub\r\nHost.Run\r\nSource.Note ticks");
    KillTimer(nullptr, timer);

    EXPECT_EQ(notes, Notes({L"1"}));
}

TEST_F(FormsTest, MembersOfClosedFormsAndTheirControlsRaise91) {
    const struct {
        const wchar_t* object;
        std::vector<std::wstring> members;
    } kObjects[] = {
        {L"frm",
         {L"Name", L"hWnd", L"Left", L"Top", L"Width", L"Height", L"Visible", L"Enabled", L"Caption", L"WindowState",
          L"MDIChild", L"KeyPreview", L"MinButton", L"MaxButton", L"ScaleMode", L"ScaleWidth", L"ScaleHeight",
          L"ActiveControl"}},
        {L"box", {L"Name",
                  L"Parent",
                  L"Container",
                  L"TabIndex",
                  L"TabStop",
                  L"AutoRedraw",
                  L"hDC",
                  L"Font",
                  L"FontTransparent",
                  L"ForeColor",
                  L"BackColor",
                  L"FillStyle",
                  L"FillColor",
                  L"CurrentX",
                  L"CurrentY",
                  L"BorderStyle",
                  L"ScaleMode",
                  L"TextHeight(\"x\")",
                  L"TextWidth(\"x\")",
                  L"ScaleX(1)"}},
        {L"lbl", {L"Caption", L"Alignment", L"Font", L"ForeColor", L"BackColor"}},
    };
    std::wstring script =
        L"box.AutoRedraw = True\r\nSet lbl = frm.AddControl(\"Label\", \"lbl\")\r\nfrm.Close\r\nDim x\r\n";
    std::size_t count = 0;
    for (const auto& [object, members] : kObjects) {
        for (const std::wstring& member : members)
            script += NoteErrorOf(std::wstring(L"x = ") + object + L"." + member);
        count += members.size();
    }
    for (const wchar_t* const statement :
         {L"frm.KeyPreview = True", L"frm.SetFocus", L"frm.ZOrder", L"frm.Show", L"frm.Hide", L"frm.Close",
          L"box.Print \"x\"", L"box.Cls", L"box.Refresh", L"box.Line 0, 0, 0, 1, 1, 0", L"box.CurrentX = 1",
          L"box.ForeColor = 1", L"box.AutoRedraw = False", L"lbl.Caption = \"x\""}) {
        script += NoteErrorOf(statement);
        ++count;
    }

    RunWithForm(script);

    EXPECT_EQ(notes, Notes(count, L"91"));
}

TEST_F(FormsTest, LoadsAPictureWhoseFullNameIsLong) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    std::wstring path = std::wstring(L"\\\\?\\") + folder;
    std::vector<std::wstring> made;
    for (int depth = 0; depth < 3; ++depth) {
        path += std::wstring(100, L'p') + L"\\";
        CreateDirectoryW(path.c_str(), nullptr);
        made.push_back(path);
    }
    path += L"picture.bmp";
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 5, 3);
    ReleaseDC(nullptr, screen);
    SaveBitmap(bitmap, path);
    DeleteObject(bitmap);

    Run(L"Set picture = Host.LoadPicture(\"" + path + L"\")\r\nSource.Note picture.Type");

    EXPECT_EQ(notes, Notes({L"1"}));
    DeleteFileW(path.c_str());
    for (auto last = made.rbegin(); last != made.rend(); ++last)
        RemoveDirectoryW(last->c_str());
}

TEST_F(FormsDeathTest, RequestToQuitDuringInputEndsTheScriptWithItsCode) {
    source->OnCall(L"RequestToQuit", [](Call&) { PostQuitMessage(3); });
    const std::wstring requests =
        L"Sub box_MouseDown(Button, Shift, X, Y)\r\nSource.RequestToQuit\r\nEnd Sub\r\n"
        L"Sub box_KeyDown(KeyCode, Shift)\r\nSource.RequestToQuit\r\nEnd Sub\r\n";
    const std::wstring late = L"\r\nWScript.StdErr.Write \"late\"";
    EXPECT_EXIT(RunWithForm(requests + L"Host.Click box, 5, 5" + late), testing::ExitedWithCode(3), "^$");
    EXPECT_EXIT(RunWithForm(requests + L"Host.MovePointer box, 5, 5\r\nHost.HoldButton 50" + late),
                testing::ExitedWithCode(3), "^$");
    EXPECT_EXIT(RunWithForm(requests + L"box.SetFocus\r\nHost.TypeKeys \"a\"" + late), testing::ExitedWithCode(3),
                "^$");
}

TEST_F(FormsTest, PlacesThatNoWindowHasRaise6) {
    RunWithForm(NoteErrorOf(L"frm.Left = 1E12") + NoteErrorOf(L"frm.Height = 1E300") + NoteErrorOf(L"frm.Move -1E12") +
                NoteErrorOf(L"frm.Move 2E10, 0, 2E10, 100") + NoteErrorOf(L"box.Line 38, 0, 0, 1E10, 1, 0") +
                NoteErrorOf(L"Host.MovePointer Screen, 1E12, 0") + NoteErrorOf(L"Source.Note frm.Left"));

    EXPECT_EQ(notes, Notes({L"6", L"6", L"6", L"6", L"6", L"6", L"0", L"0"}));
}

TEST_F(FormsTest, BoxThatIsTooLargeForItsDrawingStaysAsItWas) {
    RunWithForm(L"box.Move 0, 0, 1500, 1500\r\nbox.AutoRedraw = True\r\nbox.Line 38, 0, 0, 100, 100, &HFF\r\n" +
                NoteErrorOf(L"box.Move 0, 0, 600000, 600000") + L"Source.Note box.Width\r\nbox.Refresh");

    EXPECT_EQ(notes, Notes({L"7", L"1500"}));
    EXPECT_EQ(PixelOf(L"box", 50, 50), kRed);
}

TEST_F(FormsTest, BoxWhoseResizeFindsNoMemoryStaysWhereItWas) {
    RunWithForm(L"box.Move 0, 0, 1500, 1500\r\nSource.Keep box\r\nSub box_Resize\r\nEnd Sub");
    const HWND window = Control(L"box");
    RECT before = {};
    GetWindowRect(window, &before);
    VARIANT arguments[] = {Number(3000), Number(3000), Number(150), Number(150)};
    DISPPARAMS params = {arguments, nullptr, 4, 0};
    const DISPID move = IdOf(*kept, L"Move");
    int failures = 0;
    for (HRESULT result = E_FAIL; result != S_OK; ++failures) {
        RECT now = {};
        GetWindowRect(window, &now);
        ASSERT_TRUE(EqualRect(&now, &before)) << failures;
        const FailingAllocation failing(failures);
        result = kept->Invoke(move, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
    }

    EXPECT_GT(failures, 1);
}

TEST_F(FormsTest, BoxWithoutMemoryForItsDrawingKeepsDrawingOnTheWindow) {
    RunWithForm(L"box.Move 0, 0, 600000, 600000\r\n" + NoteErrorOf(L"box.AutoRedraw = True") +
                L"Source.Note box.AutoRedraw\r\nSource.Note box.Width > 400000");

    EXPECT_EQ(notes, Notes({L"7", L"False", L"True"}));
}

namespace {

std::wstring PictureFile() {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + L"forms_test.bmp";
    DeleteFileW(path.c_str());
    return path;
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

TEST_F(FormsTest, PictureThatIsNotThereIsNotSaved) {
    const std::wstring path = PictureFile();

    constexpr RECT kTooLarge = {0, 0, 40'000, 40'000};
    const HDC screen = GetDC(nullptr);

    EXPECT_THROW(SaveArea(screen, kTooLarge, path), ScriptFailure);
    EXPECT_FALSE(Exists(path));
    EXPECT_THROW(SaveBitmap(nullptr, path), ScriptFailure);
    EXPECT_FALSE(Exists(path));
    ReleaseDC(nullptr, screen);
}

TEST_F(FormsTest, SavedPictureLoadsAgainWithItsColours) {
    const std::wstring path = PictureFile();

    RunWithForm(
        L"box.Move 0, 0, 1500, 1500\r\nbox.AutoRedraw = True\r\nbox.BackColor = &HFFFFFF\r\n"
        L"box.Line 38, 0, 0, 9, 9, &HFF\r\nHost.SavePicture box, \"" +
        path + L"\"\r\nSet picture = Host.LoadPicture(\"" + path + L"\")\r\nSource.Keep picture\r\n" +
        NoteErrorOf(L"Host.SavePicture picture, \"" + path + L"\""));

    const auto picture = kept.As<IPicture>();
    OLE_HANDLE bitmap = 0;
    ASSERT_EQ(picture->get_Handle(&bitmap), S_OK);
    const HDC context = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(context, reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(bitmap)));
    EXPECT_EQ(GetPixel(context, 9, 9), kRed);
    EXPECT_EQ(GetPixel(context, 10, 10), kWhite);
    SelectObject(context, before);
    DeleteDC(context);
    EXPECT_EQ(notes, Notes({L"0"}));
    DeleteFileW(path.c_str());
}

TEST_F(FormsTest, PictureOfAFormIsThatOfItsPartOnTheScreen) {
    const std::wstring path = PictureFile();
    const int end = GetSystemMetrics(SM_XVIRTUALSCREEN) + GetSystemMetrics(SM_CXVIRTUALSCREEN);

    RunWithForm(
        L"box.Move 0, 0, 1500, 1500\r\nbox.BackColor = &HFF\r\n"
        L"frm.Left = " +
        std::to_wstring(end - 120) +
        L" * Screen.TwipsPerPixelX\r\n"
        L"Host.SavePicture frm, \"" +
        path + L"\"\r\nSource.Keep Host.LoadPicture(\"" + path +
        L"\")\r\n"
        L"frm.Left = " +
        std::to_wstring(end) + L" * Screen.TwipsPerPixelX\r\n" +
        NoteErrorOf(L"Host.SavePicture frm, \"" + path + L"\""));

    const auto picture = kept.As<IPicture>();
    OLE_HANDLE handle = 0;
    ASSERT_EQ(picture->get_Handle(&handle), S_OK);
    const auto bitmap = reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(handle));
    BITMAP facts = {};
    GetObjectW(bitmap, sizeof facts, &facts);
    EXPECT_EQ(facts.bmWidth, 120);
    const HDC context = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(context, bitmap);
    EXPECT_EQ(GetPixel(context, 50, 70), kRed);
    SelectObject(context, before);
    DeleteDC(context);
    EXPECT_EQ(notes, Notes({L"481"}));
    DeleteFileW(path.c_str());
}

TEST_F(FormsTest, PictureOfAFormThatMovesMeanwhileIsThatOfItsNewPlace) {
    const std::wstring path = PictureFile();
    ticking = source.Get();
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, TickOnce);

    RunWithForm(
        L"box.Move 0, 0, 1500, 1500\r\nbox.BackColor = &HFF\r\n"
        L"Sub s_Tick(n)\r\nfrm.Left = 300 * Screen.TwipsPerPixelX\r\nEnd Sub\r\n"
        L"Host.DoEvents\r\nWScript.ConnectObject Source, \"s\"\r\nHost.SavePicture frm, \"" +
        path + L"\"\r\nSource.Keep Host.LoadPicture(\"" + path + L"\")");
    KillTimer(nullptr, timer);

    const auto picture = kept.As<IPicture>();
    OLE_HANDLE handle = 0;
    ASSERT_EQ(picture->get_Handle(&handle), S_OK);
    const HDC context = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(context, reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(handle)));
    EXPECT_EQ(GetPixel(context, 50, 70), kRed);
    SelectObject(context, before);
    DeleteDC(context);
    DeleteFileW(path.c_str());
}

TEST_F(FormsTest, PointerHasTheShapeOfWhatItIsOver) {
    const auto shape = [](WORD number) { return LoadCursorW(nullptr, MAKEINTRESOURCEW(number)); };
    const HCURSOR arrow = shape(32512), sizeWestEast = shape(32644), cross = shape(32515), hourglass = shape(32514);
    std::vector<HCURSOR> seen;
    source->OnCall(L"Look", [&seen](Call&) { seen.push_back(GetCursor()); });

    RunWithForm(
        L"box.Move 0, 0, 1500, 1500\r\nbox.MousePointer = 9\r\n"
        L"Host.MovePointer box, 20, 20\r\nSource.Look\r\n"
        L"Host.MovePointer frm, 3000, 3000\r\nSource.Look\r\n"
        L"frm.MousePointer = 2\r\nSource.Look\r\n"
        L"Host.MovePointer box, 20, 20\r\nSource.Look\r\n"
        L"box.MousePointer = 0\r\nSource.Look\r\n"
        L"Screen.MousePointer = 11\r\nHost.MovePointer box, 22, 22\r\nSource.Look\r\n"
        L"Screen.MousePointer = 0\r\nSource.Look");

    EXPECT_EQ(seen, (std::vector<HCURSOR>{sizeWestEast, arrow, cross, sizeWestEast, cross, hourglass, cross}));
}

TEST_F(FormsTest, PointersThatDoNotExistRaise380) {
    RunWithForm(L"box.MousePointer = 15\r\n" + NoteErrorOf(L"box.MousePointer = 16") +
                NoteErrorOf(L"frm.MousePointer = -1") + NoteErrorOf(L"Screen.MousePointer = 99") +
                L"Source.Note box.MousePointer & frm.MousePointer & Screen.MousePointer");

    EXPECT_EQ(notes, Notes({L"380", L"380", L"380", L"1500"}));
}

TEST_F(FormsTest, FormMayBeClosedInItsOwnUnload) {
    RunWithForm(
        L"Dim times, refuse\r\nrefuse = True\r\n"
        L"Sub frm_Unload(Cancel)\r\ntimes = times + 1\r\nIf times < 10 Then frm.Close\r\nCancel = refuse\r\n"
        L"End Sub\r\n"
        L"frm.Close\r\nSource.Note times & frm.Visible\r\n"
        L"refuse = False\r\nfrm.Close\r\nSource.Note times\r\n" +
        NoteErrorOf(L"frm.Show"));

    EXPECT_EQ(notes, Notes({L"1True", L"2", L"91"}));
}

TEST_F(FormsTest, FormsThatEndWithTheScriptHaveNoUnload) {
    RunWithForm(L"Sub frm_Unload(Cancel)\r\nSource.Note \"unload\"\r\nEnd Sub");

    host->Close();

    EXPECT_EQ(Form(), nullptr);
    EXPECT_EQ(notes, Notes());
}

namespace {

WNDPROC theirs = nullptr;

LRESULT CALLBACK WithoutMemoryForText(HWND window, UINT message, WPARAM first, LPARAM second) {
    return message == WM_SETTEXT ? FALSE : CallWindowProcW(theirs, window, message, first, second);
}

}  // namespace

TEST_F(FormsTest, CaptionThatTheSystemHasNoMemoryForRaises7) {
    source->OnCall(L"LetTextFail", [](Call&) {
        theirs = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(Form(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WithoutMemoryForText)));
    });
    RunWithForm(
        L"frm.Caption = \"first\"\r\nSource.Note frm.Caption\r\nfrm.Caption = \"frm\"\r\nSource.LetTextFail\r\n" +
        NoteErrorOf(L"frm.Caption = \"second\"") + L"Source.Note frm.Caption");

    EXPECT_EQ(notes, Notes({L"first", L"7", L"frm"}));
}

TEST_F(FormsTest, HourglassStaysWhenThePointerMoves) {
    const HCURSOR arrow = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    const HCURSOR hourglass = LoadCursorW(nullptr, MAKEINTRESOURCEW(32514));
    const auto pointerOver = [](HWND window) {
        SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        return GetCursor();
    };
    RunWithForm(L"Source.Keep Screen\r\nScreen.MousePointer = 11\r\nSource.Note Screen.MousePointer");
    EXPECT_EQ(notes, Notes({L"11"}));
    EXPECT_EQ(GetCursor(), hourglass);
    EXPECT_EQ(pointerOver(Form()), hourglass);
    EXPECT_EQ(pointerOver(Control(L"box")), hourglass);

    VARIANT usual = Number(0);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params = {&usual, &put, 1, 1};
    kept->Invoke(IdOf(*kept, L"MousePointer"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params, nullptr,
                 nullptr, nullptr);

    EXPECT_EQ(GetCursor(), arrow);
    EXPECT_EQ(pointerOver(Form()), arrow);
    EXPECT_EQ(pointerOver(Control(L"box")), arrow);
}

namespace {

constexpr LPARAM kExtended = 1 << 24;
std::vector<std::pair<WPARAM, bool>> typed;

LRESULT CALLBACK NoteKeys(int code, WPARAM removed, LPARAM second) {
    const MSG& message = *reinterpret_cast<const MSG*>(second);
    if (code == HC_ACTION && removed == PM_REMOVE && message.message == WM_KEYDOWN)
        typed.emplace_back(message.wParam, (message.lParam & kExtended) != 0);
    return CallNextHookEx(nullptr, code, removed, second);
}

}  // namespace

TEST_F(FormsTest, ArrowsAndPageKeysAreTypedAsThoseOfTheirOwn) {
    typed.clear();
    const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, NoteKeys, nullptr, GetCurrentThreadId());
    RunWithForm(L"box.SetFocus\r\nHost.TypeKeys \"{LEFT}{RIGHT}{UP}{DOWN}{PGUP}{PGDN}{ENTER}a\"");
    UnhookWindowsHookEx(hook);

    EXPECT_EQ(typed, (std::vector<std::pair<WPARAM, bool>>{{VK_LEFT, true},
                                                           {VK_RIGHT, true},
                                                           {VK_UP, true},
                                                           {VK_DOWN, true},
                                                           {VK_PRIOR, true},
                                                           {VK_NEXT, true},
                                                           {VK_RETURN, false},
                                                           {'A', false}}));
}

TEST_F(FormsTest, CharacterIsTypedWithAllKeysThatItNeeds) {
    RunWithForm(
        L"Sub box_KeyDown(KeyCode, Shift)\r\nSource.Note KeyCode & \"/\" & Shift\r\nEnd Sub\r\n"
        L"box.SetFocus\r\nHost.TypeKeys \"A\" & Chr(1)");

    EXPECT_EQ(notes, Notes({L"16/1", L"65/1", L"17/2", L"65/2"}));
}

TEST_F(FormsTest, KeyThatIsUsedUpHasNoCharacter) {
    RunWithForm(
        L"Sub box_KeyDown(KeyCode, Shift)\r\nSource.Note KeyCode\r\nIf KeyCode = 65 Then KeyCode = 0\r\nEnd Sub\r\n"
        L"Sub box_KeyPress(KeyAscii)\r\nSource.Note Chr(KeyAscii)\r\nEnd Sub\r\n"
        L"Sub box_KeyUp(KeyCode, Shift)\r\nSource.Note -KeyCode\r\nEnd Sub\r\n"
        L"box.SetFocus\r\nHost.TypeKeys \"ab\"");

    EXPECT_EQ(notes, Notes({L"65", L"-65", L"66", L"b", L"-66"}));
}

TEST_F(FormsTest, HideAndShowRaiseActivate) {
    RunWithForm(
        L"Sub frm_Activate\r\nSource.Note \"activate\"\r\nEnd Sub\r\n"
        L"frm.Hide\r\nSource.Note frm.Visible\r\nfrm.Show\r\nSource.Note frm.Visible");

    EXPECT_EQ(notes, Notes({L"activate", L"False", L"activate", L"True"}));
}

namespace {

/// Notes state and place of a form.
std::wstring NotePlaceOf(const std::wstring& form) {
    const auto member = [&](const wchar_t* name) { return L" & \" \" & " + form + name; };
    return L"Source.Note " + form + L".WindowState" + member(L".Left") + member(L".Top") + member(L".Width") +
           member(L".Height") + L"\r\n";
}

}  // namespace

TEST_F(FormsTest, HiddenFormHasThePlaceOfItsNormalState) {
    const std::wstring note = NotePlaceOf(L"frm");
    RunWithForm(
        L"frm.Move 1500, 900, 4500, 3000\r\n"
        L"frm.WindowState = 2\r\nfrm.Hide\r\n" +
        note + L"frm.WindowState = 0\r\n" + note + L"frm.Show\r\n" + note + L"frm.WindowState = 1\r\nfrm.Hide\r\n" +
        note + L"frm.WindowState = 0\r\nfrm.Show\r\n" + note);

    EXPECT_EQ(notes, Notes({L"2 1500 900 4500 3000", L"0 1500 900 4500 3000", L"0 1500 900 4500 3000",
                            L"1 1500 900 4500 3000", L"0 1500 900 4500 3000"}));
}

TEST_F(FormsTest, HiddenFormThatIsMovedKeepsItsStateAndHasThePlaceInItsNormalOne) {
    const std::wstring note = NotePlaceOf(L"frm");
    for (const wchar_t* const state : {L"2", L"1"}) {
        notes.clear();
        RunWithForm(L"frm.Move 1500, 900, 4500, 3000\r\nfrm.WindowState = " + std::wstring(state) +
                    L"\r\nfrm.Hide\r\nfrm.Left = 1800\r\nfrm.Height = 3300\r\n" + note + L"frm.Move 2100, 1200\r\n" +
                    note + L"frm.Show\r\nSource.Note frm.WindowState\r\nfrm.WindowState = 0\r\n" + note);

        EXPECT_EQ(notes, Notes({std::wstring(state) + L" 1800 900 4500 3300",
                                std::wstring(state) + L" 2100 1200 4500 3300", state, L"0 2100 1200 4500 3300"}));
    }
}

TEST_F(FormsTest, VisibleShowsAFormInItsState) {
    RunWithForm(
        L"frm.Visible = False\r\nfrm.WindowState = 2\r\nfrm.Visible = True\r\n"
        L"Source.Note frm.Visible & frm.WindowState & (frm.ScaleWidth > 4500)");

    EXPECT_EQ(notes, Notes({L"True2True"}));
}

TEST_F(FormsTest, FormMayBeWithoutTheButtonsOfItsTitle) {
    const auto pixels = [](int x) {
        // The buttons are in the title bar, at its right end.
        const HDC context = GetWindowDC(Form());
        std::vector<COLORREF> column;
        for (int y = 0; y < 24; ++y)
            column.push_back(GetPixel(context, x, y));
        ReleaseDC(Form(), context);
        return column;
    };
    const auto title = [&] {
        std::vector<std::vector<COLORREF>> columns;
        for (int x = 200; x < 300; ++x)
            columns.push_back(pixels(x));
        return columns;
    };
    RunWithForm(L"Source.Note frm.MinButton & frm.MaxButton\r\nHost.DoEvents");
    const auto both = title();
    RunWithForm(
        L"frm.MinButton = False\r\nfrm.MaxButton = False\r\n"
        L"Source.Note frm.MinButton & frm.MaxButton\r\nHost.DoEvents");
    const auto none = title();
    RunWithForm(
        L"frm.MinButton = False\r\nfrm.MaxButton = False\r\nfrm.MaxButton = True\r\nfrm.MinButton = True\r\n"
        L"Source.Note frm.MinButton & frm.MaxButton\r\nHost.DoEvents");

    EXPECT_EQ(notes, Notes({L"TrueTrue", L"FalseFalse", L"TrueTrue"}));
    EXPECT_FALSE(none == both);
    EXPECT_TRUE(title() == both);
}

TEST_F(FormsTest, ZOrderBringsAControlToTheFront) {
    RunWithForm(L"Set other = frm.AddControl(\"PictureBox\", \"other\")\r\nbox.ZOrder");
    EXPECT_EQ(GetWindow(Form(), GW_CHILD), Control(L"box"));

    RunWithForm(L"Set other = frm.AddControl(\"PictureBox\", \"other\")\r\nother.ZOrder");
    EXPECT_EQ(GetWindow(Form(), GW_CHILD), Control(L"other"));
}

TEST_F(FormsTest, BorderTakesOnePixelOnEachSide) {
    RunWithForm(
        L"box.Move 0, 0, 1500, 1500\r\nSource.Note box.ScaleWidth & \" \" & box.ScaleHeight\r\n"
        L"box.BorderStyle = 1\r\nSource.Note box.BorderStyle & \" \" & frm.ScaleX(1500, 1, 3) - box.ScaleWidth\r\n"
        L"box.BorderStyle = 0\r\nSource.Note box.BorderStyle & \" \" & frm.ScaleX(1500, 1, 3) - box.ScaleWidth");

    ASSERT_EQ(notes.size(), 3U);
    EXPECT_EQ(notes[1], L"1 2");
    EXPECT_EQ(notes[2], L"0 0");
}

TEST_F(FormsTest, FillSettingsKeepTheirValues) {
    RunWithForm(
        L"Source.Note box.FillStyle & \" \" & box.FillColor\r\nbox.FillStyle = 0\r\nbox.FillColor = 255\r\n"
        L"Source.Note box.FillStyle & \" \" & box.FillColor");

    EXPECT_EQ(notes, Notes({L"1 0", L"0 255"}));
}

TEST_F(FormsTest, PaintIsRaisedOnlyWithoutAutoRedraw) {
    RunWithForm(
        L"Sub box_Paint\r\nSource.Note \"paint\"\r\nbox.Line 38, 0, 0, 3, 3, &HFF\r\nEnd Sub\r\n"
        L"Host.DoEvents\r\nSource.Note \"refresh\"\r\nbox.Refresh\r\n"
        L"Source.Note \"kept\"\r\nbox.AutoRedraw = True\r\nbox.Refresh\r\nbox.AutoRedraw = False\r\nbox.Refresh");

    ASSERT_GE(notes.size(), 4U);
    EXPECT_EQ(Notes(notes.end() - 4, notes.end()), Notes({L"refresh", L"paint", L"kept", L"paint"}));
    EXPECT_EQ(PixelOf(L"box", 3, 3), kRed);
}

TEST_F(FormsTest, LineDrawsALineOrAFilledBox) {
    const auto draw = [this](const wchar_t* line) {
        RunWithForm(
            std::wstring(L"box.Move 0, 0, 1500, 1500\r\nbox.BackColor = &HFFFFFF\r\nbox.AutoRedraw = True\r\n") +
            L"box.Cls\r\n" + line + L"\r\nbox.Refresh");
    };
    draw(L"box.Line 0, 2, 2, 12, 12, &HFF");
    EXPECT_EQ(PixelOf(L"box", 2, 2), kRed);
    EXPECT_EQ(PixelOf(L"box", 11, 11), kRed);
    EXPECT_EQ(PixelOf(L"box", 12, 2), kWhite);
    EXPECT_EQ(PixelOf(L"box", 13, 13), kWhite);

    draw(L"box.Line 38, 12, 12, 2, 2, &HFF");
    EXPECT_EQ(PixelOf(L"box", 2, 2), kRed);
    EXPECT_EQ(PixelOf(L"box", 12, 12), kRed);
    EXPECT_EQ(PixelOf(L"box", 12, 2), kRed);
    EXPECT_EQ(PixelOf(L"box", 1, 1), kWhite);
    EXPECT_EQ(PixelOf(L"box", 13, 13), kWhite);
}

namespace {

/// The first and the last column of a label of 100 by 20 pixels where something is written.
std::pair<int, int> WrittenColumns(HWND label) {
    std::pair<int, int> columns = {-1, -1};
    UpdateWindow(label);
    const HDC context = GetDC(label);
    for (int x = 0; x < 100; ++x) {
        bool isWritten = false;
        for (int y = 0; y < 20; ++y)
            isWritten = isWritten || GetPixel(context, x, y) != kWhite;
        if (isWritten && columns.first < 0) columns.first = x;
        if (isWritten) columns.second = x;
    }
    ReleaseDC(label, context);
    return columns;
}

}  // namespace

TEST_F(FormsTest, LabelAlignsItsText) {
    const auto columns = [this](const wchar_t* alignment) {
        RunWithForm(
            std::wstring(L"box.Move 3000, 3000\r\nfrm.ScaleMode = 3\r\nSet lbl = frm.AddControl(\"Label\", \"lbl\")\r\n"
                         L"lbl.Move 0, 0, 100, 20\r\nlbl.BackColor = &HFFFFFF\r\nlbl.ForeColor = 0\r\n"
                         L"lbl.Caption = \"HHH\"\r\nlbl.Alignment = ") +
            alignment);
        return WrittenColumns(Control(L"lbl"));
    };
    const auto [leftFirst, leftLast] = columns(L"0");
    const auto [rightFirst, rightLast] = columns(L"1");
    const auto [centreFirst, centreLast] = columns(L"2");
    EXPECT_LT(leftFirst, 3);
    EXPECT_GE(leftFirst, 0);
    EXPECT_GT(rightLast, 95);
    EXPECT_EQ(rightLast - rightFirst, leftLast - leftFirst);
    EXPECT_NEAR(centreFirst, 99 - centreLast, 2);
}

namespace {

/// What a label of 100 by 60 pixels or less shows.
std::vector<COLORREF> PixelsOf(HWND label) {
    std::vector<COLORREF> pixels;
    UpdateWindow(label);
    const HDC context = GetDC(label);
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 100; ++x)
            pixels.push_back(GetPixel(context, x, y));
    ReleaseDC(label, context);
    return pixels;
}

}  // namespace

TEST_F(FormsTest, LabelThatGetsAnotherSizeBreaksItsLinesAnew) {
    const auto shown = [this](const wchar_t* first, const wchar_t* then) {
        RunWithForm(
            L"box.Move 3000, 3000\r\nfrm.ScaleMode = 3\r\nSet lbl = frm.AddControl(\"Label\", \"lbl\")\r\n"
            L"lbl.BackColor = &HFFFFFF\r\nlbl.ForeColor = 0\r\nlbl.Caption = \"HH HH HH HH\"\r\n"
            L"lbl.Alignment = 2\r\nlbl.Move 0, 0, " +
            std::wstring(first) + L"\r\nHost.DoEvents\r\nlbl.Move 0, 0, " + then + L"\r\nHost.DoEvents");
        return PixelsOf(Control(L"lbl"));
    };
    const auto narrow = shown(L"30, 60", L"30, 60");
    const auto wide = shown(L"100, 60", L"100, 60");

    EXPECT_NE(narrow, wide);
    EXPECT_TRUE(shown(L"100, 60", L"30, 60") == narrow);
    EXPECT_TRUE(shown(L"30, 60", L"100, 60") == wide);
}

TEST_F(FormsTest, LabelIsDrawnAgainWhenItsFontChanges) {
    const auto width = [this](const wchar_t* change) {
        RunWithForm(std::wstring(L"box.Move 3000, 3000\r\nfrm.ScaleMode = 3\r\n") +
                    L"Set lbl = frm.AddControl(\"Label\", \"lbl\")\r\nlbl.Move 0, 0, 100, 20\r\n" +
                    L"lbl.BackColor = &HFFFFFF\r\nlbl.ForeColor = 0\r\nlbl.Caption = \"HHH\"\r\n" +
                    L"Set other = frm.AddControl(\"Label\", \"other\")\r\nother.Font.Size = 14\r\n" +
                    L"Host.DoEvents\r\n" + change);
        const auto [first, last] = WrittenColumns(Control(L"lbl"));
        return last - first;
    };
    const int usual = width(L"");

    EXPECT_GT(width(L"lbl.Font.Size = 14"), usual + 5);
    EXPECT_GT(width(L"Set lbl.Font = other.Font"), usual + 5);
}

TEST_F(FormsTest, AmpersandOfALabelIsAnAccessKeyUnlessTheScriptSaysOtherwise) {
    const auto width = [this](const wchar_t* setting) {
        RunWithForm(std::wstring(L"box.Move 3000, 3000\r\nfrm.ScaleMode = 3\r\n") +
                    L"Set lbl = frm.AddControl(\"Label\", \"lbl\")\r\nlbl.Move 0, 0, 100, 20\r\n" +
                    L"lbl.BackColor = &HFFFFFF\r\nlbl.ForeColor = 0\r\n" + setting);
        const auto [first, last] = WrittenColumns(Control(L"lbl"));
        return last - first;
    };
    EXPECT_EQ(width(L"lbl.Caption = \"H&HH\""), width(L"lbl.Caption = \"HHH\""));
    EXPECT_GT(width(L"lbl.Caption = \"H&HH\"\r\nlbl.UseMnemonic = False"), width(L"lbl.Caption = \"HHH\"") + 3);
}

namespace {

class MdiTest : public FormsTest {
protected:
    int RunWithChildren(const std::wstring& script) {
        return Run(
            L"Set mdi = Host.CreateMDIForm(\"mdi\")\r\nmdi.Show\r\n"
            L"Set one = Host.CreateForm(\"one\", mdi)\r\nSet two = Host.CreateForm(\"two\", mdi)\r\n"
            L"Dim refuse\r\n"
            L"Sub one_Activate\r\nSource.Note \"one active\"\r\nEnd Sub\r\n"
            L"Sub two_Activate\r\nSource.Note \"two active\"\r\nEnd Sub\r\n"
            L"Sub mdi_Unload(Cancel)\r\nSource.Note \"mdi unload\"\r\nEnd Sub\r\n"
            L"Sub one_Unload(Cancel)\r\nSource.Note \"one unload\"\r\nEnd Sub\r\n"
            L"Sub two_Unload(Cancel)\r\nSource.Note \"two unload\"\r\nCancel = refuse\r\nEnd Sub\r\n" +
            script);
    }
};

}  // namespace

TEST_F(MdiTest, ChildIsActivatedWhenItIsShownAndWhenItComesToTheFront) {
    RunWithChildren(
        L"Source.Note \"hidden\"\r\none.Show\r\nSource.Note \"shown\"\r\none.Show\r\ntwo.Show\r\n"
        L"one.SetFocus\r\none.SetFocus\r\ntwo.Hide\r\ntwo.Show\r\none.Show");

    EXPECT_EQ(notes,
              Notes({L"hidden", L"one active", L"shown", L"two active", L"one active", L"two active", L"one active"}));
}

TEST_F(MdiTest, HiddenChildHasThePlaceOfItsNormalState) {
    const std::wstring note = NotePlaceOf(L"one");
    RunWithChildren(L"one.Show\r\none.Move 150, 300, 3000, 2400\r\none.WindowState = 2\r\none.Hide\r\n" + note +
                    L"one.WindowState = 0\r\n" + note + L"one.Show\r\n" + note);

    EXPECT_EQ(notes, Notes({L"one active", L"2 150 300 3000 2400", L"0 150 300 3000 2400", L"one active",
                            L"0 150 300 3000 2400"}));
}

TEST_F(MdiTest, ChildrenUnloadBeforeTheirForm) {
    RunWithChildren(L"one.Show\r\nmdi.Close\r\nSource.Note \"closed\"\r\n" + NoteErrorOf(L"mdi.Show"));

    EXPECT_EQ(notes, Notes({L"one active", L"one unload", L"two unload", L"mdi unload", L"closed", L"91"}));
}

TEST_F(MdiTest, ChildMayRefuseToUnload) {
    RunWithChildren(L"refuse = 1\r\nmdi.Close\r\nSource.Note mdi.Visible & two.Name\r\n" + NoteErrorOf(L"one.Show"));

    EXPECT_EQ(notes, Notes({L"one unload", L"two unload", L"Truetwo", L"91"}));
}

}  // namespace kwohost::tests
