#include "script_test.h"
#include "window_text.h"

namespace kwohost::tests {

namespace {

constexpr DWORD kDialogBox = 0x8002;

bool IsBox(HWND window) {
    return window && GetClassLongW(window, GCW_ATOM) == kDialogBox;
}

void Send(KEYBDINPUT key) {
    INPUT inputs[2] = {};
    for (INPUT& input : inputs) {
        input.type = INPUT_KEYBOARD;
        input.ki = key;
    }
    inputs[1].ki.dwFlags |= KEYEVENTF_KEYUP;
    SendInput(2, inputs, sizeof(INPUT));
}

void Press(WORD key) {
    Send({key, 0, 0, 0, 0});
}

/// A character, wherever the keyboard has it.
void Type(wchar_t character) {
    Send({0, static_cast<WORD>(character), KEYEVENTF_UNICODE, 0, 0});
}

/// Closes a message box, even if it does not get the keys.
void Answer(HWND box) {
    PostMessageW(box, WM_COMMAND, IDOK, 0);
}

/// What the user does when the next box has opened.
std::function<void(HWND box)> theUser;

void CALLBACK LetTheUserAct(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = GetActiveWindow();
    if (!IsBox(box)) return;
    KillTimer(nullptr, timer);
    // It may say what happens to the box after this one.
    const auto act = theUser;
    act(box);
}

class BoxesTest : public ScriptTest {
protected:
    explicit BoxesTest(Language language = Language::VBScript) : ScriptTest(language) {}
    ~BoxesTest() override { theUser = nullptr; }

