#include "script_test.h"

namespace kwohost::tests {

namespace {

/// A form `frm` with two picture boxes; a class whose objects note the events that they get.
class ForwardingTest : public ScriptTest {
protected:
    explicit ForwardingTest(Language language = Language::VBScript) : ScriptTest(language) {}

    int RunWithTarget(const std::wstring& script) {
        return Run(
            L"Class Target\r\n"
            L"Public Name\r\n"
            L"Public Sub MouseDown(Button, Shift, X, Y)\r\n"
            L"Source.Note Name & \" down \" & Button & \" \" & X & \" \" & Y\r\nEnd Sub\r\n"
            L"Public Sub MouseUp(Button, Shift, X, Y)\r\nSource.Note Name & \" up\"\r\nEnd Sub\r\n"
            L"Public Sub KeyDown(KeyCode, Shift)\r\nSource.Note Name & \" key \" & KeyCode\r\n"
            L"If KeyCode = 65 Then KeyCode = 0\r\nEnd Sub\r\n"
            L"Public Sub Form_KeyDown(KeyCode, Shift)\r\nSource.Note Name & \" form key \" & KeyCode\r\n"
            L"If KeyCode = 66 Then KeyCode = 0\r\nEnd Sub\r\n"
            L"End Class\r\n"
            L"Set target1 = New Target\r\ntarget1.Name = \"1\"\r\nSet target2 = New Target\r\ntarget2.Name = \"2\"\r\n"
            L"Set frm = Host.CreateForm(\"frm\")\r\nfrm.Move 0, 0, 4500, 4500\r\nfrm.ScaleMode = 3\r\n"
            L"Set box = frm.AddControl(\"PictureBox\", \"box\")\r\nbox.ScaleMode = 3\r\nbox.Move 0, 0, 100, 100\r\n"
            L"Set other = frm.AddControl(\"PictureBox\", \"other\")\r\nother.ScaleMode = 3\r\n"
            L"other.Move 100, 0, 100, 100\r\nfrm.Show\r\n" +
            Until(L"Screen.ActiveForm Is frm") + script);
    }
};

class JScriptForwardingTest : public ForwardingTest {
protected:
    JScriptForwardingTest() : ForwardingTest(Language::JScript) {}
};

}  // namespace

TEST_F(ForwardingTest, ObjectGetsEventsBeforeTheProcedureOfTheScript) {
    RunWithTarget(
        L"Host.Forward box, target1\r\n"
        L"Sub box_MouseUp(Button, Shift, X, Y)\r\nSource.Note \"script up\"\r\nEnd Sub\r\n"
        L"Host.Click box, 7, 8\r\nHost.Click other, 7, 8");

    EXPECT_EQ(notes, Notes({L"1 down 1 7 8", L"1 up", L"script up"}));
}

TEST_F(ForwardingTest, NamedEventsAreForwardedAlone) {
    RunWithTarget(
        L"Host.Forward box, target1\r\nHost.Forward box, target2\r\nHost.Forward box, target1, \" mouseup  Resize "
        L"\"\r\n"
        L"Host.Click box, 7, 8");

    EXPECT_EQ(notes, Notes({L"2 down 1 7 8", L"1 up", L"2 up"}));
}

TEST_F(ForwardingTest, NothingEndsForwarding) {
    RunWithTarget(L"Host.Forward box, target1\r\nHost.Forward box, Nothing\r\nHost.Click box, 7, 8");

    EXPECT_EQ(notes, Notes());
}

TEST_F(ForwardingTest, KeyThatTheObjectUsesUpHasNoCharacter) {
    RunWithTarget(
        L"Host.Forward box, target1, \"KeyDown\"\r\n"
        L"Sub box_KeyPress(KeyAscii)\r\nSource.Note Chr(KeyAscii)\r\nEnd Sub\r\n"
        L"box.SetFocus\r\nHost.TypeKeys \"ac\"");

    EXPECT_EQ(notes, Notes({L"1 key 65", L"1 key 67", L"c"}));
}

TEST_F(ForwardingTest, ObjectsOfControlsHaveTheKeysOfTheForm) {
    RunWithTarget(
        L"Host.Forward box, target1\r\nHost.Forward other, target2, \"Form_KeyDown\"\r\n"
        L"Sub other_KeyDown(KeyCode, Shift)\r\nSource.Note \"script key \" & KeyCode\r\nEnd Sub\r\n"
        L"other.SetFocus\r\nHost.TypeKeys \"cb\"");

    EXPECT_EQ(notes, Notes({L"1 form key 67", L"2 form key 67", L"script key 67", L"1 form key 66"}));
}

TEST_F(ForwardingTest, EventsOfTheFormCanBeForwarded) {
    RunWithTarget(L"Host.Forward frm, target1, \"MouseDown\"\r\nHost.Click frm, 250, 150");

    EXPECT_EQ(notes, Notes({L"1 down 1 250 150"}));
}

TEST_F(ForwardingTest, ObjectMayCloseTheForm) {
    RunWithTarget(
        L"Class Closer\r\nPublic Sub MouseDown(Button, Shift, X, Y)\r\nfrm.Close\r\nEnd Sub\r\nEnd Class\r\n"
        L"Host.Forward box, New Closer\r\nHost.Forward box, target1\r\n"
        L"Sub box_MouseDown(Button, Shift, X, Y)\r\nSource.Note \"script\"\r\nEnd Sub\r\nHost.Click box, 7, 8");

    EXPECT_EQ(notes, Notes());
}

TEST_F(ForwardingTest, ObjectIsReleasedWithTheWindow) {
    const int before = EventSourceObject::Living();
    source->OnCall(L"Another", [](Call& call) { call.ReturnObject(MakeObject<EventSourceObject>()); });

    RunWithTarget(L"Host.Forward box, Source.Another()\r\nSource.Note \"kept\"");
    EXPECT_EQ(EventSourceObject::Living(), before + 1);
    SendMessageW(FindWindowW(kFormClass, L"frm"), WM_CLOSE, 0, 0);

    EXPECT_EQ(EventSourceObject::Living(), before);
}

TEST_F(ForwardingTest, WrongArgumentsAreErrors) {
    const auto noteErrorOf = [](const std::wstring& statement) {
        return L"On Error Resume Next\r\nErr.Clear\r\n" + statement + L"\r\nSource.Note Err.Number\r\n";
    };
    RunWithTarget(noteErrorOf(L"Host.Forward target1, box") + noteErrorOf(L"Host.Forward Nothing, target1") +
                  noteErrorOf(L"Host.Forward box, 7") + noteErrorOf(L"frm.Close : Host.Forward box, target1"));

    EXPECT_EQ(notes, Notes({L"13", L"91", L"424", L"91"}));
}

using ForwardingDeathTest = ForwardingTest;

TEST_F(ForwardingDeathTest, ErrorOfTheObjectEndsTheScript) {
    source->OnCall(L"MouseDown", [](Call&) { Fail(RuntimeError::Overflow, L"Too far"); });
    EXPECT_EXIT(RunWithTarget(L"Host.Forward box, Source\r\nHost.Click box, 7, 8\r\nWScript.StdErr.Write \"late\""),
                testing::ExitedWithCode(1), "^C:.events.vbs: 6 \\(0x800A0006\\) kwohost: Too far\r?\n$");
}

TEST_F(JScriptForwardingTest, ObjectOfJScriptGetsEvents) {
    Run(L"var frm = Host.CreateForm('frm'); frm.Move(0, 0, 4500, 4500);\r\n"
        L"var box = frm.AddControl('PictureBox', 'box'); box.ScaleMode = 3; frm.Show(); Host.DoEvents();\r\n"
        L"Host.Forward(box, { MouseDown: function (button, shift, x, y) { Source.Note(button + '/' + x); } });\r\n"
        L"Host.Click(box, 7, 8);");

    EXPECT_EQ(notes, Notes({L"1/7"}));
}

}  // namespace kwohost::tests