    static void WhenABoxOpens(std::function<void(HWND)> action) {
        theUser = std::move(action);
        SetTimer(nullptr, 0, 20, LetTheUserAct);
    }
    /// The script's handler of the tick runs while the box is open.
    void TickWhenABoxOpens() {
        WhenABoxOpens([this](HWND box) {
            Tick(1);
            Answer(box);
        });
    }
    int RunWithForms(const std::wstring& script) {
        return Run(
            L"Set one = Host.CreateForm(\"one\")\r\nSet two = Host.CreateForm(\"two\")\r\n"
            L"one.Show\r\ntwo.Show\r\n" +
            Until(L"Screen.ActiveForm Is two") + script);
    }
    static HWND FormOf(const wchar_t* name) { return FindWindowW(kFormClass, name); }
};

class JScriptBoxesTest : public BoxesTest {
protected:
    JScriptBoxesTest() : BoxesTest(Language::JScript) {}
};

}  // namespace

TEST_F(BoxesTest, MessageBoxBelongsToTheActiveFormAndDisablesAllForms) {
    WhenABoxOpens([this](HWND box) {
        notes.push_back(TextOf(box));
        EXPECT_EQ(GetWindow(box, GW_OWNER), FormOf(L"two"));
        EXPECT_FALSE(IsWindowEnabled(FormOf(L"one")));
        EXPECT_FALSE(IsWindowEnabled(FormOf(L"two")));
        Press(VK_RETURN);
    });

    RunWithForms(
        L"Source.Note MsgBox(\"Go on?\", vbOKCancel, \"Question\")\r\n"
        L"Source.Note one.Enabled & two.Enabled");

    EXPECT_EQ(notes, Notes({L"Question", L"1", L"TrueTrue"}));
}

TEST_F(BoxesTest, FormThatTheScriptHasDisabledStaysSo) {
    WhenABoxOpens([](HWND) { Press(VK_RETURN); });

    RunWithForms(L"one.Enabled = False\r\nMsgBox \"x\"\r\nSource.Note one.Enabled & two.Enabled");

    EXPECT_EQ(notes, Notes({L"FalseTrue"}));
}

TEST_F(BoxesTest, FormsThatAreShownMeanwhileStayBehindTheBox) {
    for (const wchar_t* const action :
         {L"two.Show", L"one.Show", L"two.ZOrder", L"one.ZOrder", L"one.Visible = True", L"one.WindowState = 2",
          L"two.WindowState = 2", L"one.WindowState = 1\r\none.WindowState = 0", L"one.Hide\r\none.Show",
          L"hidden.Show", L"Set made = Host.CreateForm(\"made\")\r\nmade.Show", L"one.SetFocus"}) {
        notes.clear();
        WhenABoxOpens([this](HWND box) {
            Tick(1);
            host->Wait(std::chrono::milliseconds(0));
            EXPECT_EQ(GetForegroundWindow(), box);
            EXPECT_EQ(GetActiveWindow(), box);
            Answer(box);
        });

        RunWithForms(
            L"WScript.ConnectObject Source, \"s\"\r\nSet hidden = Host.CreateForm(\"hidden\")\r\nDim made\r\n"
            L"Sub s_Tick(n)\r\n" +
            std::wstring(action) + L"\r\nEnd Sub\r\nSource.Note MsgBox(\"x\")");

        EXPECT_EQ(notes, Notes({L"1"})) << Bstr(action).Get();
    }
}

TEST_F(BoxesTest, FormThatWasShownMeanwhileComesToTheFrontAfterTheBox) {
    const auto activeAfter = [this](const std::wstring& action) {
        notes.clear();
        TickWhenABoxOpens();
        RunWithForms(L"WScript.ConnectObject Source, \"s\"\r\nSub s_Tick(n)\r\n" + action +
                     L"\r\nEnd Sub\r\nMsgBox \"x\"\r\nSource.Note Screen.ActiveForm.Name");
        return notes;
    };
    EXPECT_EQ(activeAfter(L"one.Show"), Notes({L"one"}));
    EXPECT_EQ(activeAfter(L"two.Show"), Notes({L"two"}));
    EXPECT_EQ(activeAfter(L"one.Show\r\none.Hide"), Notes({L"two"}));
    EXPECT_EQ(activeAfter(L"one.Show\r\none.Close"), Notes({L"two"}));
}

TEST_F(BoxesTest, FormThatComesToTheFrontAfterTheBoxMayCloseAtOnce) {
    TickWhenABoxOpens();

    RunWithForms(
        L"WScript.ConnectObject Source, \"s\"\r\nSub s_Tick(n)\r\none.Show\r\ncloses = True\r\nEnd Sub\r\n"
        L"Dim closes\r\nSub one_Activate\r\nIf Not closes Then Exit Sub\r\none.Close\r\nSet one = "
        L"Nothing\r\nSource.Note \"closed\"\r\nEnd Sub\r\n"
        L"Source.Note MsgBox(\"x\")");

    EXPECT_EQ(notes, Notes({L"closed", L"1"}));
}

TEST_F(BoxesTest, FormShownOverABoxWithoutAFormStaysBehindIt) {
    WhenABoxOpens([this](HWND box) {
        Tick(1);
        EXPECT_EQ(GetForegroundWindow(), box);
        Answer(box);
    });

    Run(L"WScript.ConnectObject Source, \"s\"\r\nSet frm = Host.CreateForm(\"frm\")\r\n"
        L"Sub s_Tick(n)\r\nfrm.Show\r\nEnd Sub\r\nSource.Note MsgBox(\"x\")\r\nSource.Note frm.Enabled");

    EXPECT_EQ(notes, Notes({L"1", L"True"}));
}

TEST_F(BoxesTest, HiddenAndNewFormsAreDisabledToo) {
    TickWhenABoxOpens();

    RunWithForms(
        L"WScript.ConnectObject Source, \"s\"\r\nSet hidden = Host.CreateForm(\"hidden\")\r\nDim made\r\n"
        L"Sub s_Tick(n)\r\nSet made = Host.CreateForm(\"made\")\r\n"
        L"Source.Note hidden.Enabled & made.Enabled\r\nEnd Sub\r\n"
        L"MsgBox \"x\"\r\nSource.Note hidden.Enabled & made.Enabled");

    EXPECT_EQ(notes, Notes({L"FalseFalse", L"TrueTrue"}));
}

TEST_F(BoxesTest, EnabledThatTheScriptSetsMeanwhileCountsAfterTheBox) {
    TickWhenABoxOpens();

    RunWithForms(
        L"WScript.ConnectObject Source, \"s\"\r\nSet three = Host.CreateForm(\"three\")\r\n"
        L"three.Enabled = False\r\n"
        L"Sub s_Tick(n)\r\none.Enabled = False\r\ntwo.Enabled = False\r\nthree.Enabled = True\r\n"
        L"Source.Note one.Enabled & two.Enabled & three.Enabled\r\nEnd Sub\r\n"
        L"MsgBox \"x\"\r\nSource.Note one.Enabled & two.Enabled & three.Enabled");

    EXPECT_EQ(notes, Notes({L"FalseFalseFalse", L"FalseFalseTrue"}));
}

TEST_F(BoxesTest, BoxOverABoxLeavesTheFormsDisabledWhenItCloses) {
    WhenABoxOpens([this](HWND outer) {
        WhenABoxOpens([this, outer](HWND inner) {
            EXPECT_NE(inner, outer);
            EXPECT_FALSE(IsWindowEnabled(outer));
            Answer(inner);
        });
        Tick(1);
        EXPECT_TRUE(IsWindowEnabled(outer));
        Answer(outer);
    });

    RunWithForms(
        L"WScript.ConnectObject Source, \"s\"\r\n"
        L"Sub s_Tick(n)\r\nMsgBox \"inner\"\r\nSource.Note one.Enabled & two.Enabled\r\nEnd Sub\r\n"
        L"MsgBox \"outer\"\r\nSource.Note one.Enabled & two.Enabled");

    EXPECT_EQ(notes, Notes({L"FalseFalse", L"TrueTrue"}));
}

TEST_F(BoxesTest, BoxWithoutAVisibleFormHasNoOwnerAndTheScriptsName) {
    WhenABoxOpens([this](HWND box) {
        notes.push_back(TextOf(box));
        EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
        Press(VK_RETURN);
    });

    Run(L"Set frm = Host.CreateForm(\"frm\")\r\nMsgBox True");

    EXPECT_EQ(notes, Notes({L"events.vbs"}));
}

TEST_F(BoxesTest, FocusReturnsToTheControlThatHadIt) {
    WhenABoxOpens([](HWND) { Press(VK_RETURN); });

    RunWithForms(
        L"Set txtA = two.AddControl(\"TextBox\", \"txtA\")\r\n"
        L"Set txtB = two.AddControl(\"TextBox\", \"txtB\")\r\n"
        L"Sub txtA_GotFocus\r\nSource.Note \"txtA\"\r\nEnd Sub\r\n"
        L"txtB.SetFocus\r\nMsgBox \"x\"\r\nSource.Note two.ActiveControl.Name");

    EXPECT_EQ(notes, Notes({L"txtB"}));
}

TEST_F(BoxesTest, KeysChooseAButton) {
    WhenABoxOpens([](HWND) {
        Press(VK_RIGHT);
        Press(VK_RETURN);
    });

    RunWithForms(L"Source.Note MsgBox(\"x\", vbYesNo + vbQuestion)");

    EXPECT_EQ(notes, Notes({L"7"}));
}

TEST_F(BoxesTest, ButtonsThatDoNotExistRaise5) {
    RunWithForms(
        L"On Error Resume Next\r\nMsgBox \"x\", 7\r\nSource.Note Err.Number\r\nErr.Clear\r\n"
        L"MsgBox \"x\", &H80\r\nSource.Note Err.Number");

    EXPECT_EQ(notes, Notes({L"5", L"5"}));
}

TEST_F(BoxesTest, BoxThatLosesItsFormIsCancelled) {
    WhenABoxOpens([](HWND) { SendMessageW(FormOf(L"two"), WM_CLOSE, 0, 0); });
    RunWithForms(L"Source.Note MsgBox(\"x\", vbOKCancel)\r\nSource.Note one.Enabled");

    WhenABoxOpens([](HWND) { SendMessageW(FormOf(L"two"), WM_CLOSE, 0, 0); });
    RunWithForms(L"Source.Note IsEmpty(InputBox(\"x\", , \"first\"))\r\nSource.Note one.Enabled");

    EXPECT_EQ(notes, Notes({L"2", L"True", L"True", L"True"}));
}

TEST_F(BoxesTest, InputBoxReturnsWhatTheUserWrites) {
    WhenABoxOpens([this](HWND box) {
        notes.push_back(TextOf(box));
        EXPECT_EQ(GetWindow(box, GW_OWNER), FormOf(L"two"));
        EXPECT_FALSE(IsWindowEnabled(FormOf(L"one")));
        notes.push_back(TextOf(GetFocus()));
        Type(L'4');
        Type(L'2');
        Press(VK_RETURN);
    });

    RunWithForms(L"Source.Note InputBox(\"How many?\", \"Number\", \"selected\")\r\nSource.Note one.Enabled");

    EXPECT_EQ(notes, Notes({L"Number", L"selected", L"42", L"True"}));
}

TEST_F(BoxesTest, CancelledInputBoxReturnsEmpty) {
    WhenABoxOpens([](HWND) { Press(VK_ESCAPE); });

    RunWithForms(L"answer = InputBox(\"x\", , \"first\")\r\nSource.Note IsEmpty(answer) & (answer = \"\")");

    EXPECT_EQ(notes, Notes({L"TrueTrue"}));
}

TEST_F(BoxesTest, InputBoxOpensWhereTheScriptWantsIt) {
    RECT place = {};
    WhenABoxOpens([&place](HWND box) {
        GetWindowRect(box, &place);
        Press(VK_RETURN);
    });

    RunWithForms(L"InputBox \"x\", , , 20 * Screen.TwipsPerPixelX, 30 * Screen.TwipsPerPixelY");

    EXPECT_EQ(place.left, 20);
    EXPECT_EQ(place.top, 30);
}

TEST_F(BoxesTest, BoxTakesKeysWhileAnEventOfTheScriptSleeps) {
    WhenABoxOpens([this](HWND box) {
        Press(VK_RETURN);
        for (int turn = 0; turn < 400 && IsWindowVisible(box); ++turn)
            host->Wait(std::chrono::milliseconds(20));
        notes.push_back(IsWindowVisible(box) ? L"still open" : L"closed");
    });

    RunWithForms(L"Source.Note MsgBox(\"x\")");

    EXPECT_EQ(notes, Notes({L"closed", L"1"}));
}

TEST_F(JScriptBoxesTest, FunctionsAreThereInJScriptToo) {
    WhenABoxOpens([](HWND) {
        Type(L'7');
        Press(VK_RETURN);
    });
    Run(L"Source.Note(InputBox('x'));");

    WhenABoxOpens([](HWND) { Press(VK_ESCAPE); });
    Run(L"Source.Note(InputBox('x') === undefined ? 'undefined' : 'text');");

    WhenABoxOpens([](HWND) { Press(VK_RETURN); });
    Run(L"Source.Note(MsgBox('x', 1));");

    EXPECT_EQ(notes, Notes({L"7", L"undefined", L"1"}));
}

}  // namespace kwohost::tests
