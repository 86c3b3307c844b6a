#include <algorithm>
#include <string>

#include "access_key.h"
#include "form.h"
#include "memory.h"
#include "script_test.h"
#include "support/gdi_objects.h"
#include "units.h"

namespace kwohost::tests {

namespace {

/// A visible form `frm`, on which a script puts controls.
class ControlsTest : public ScriptTest {
protected:
    /// The system gives a form the keyboard some time after it is in front, and nothing tells when: a key that is held
    /// by then counts as released.
    int RunOnForm(const std::wstring& script) {
        return Run(
            L"Set frm = Host.CreateForm(\"frm\")\r\nfrm.Move 0, 0, 6000, 4500\r\nfrm.Show\r\nWScript.Sleep 100\r\n" +
            script);
    }
    /// The only child of that class of the system.
    static HWND Child(const wchar_t* className) {
        return FindWindowExW(FindWindowW(kFormClass, L"frm"), nullptr, className, nullptr);
    }
    static DWORD StyleOf(HWND window) { return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)); }
};

/// Notes the number of the error that `statement` raises; 0 for none.
std::wstring Raising(const std::wstring& statement) {
    return L"On Error Resume Next\r\nErr.Clear\r\n" + statement + L"\r\nSource.Note Err.Number\r\nOn Error GoTo 0\r\n";
}

/// Notes what an expression is.
std::wstring Noting(const std::wstring& expression) {
    return L"Source.Note " + expression + L"\r\n";
}

/// A procedure that notes its own name.
std::wstring Heard(const std::wstring& procedure) {
    return L"Sub " + procedure + L"\r\nSource.Note \"" + procedure + L"\"\r\nEnd Sub\r\n";
}

constexpr wchar_t kTextBox[] = L"Set txt = frm.AddControl(\"TextBox\", \"txt\")\r\n";
constexpr wchar_t kListBox[] = L"Set lst = frm.AddControl(\"ListBox\", \"lst\")\r\nlst.Move 0, 0, 3000, 2000\r\n";
constexpr wchar_t kComboBox[] = L"Set cbo = frm.AddControl(\"ComboBox\", \"cbo\")\r\ncbo.Move 0, 0, 3000\r\n";
constexpr wchar_t kCheckBox[] = L"Set chk = frm.AddControl(\"CheckBox\", \"chk\")\r\n";
constexpr wchar_t kButton[] = L"Set cmd = frm.AddControl(\"CommandButton\", \"cmd\")\r\n";

}  // namespace

TEST(AccessKey, FollowsASingleAmpersand) {
    EXPECT_EQ(AccessKeyOf(L"&Save"), L'S');
    EXPECT_EQ(AccessKeyOf(L"Sa&ve"), L'V');
    EXPECT_EQ(AccessKeyOf(L"Salt && &pepper"), L'P');
    EXPECT_EQ(AccessKeyOf(L"Salt && pepper"), 0);
    EXPECT_EQ(AccessKeyOf(L"at the end &"), 0);
    EXPECT_EQ(AccessKeyOf(L""), 0);
}

TEST_F(ControlsTest, TypesHaveTheirNames) {
    RunOnForm(
        L"For Each kind In Array(\"TextBox\", \"ListBox\", \"ComboBox\", \"CheckBox\", \"CommandButton\")\r\n"
        L"Source.Note TypeName(frm.AddControl(kind, \"a\" & kind))\r\nNext");

    EXPECT_EQ(notes, Notes({L"TextBox", L"ListBox", L"ComboBox", L"CheckBox", L"CommandButton"}));
}

TEST_F(ControlsTest, NewControlsAreEmptyTabStops) {
    RunOnForm(
        std::wstring(kTextBox) + kListBox + kCheckBox + kButton +
        Noting(L"\"[\" & txt & lst & txt.PasswordChar & cmd.Caption & chk.Caption & \"]\"") +
        Noting(L"txt.MaxLength & txt.SelStart & txt.SelLength & txt.ScrollBars & txt.Alignment & txt.BorderStyle") +
        Noting(L"txt.Locked & txt.MultiLine") + Noting(L"lst.ListCount & lst.ListIndex & lst.NewIndex & lst.TopIndex") +
        Noting(L"chk & chk.Alignment & cmd & cmd.Default & cmd.Cancel") +
        Noting(L"txt.TabStop And lst.TabStop And chk.TabStop And cmd.TabStop") +
        Noting(L"txt.Visible And txt.Enabled And txt.Left = 0 And txt.Width = 100 * Screen.TwipsPerPixelX"));

    EXPECT_EQ(notes, Notes({L"[]", L"000001", L"FalseFalse", L"0-1-10", L"00FalseFalseFalse", L"True", L"True"}));
}

TEST_F(ControlsTest, BadValuesRaiseErrors) {
    const struct {
        const wchar_t* statement;
        const wchar_t* error;
    } kCases[] = {
        {L"txt.MaxLength = -1", L"380"},      {L"txt.SelStart = -1", L"380"},
        {L"txt.SelLength = -1", L"380"},      {L"txt.PasswordChar = \"ab\"", L"380"},
        {L"txt.ScrollBars = 4", L"380"},      {L"txt.Alignment = -1", L"380"},
        {L"txt.BorderStyle = 2", L"380"},     {L"txt.MaxLength = 1E10", L"6"},
        {L"txt.MaxLength = \"many\"", L"13"}, {L"txt.Width = -15", L"380"},
        {L"Set txt.Font = frm", L"13"},       {L"chk.Value = 3", L"380"},
        {L"chk.Value = -1", L"380"},          {L"chk.Alignment = 2", L"380"},
        {L"lst.ListIndex = 1", L"380"},       {L"lst.ListIndex = -2", L"380"},
        {L"lst.TopIndex = 1", L"380"},        {L"lst.Text = \"two\"", L"380"},
        {L"lst.AddItem \"x\", 2", L"5"},      {L"lst.AddItem \"x\", -1", L"5"},
        {L"lst.RemoveItem 1", L"5"},          {L"lst.RemoveItem -1", L"5"},
        {L"x = lst.List(1)", L"381"},         {L"x = lst.List(-1)", L"381"},
        {L"lst.List(1) = \"x\"", L"381"},     {L"x = lst.ItemData(1)", L"381"},
        {L"lst.ItemData(1) = 1", L"381"},     {L"x = lst.List", L"450"},
        {L"lst.NewIndex = 1", L"438"},
    };
    std::wstring script = std::wstring(kTextBox) + kListBox + kCheckBox + L"lst.AddItem \"one\"\r\nDim x\r\n";
    Notes expected;
    for (const auto& [statement, error] : kCases) {
        script += Raising(statement);
        expected.emplace_back(error);
    }

    RunOnForm(script);

    EXPECT_EQ(notes, expected);
}

TEST_F(ControlsTest, ContainerIsTheFormOfTheControlOrAPanelOnIt) {
    RunOnForm(std::wstring(kTextBox) +
              L"Set pnl = frm.AddControl(\"Panel\", \"pnl\")\r\nSet other = Host.CreateForm(\"other\")\r\n"
              L"Set foreign = other.AddControl(\"Panel\", \"foreign\")\r\n" +
              Raising(L"Set txt.Container = other") + Raising(L"Set txt.Container = foreign") +
              Noting(L"txt.Container.Name") + Raising(L"frm.AddControl \"TextBox\", \"t\", other") +
              Raising(L"frm.AddControl \"TextBox\", \"t\", foreign") + Raising(L"Set txt.Container = pnl") +
              Noting(L"txt.Container.Name") + Raising(L"frm.AddControl \"TextBox\", \"t\", pnl") +
              Raising(L"Set txt.Container = frm") + Noting(L"txt.Container.Name") + L"other.Close\r\n" +
              Raising(L"Set txt.Container = other"));

    EXPECT_EQ(notes, Notes({L"425", L"425", L"frm", L"425", L"425", L"0", L"pnl", L"0", L"0", L"frm", L"91"}));
}

TEST_F(ControlsTest, TextBoxTellsOfChangesByTheScriptOnce) {
    RunOnForm(kTextBox + Heard(L"txt_Change") + L"txt.Text = \"a\"\r\ntxt.Text = \"a\"\r\ntxt.Text = \"b\"\r\n" +
              Noting(L"txt") + L"txt.MultiLine = True\r\ntxt.Text = \"c\"\r\n" + Noting(L"txt.Text"));

    EXPECT_EQ(notes, Notes({L"txt_Change", L"txt_Change", L"b", L"txt_Change", L"c"}));
}

TEST_F(ControlsTest, TypedCharacterGoesThroughTheEventsIntoTheText) {
    RunOnForm(kTextBox + Heard(L"txt_GotFocus") + Heard(L"txt_LostFocus") +
              L"Sub txt_KeyDown(KeyCode, Shift)\r\nSource.Note \"down \" & KeyCode\r\n"
              L"If KeyCode = 68 Then KeyCode = 0\r\nEnd Sub\r\n"
              L"Sub txt_KeyPress(KeyAscii)\r\nSource.Note \"press \" & Chr(KeyAscii)\r\n"
              L"If KeyAscii = 98 Then KeyAscii = 66\r\nIf KeyAscii = 99 Then KeyAscii = 0\r\nEnd Sub\r\n"
              L"Sub txt_KeyUp(KeyCode, Shift)\r\nSource.Note \"up \" & KeyCode\r\nEnd Sub\r\n"
              L"Sub txt_Change\r\nSource.Note \"text \" & txt.Text\r\nEnd Sub\r\n"
              L"txt.SetFocus\r\nHost.TypeKeys \"abcd\"");

    EXPECT_EQ(notes, Notes({L"txt_GotFocus", L"down 65", L"press a", L"text a", L"up 65", L"down 66", L"press b",
                            L"text aB", L"up 66", L"down 67", L"press c", L"up 67", L"down 68", L"up 68"}));
}

TEST_F(ControlsTest, MaxLengthCutsWhatIsAssignedAndTyped) {
    RunOnForm(kTextBox +
              std::wstring(L"txt.MaxLength = 3\r\ntxt.Text = \"abcdef\"\r\nSource.Note txt\r\ntxt.Text = \"x\"\r\n"
                           L"txt.SetFocus\r\nHost.TypeKeys \"yyyy\"\r\nSource.Note Len(txt)\r\n"
                           L"txt.MaxLength = 0\r\ntxt.Text = String(70000, \"z\")\r\nSource.Note Len(txt.Text)\r\n"
                           L"txt.MaxLength = 2\r\nSource.Note Len(txt.Text)"));

    EXPECT_EQ(notes, Notes({L"abc", L"3", L"70000", L"70000"}));
}

TEST_F(ControlsTest, LockedTextIsChangedByTheScriptAlone) {
    RunOnForm(kTextBox + std::wstring(L"txt.Locked = True\r\ntxt.Text = \"set\"\r\ntxt.SetFocus\r\n"
                                      L"Host.TypeKeys \"x\"\r\nSource.Note txt & txt.Locked\r\n"
                                      L"txt.Locked = False\r\nHost.TypeKeys \"x\"\r\nSource.Note Len(txt.Text)"));

    EXPECT_EQ(notes, Notes({L"setTrue", L"4"}));
}

TEST_F(ControlsTest, SelectionIsKeptWithinTheText) {
    RunOnForm(kTextBox + std::wstring(L"txt.Text = \"abcdef\"\r\ntxt.SelStart = 1\r\ntxt.SelLength = 3\r\n") +
              Noting(L"txt.SelStart & txt.SelLength & txt.SelText") + L"txt.SelText = \"-\"\r\n" + Noting(L"txt") +
              Noting(L"txt.SelStart & txt.SelLength") + L"txt.SelStart = 99\r\n" + Noting(L"txt.SelStart") +
              L"txt.SelStart = 2\r\ntxt.SelLength = 2147483647\r\n" + Noting(L"txt.SelText"));

    EXPECT_EQ(notes, Notes({L"13bcd", L"a-ef", L"20", L"4", L"ef"}));
}

TEST_F(ControlsTest, TextOfMoreLinesKeepsTheContent) {
    RunOnForm(kTextBox + Heard(L"txt_Change") + Heard(L"txt_GotFocus") + Heard(L"txt_LostFocus") +
              Heard(L"txt_Resize") +
              L"txt.Text = \"one\"\r\ntxt.SelStart = 3\r\ntxt.Move 150, 300, 1500, 900\r\ntxt.SetFocus\r\n"
              L"txt.MultiLine = True\r\ntxt.ScrollBars = 2\r\n" +
              Noting(L"txt.MultiLine & txt.SelStart & frm.ActiveControl.Name & txt.Left & txt.Height") +
              L"Host.TypeKeys \"{ENTER}2\"\r\n" + Noting(L"Replace(txt.Text, vbCrLf, \"/\")"));

    EXPECT_EQ(notes, Notes({L"txt_Change", L"txt_Resize", L"txt_GotFocus", L"True3txt150900", L"txt_Change",
                            L"txt_Change", L"one/2"}));
    EXPECT_TRUE(StyleOf(Child(L"EDIT")) & WS_VSCROLL);
    EXPECT_TRUE(StyleOf(Child(L"EDIT")) & ES_MULTILINE);
    EXPECT_EQ(FindWindowExW(GetParent(Child(L"EDIT")), Child(L"EDIT"), L"EDIT", nullptr), nullptr);
}

TEST_F(ControlsTest, RemadeTextBoxKeepsItsSettings) {
    RunOnForm(kTextBox +
              std::wstring(L"Set cmd = frm.AddControl(\"CommandButton\", \"cmd\")\r\n"
                           L"txt.Text = \"ab\"\r\ntxt.MaxLength = 4\r\ntxt.Locked = True\r\n"
                           L"txt.PasswordChar = \"*\"\r\ntxt.Enabled = False\r\ntxt.Visible = False\r\n"
                           L"txt.Alignment = 1\r\ntxt.BorderStyle = 0\r\n") +
              Noting(L"txt & txt.MaxLength & txt.Locked & txt.PasswordChar & txt.Enabled & txt.Visible"));

    const HWND edit = Child(L"EDIT");
    EXPECT_EQ(notes, Notes({L"ab4True*FalseFalse"}));
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), L'*');
    EXPECT_EQ(SendMessageW(edit, EM_GETLIMITTEXT, 0, 0), 4);
    EXPECT_TRUE(StyleOf(edit) & ES_RIGHT);
    EXPECT_TRUE(StyleOf(edit) & ES_READONLY);
    EXPECT_FALSE(GetWindowLongW(edit, GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
    EXPECT_EQ(GetWindow(edit, GW_HWNDNEXT), Child(L"BUTTON"));
}

TEST_F(ControlsTest, ControlThatCannotBeRemadeForLackOfMemoryStaysAsItWas) {
    const struct {
        const wchar_t* made;
        const wchar_t* member;
        LONG value;
        const wchar_t* className;
        const wchar_t* present;
    } kCases[] = {
        {L"Set one = frm.AddControl(\"TextBox\", \"one\")\r\none.Text = \"a text that needs memory of its own\"\r\n",
         L"MultiLine", -1, L"EDIT", L"one.Text = \"a text that needs memory of its own\" And Not one.MultiLine"},
        {L"Set one = frm.AddControl(\"ComboBox\", \"one\")\r\none.AddItem \"first item, with some more letters\"\r\n"
         L"one.AddItem \"second item, with some more letters\"\r\none.ListIndex = 1\r\n",
         L"Style", 2, L"COMBOBOX",
         L"one.Text = \"second item, with some more letters\" And one.ListCount = 2 And one.Style = 0"},
    };
    source->OnCall(L"Change", [](Call& call) {
        const ComPtr<IDispatch> control = call.Object(0);
        const DISPID id = IdOf(*control, call.Text(1).c_str());
        VARIANT value = Number(call.Whole(2));
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS params = {&value, &put, 1, 1};
        const FailingAllocation failing(call.Whole(3));
        const HRESULT result = control->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params,
                                               nullptr, nullptr, nullptr);
        call.ReturnTruth(FAILED(result));
    });
    for (const auto& [made, member, value, className, present] : kCases) {
        notes.clear();
        RunOnForm(std::wstring(made) + L"one.SetFocus\r\nFor failing = 0 To 200\r\n" + L"If Not Source.Change(one, \"" +
                  member + L"\", " + std::to_wstring(value) + L", failing) Then Exit For\r\nIf Not (" + present +
                  L") Then Exit For\r\n" + L"If frm.ActiveControl.Name <> \"one\" Then Exit For\r\nNext\r\n" +
                  Noting(L"failing > 1 And failing < 200") +
                  Noting(std::wstring(L"one.") + member + L" = " + std::to_wstring(value)));

        EXPECT_EQ(notes, Notes({L"True", L"True"})) << Bstr(member).Get();
        EXPECT_EQ(FindWindowExW(GetParent(Child(className)), Child(className), className, nullptr), nullptr);
    }
}

TEST_F(ControlsTest, ControlThatCannotBeMadeForLackOfMemoryLeavesNothing) {
    source->OnCall(L"Add", [](Call& call) {
        const ComPtr<IDispatch> form = call.Object(0);
        const Bstr type(call.Text(1));
        const Bstr name(L"one");
        VARIANT arguments[2] = {};
        arguments[0].vt = arguments[1].vt = VT_BSTR;
        arguments[0].bstrVal = name.Get();
        arguments[1].bstrVal = type.Get();
        const DISPID id = IdOf(*form, L"AddControl");
        DISPPARAMS params = {arguments, nullptr, 2, 0};
        kwo::com_support::OwnedVariant control;
        const FailingAllocation failing(call.Whole(2));
        const HRESULT result =
            form->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &control, nullptr, nullptr);
        call.ReturnTruth(FAILED(result));
    });
    const std::pair<const wchar_t*, const wchar_t*> kinds[] = {{L"TextBox", L"EDIT"}, {L"ListBox", L"LISTBOX"}};
    for (const auto& [type, className] : kinds) {
        notes.clear();
        RunOnForm(std::wstring(L"For failing = 0 To 300\r\nIf Not Source.Add(frm, \"") + type +
                  L"\", failing) Then Exit For\r\nNext\r\n" + Noting(L"failing > 20 And failing < 300"));

        const HWND only = Child(className);
        EXPECT_EQ(notes, Notes({L"True"})) << Bstr(type).Get();
        EXPECT_NE(only, nullptr);
        EXPECT_EQ(FindWindowExW(GetParent(only), only, className, nullptr), nullptr);
    }
}

TEST_F(ControlsTest, PasswordIsShownOnlyWithoutItsCharacter) {
    RunOnForm(kTextBox + std::wstring(L"txt.Text = \"secret\"\r\ntxt.PasswordChar = \"*\"\r\nSource.Note txt"));
    EXPECT_EQ(SendMessageW(Child(L"EDIT"), EM_GETPASSWORDCHAR, 0, 0), L'*');

    RunOnForm(kTextBox + std::wstring(L"txt.PasswordChar = \"*\"\r\ntxt.PasswordChar = \"\"\r\n"));
    EXPECT_EQ(SendMessageW(Child(L"EDIT"), EM_GETPASSWORDCHAR, 0, 0), 0);
    EXPECT_EQ(notes, Notes({L"secret"}));
}

TEST_F(ControlsTest, FormMayCloseInAnEventOfItsControls) {
    const std::wstring closing = L"\r\nfrm.Close\r\nEnd Sub\r\n";
    const std::wstring gone = Raising(L"Source.Note frm.Caption");
    RunOnForm(kTextBox + (L"Sub txt_Change" + closing) + L"txt.SetFocus\r\nHost.TypeKeys \"a\"\r\n" + gone);
    RunOnForm(kTextBox + (L"Sub txt_Change" + closing) + L"txt.Text = \"a\"\r\n" + gone);
    RunOnForm(kTextBox + (L"Sub txt_GotFocus" + closing) + L"Host.Click txt, 75, 75\r\n" + gone);
    RunOnForm(kListBox + (L"Sub lst_Click" + closing) + L"lst.AddItem \"a\"\r\nHost.Click lst, 75, 75\r\n" + gone);
    RunOnForm(kCheckBox + (L"Sub chk_Click" + closing) + L"Host.Click chk, 75, 75\r\n" + gone);
    RunOnForm(kButton + (L"Sub cmd_Click" + closing) + L"Host.Click cmd, 75, 75\r\n" + gone);
    RunOnForm(kButton + (L"Sub cmd_Click" + closing) + L"cmd.SetFocus\r\nHost.TypeKeys \"{ENTER}\"\r\n" + gone);
    RunOnForm(kButton + (L"Sub cmd_Click" + closing) + L"cmd.Caption = \"&X\"\r\nHost.TypeKeys \"%x\"\r\n" + gone);

    EXPECT_EQ(notes, Notes(8, L"91"));
}

TEST_F(ControlsTest, MembersOfControlsOfAClosedFormRaise91) {
    RunOnForm(std::wstring(kTextBox) + kListBox + kCheckBox + kButton + L"frm.Close\r\nDim x\r\n" +
              Raising(L"x = txt.Text") + Raising(L"txt.MultiLine = True") + Raising(L"lst.AddItem \"x\"") +
              Raising(L"x = lst.List(0)") + Raising(L"chk.Value = 1") + Raising(L"cmd.Default = True") +
              Raising(L"cmd.Value = True"));

    EXPECT_EQ(notes, Notes(7, L"91"));
}

TEST_F(ControlsTest, ListBoxKeepsItemsAndTheirNumbers) {
    RunOnForm(std::wstring(kListBox) +
              L"lst.AddItem \"one\"\r\nlst.AddItem \"three\"\r\nlst.AddItem \"two\", 1\r\nSource.Note lst.NewIndex\r\n"
              L"lst.ItemData(1) = 2\r\nlst.ItemData(2) = -3\r\nlst.List(2) = \"drei\"\r\n" +
              Noting(L"lst.ListCount & lst.List(0) & lst.List(1) & lst.List(2)") +
              Noting(L"lst.ItemData(0) & lst.ItemData(1) & lst.ItemData(2)") + L"lst.RemoveItem 0\r\n" +
              Noting(L"lst.ListCount & lst.List(0) & lst.ItemData(0) & lst.NewIndex") + L"lst.Clear\r\n" +
              Noting(L"lst.ListCount"));

    EXPECT_EQ(notes, Notes({L"1", L"3onetwodrei", L"02-3", L"2two2-1", L"0"}));
}

TEST_F(ControlsTest, SelectionOfAListFollowsItsItem) {
    RunOnForm(std::wstring(kListBox) + Heard(L"lst_Click") +
              L"For Each word In Array(\"a\", \"b\", \"c\")\r\nlst.AddItem word\r\nNext\r\n"
              L"lst.ListIndex = 1\r\nlst.ListIndex = 1\r\n" +
              Noting(L"lst.ListIndex & lst.Text & lst") + L"lst.AddItem \"0\", 0\r\n" + Noting(L"lst.ListIndex") +
              L"lst.List(2) = \"B\"\r\n" + Noting(L"lst.ListIndex & lst") + L"lst.RemoveItem 0\r\n" +
              Noting(L"lst.ListIndex & lst") + L"lst.RemoveItem 1\r\n" + Noting(L"lst.ListIndex & lst") +
              L"lst.Text = \"C\"\r\n" + Noting(L"lst") + L"lst.ListIndex = -1\r\n" + Noting(L"lst.ListIndex"));

    EXPECT_EQ(notes, Notes({L"lst_Click", L"1bb", L"2", L"2B", L"1B", L"-1", L"lst_Click", L"c", L"lst_Click", L"-1"}));
}

TEST_F(ControlsTest, SortedListPutsItemsInOrder) {
    RunOnForm(std::wstring(kListBox) +
              L"lst.AddItem \"pear\"\r\nlst.ItemData(0) = 7\r\nlst.AddItem \"Apple\"\r\nlst.Sorted = True\r\n"
              L"lst.AddItem \"fig\"\r\nSource.Note lst.NewIndex\r\nlst.AddItem \"zoo\"\r\nlst.AddItem \"ape\"\r\n" +
              Noting(L"lst.List(0) & lst.List(1) & lst.List(2) & lst.List(3) & lst.List(4)") +
              Noting(L"lst.ItemData(3) & lst.Sorted"));

    EXPECT_EQ(notes, Notes({L"1", L"apeApplefigpearzoo", L"7True"}));
}

TEST_F(ControlsTest, UserSelectsItemsByPointerAndKeys) {
    RunOnForm(std::wstring(kListBox) + L"Sub lst_Click\r\nSource.Note \"click \" & lst\r\nEnd Sub\r\n" +
              Heard(L"lst_DblClick") + Heard(L"lst_GotFocus") +
              L"For Each word In Array(\"a\", \"b\", \"c\")\r\nlst.AddItem word\r\nNext\r\n"
              L"Host.Click lst, 150, 60\r\nHost.Click lst, 150, 60\r\nHost.TypeKeys \"{DOWN}c\"");

    EXPECT_EQ(notes, Notes({L"lst_GotFocus", L"click a", L"lst_DblClick", L"click b", L"click c"}));
}

TEST_F(ControlsTest, VisibleListIsDrawnOnceItIsFilled) {
    const auto seen = [] {
        const HWND list = Child(L"LISTBOX");
        RECT area = {};
        GetWindowRect(list, &area);
        const HDC context = GetWindowDC(list);
        std::vector<COLORREF> pixels;
        for (int x = 0; x < area.right - area.left; x += 2)
            for (int y = 0; y < area.bottom - area.top; y += 2)
                pixels.push_back(GetPixel(context, x, y));
        ReleaseDC(list, context);
        return pixels;
    };
    std::vector<COLORREF> before, meanwhile;
    source->OnCall(L"Before", [&](Call&) { before = seen(); });
    source->OnCall(L"Meanwhile", [&](Call&) { meanwhile = seen(); });
    RunOnForm(std::wstring(kListBox) +
              L"Host.DoEvents\r\nSource.Before\r\nFor i = 1 To 50\r\nlst.AddItem \"HHH\"\r\nNext\r\n"
              L"Source.Meanwhile\r\nHost.DoEvents");

    const HWND list = Child(L"LISTBOX");
    const LONG height = static_cast<LONG>(SendMessageW(list, LB_GETITEMHEIGHT, 0, 0));
    const HDC context = GetDC(list);
    int written = 0;
    for (int x = 0; x < 40; ++x)
        for (int y = 0; y < height; ++y)
            if (GetPixel(context, x, 2 * height + y) != GetSysColor(COLOR_WINDOW)) ++written;
    ReleaseDC(list, context);
    EXPECT_FALSE(before.empty());
    EXPECT_TRUE(meanwhile == before);
    EXPECT_GT(written, 10) << "pixels of the third item";
    EXPECT_TRUE(StyleOf(list) & WS_VISIBLE);
    EXPECT_TRUE(StyleOf(list) & WS_VSCROLL);
}

/// Lets a list have room for a number of further items, which a script sets by `Source.Room`.
class RoomOfAList {
public:
    static void Limit(EventSourceObject& source) {
        source.OnCall(L"Room", [](Call& call) {
            theRoom = call.Whole(0);
            const HWND list = Child();
            const auto present = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(list, GWLP_WNDPROC));
            if (present == &Procedure) return;
            thePrevious = present;
            SetWindowLongPtrW(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
        });
    }

private:
    static HWND Child() { return FindWindowExW(FindWindowW(kFormClass, L"frm"), nullptr, L"LISTBOX", nullptr); }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
        if (message == LB_INSERTSTRING && theRoom-- <= 0) return LB_ERRSPACE;
        return CallWindowProcW(thePrevious, window, message, first, second);
    }
    static inline WNDPROC thePrevious = nullptr;
    static inline LONG theRoom = 0;
};

TEST_F(ControlsTest, ListWithoutRoomRaises7) {
    RoomOfAList::Limit(*source);
    RunOnForm(kListBox + std::wstring(L"lst.AddItem \"a\"\r\nSource.Room 0\r\n") + Raising(L"lst.AddItem \"b\"") +
              Raising(L"lst.List(0) = \"b\"") + Noting(L"lst.ListCount & lst.List(0) & lst.NewIndex"));

    EXPECT_EQ(notes, Notes({L"7", L"7", L"1a0"}));
}

TEST_F(ControlsTest, ListThatCannotBeSortedForLackOfRoomStaysAsItWas) {
    RoomOfAList::Limit(*source);
    const std::wstring state = Noting(L"lst.List(0) & lst.List(1) & lst.List(2) & lst.ListCount") +
                               Noting(L"lst.ItemData(0) & lst.ListIndex & lst.NewIndex & lst.Sorted");
    RunOnForm(kListBox +
              std::wstring(L"lst.AddItem \"pear\"\r\nlst.ItemData(0) = 7\r\nlst.AddItem \"apple\"\r\n"
                           L"lst.AddItem \"fig\"\r\nlst.ListIndex = 1\r\nSource.Room 2\r\n") +
              Raising(L"lst.Sorted = True") + state + L"Source.Room 3\r\n" + Raising(L"lst.Sorted = True") + state);

    EXPECT_EQ(notes, Notes({L"7", L"pearapplefig3", L"712False", L"0", L"applefigpear3", L"00-1True"}));
}

TEST_F(ControlsTest, ManyItemsAreKept) {
    RunOnForm(kListBox + std::wstring(L"For i = 1 To 400\r\nlst.AddItem i\r\nNext\r\nlst.TopIndex = 380\r\n") +
              Noting(L"lst.ListCount & \" \" & lst.List(399) & \" \" & lst.TopIndex"));

    EXPECT_EQ(notes, Notes({L"400 400 380"}));
}

namespace {

/// A combo box with the items a, b and c and procedures for its events.
class ComboBoxTest : public ControlsTest {
protected:
    int RunComboBox(const std::wstring& script) {
        return RunOnForm(std::wstring(kComboBox) +
                         L"For Each word In Array(\"a\", \"b\", \"c\")\r\ncbo.AddItem word\r\nNext\r\n"
                         L"Sub cbo_Click\r\nSource.Note \"click \" & cbo & cbo.ListIndex\r\nEnd Sub\r\n"
                         L"Sub cbo_Change\r\nSource.Note \"change \" & cbo & cbo.ListIndex\r\nEnd Sub\r\n" +
                         Heard(L"cbo_DropDown") + Heard(L"cbo_GotFocus") + Heard(L"cbo_LostFocus") + script);
    }
    static COMBOBOXINFO PartsOf(HWND combo) {
        COMBOBOXINFO parts = {};
        parts.cbSize = sizeof parts;
        GetComboBoxInfo(combo, &parts);
        return parts;
    }
};

}  // namespace

TEST_F(ComboBoxTest, TextOfItsOwnSelectsNoItem) {
    RunComboBox(
        L"Source.Note cbo & cbo.Style & cbo.ListIndex\r\ncbo.ListIndex = 1\r\ncbo.ListIndex = 1\r\n"
        L"cbo.Text = \"own\"\r\ncbo.Text = \"own\"\r\ncbo.ListIndex = 0\r\ncbo.ListIndex = -1\r\n" +
        Raising(L"cbo.ListIndex = 3") + Raising(L"x = cbo.List(3)") + Raising(L"cbo.RemoveItem 3") +
        Raising(L"cbo.Style = 3"));

    EXPECT_EQ(notes,
              Notes({L"0-1", L"click b1", L"change own-1", L"click a0", L"click -1", L"380", L"381", L"5", L"380"}));
}

TEST_F(ComboBoxTest, UserTypesIntoTheField) {
    RunComboBox(
        L"Sub cbo_KeyDown(KeyCode, Shift)\r\nSource.Note KeyCode\r\nEnd Sub\r\n"
        L"Sub cbo_KeyPress(KeyAscii)\r\nSource.Note Chr(KeyAscii)\r\nIf KeyAscii = 121 Then KeyAscii = 0\r\nEnd Sub\r\n"
        L"Sub cbo_KeyUp(KeyCode, Shift)\r\nSource.Note -KeyCode\r\nEnd Sub\r\n"
        L"cbo.SetFocus\r\nSource.Note frm.ActiveControl.Name\r\nHost.TypeKeys \"xy\"\r\n");

    EXPECT_EQ(notes, Notes({L"cbo_GotFocus", L"cbo", L"88", L"x", L"change x-1", L"-88", L"89", L"y", L"-89"}));
}

TEST_F(ComboBoxTest, UserSelectsFromTheList) {
    RunComboBox(L"cbo.SetFocus\r\nHost.TypeKeys \"{DOWN}{DOWN}\"\r\ncbo.Style = 2\r\nHost.TypeKeys \"c\"");

    EXPECT_EQ(notes, Notes({L"cbo_GotFocus", L"click a0", L"click b1", L"click c2"}));
}

TEST_F(ComboBoxTest, ListThatOpensHasNoTextOfItsOwn) {
    RunComboBox(L"cbo.Style = 2\r\ncbo.Text = \"B\"\r\n" + Noting(L"cbo.Style & cbo") + Raising(L"cbo.Text = \"own\"") +
                Raising(L"cbo.SelStart = 0") + Noting(L"cbo"));

    EXPECT_EQ(notes, Notes({L"click b1", L"2b", L"380", L"380", L"b"}));
}

TEST_F(ComboBoxTest, StyleKeepsItemsSelectionAndText) {
    RunComboBox(L"cbo.ItemData(1) = 5\r\ncbo.ListIndex = 1\r\ncbo.SetFocus\r\ncbo.Style = 2\r\ncbo.Style = 1\r\n" +
                Noting(L"cbo.ListCount & cbo.ListIndex & cbo & cbo.ItemData(1) & frm.ActiveControl.Name") +
                L"cbo.Text = \"own\"\r\ncbo.Style = 0\r\ncbo.Sorted = True\r\n" + Noting(L"cbo & cbo.ListIndex"));

    EXPECT_EQ(notes, Notes({L"click b1", L"cbo_GotFocus", L"31b5cbo", L"change own-1", L"own-1"}));
}

TEST_F(ComboBoxTest, SelectionInTheFieldIsKeptWithinTheText) {
    RunComboBox(L"cbo.Text = \"abcd\"\r\ncbo.SelStart = 1\r\ncbo.SelLength = 99\r\n" +
                Noting(L"cbo.SelStart & cbo.SelLength & cbo.SelText") + L"cbo.SelText = \"-\"");

    EXPECT_EQ(notes, Notes({L"change abcd-1", L"13bcd", L"change a--1"}));
}

TEST_F(ComboBoxTest, OpenListTakesEnterAndEscape) {
    RunComboBox(L"Set ok = frm.AddControl(\"CommandButton\", \"ok\")\r\nok.Default = True\r\nok.Cancel = True\r\n" +
                Heard(L"ok_Click") +
                L"cbo.SetFocus\r\nHost.TypeKeys \"%{DOWN}{ENTER}\"\r\nSource.Note \"closed\"\r\n"
                L"Host.TypeKeys \"%{DOWN}{ESC}\"\r\nSource.Note \"closed\"\r\nHost.TypeKeys \"{ENTER}{ESC}{TAB}\"");

    EXPECT_EQ(notes, Notes({L"cbo_GotFocus", L"cbo_DropDown", L"closed", L"cbo_DropDown", L"closed", L"ok_Click",
                            L"ok_Click", L"cbo_LostFocus"}));
}

TEST_F(ComboBoxTest, HeightIsThatOfALineAndTheListHasRoom) {
    RunComboBox(
        L"For i = 1 To 20\r\ncbo.AddItem i\r\nNext\r\ncbo.Move 0, 0, 3000, 3000\r\n"
        L"Source.Note cbo.Height < 500 And cbo.Height > 200\r\n"
        L"cbo.Style = 1\r\ncbo.Height = 1500\r\nSource.Note cbo.Height > 1200\r\n"
        L"cbo.Style = 0\r\nSource.Note cbo.Height < 500\r\ncbo.SetFocus\r\nHost.TypeKeys \"%{DOWN}\"");

    const COMBOBOXINFO parts = PartsOf(Child(L"COMBOBOX"));
    RECT list = {};
    GetClientRect(parts.hwndList, &list);
    EXPECT_EQ(notes, Notes({L"True", L"True", L"True", L"cbo_GotFocus", L"cbo_DropDown"}));
    EXPECT_TRUE(IsWindowVisible(parts.hwndList));
    EXPECT_GE(list.bottom, 8 * SendMessageW(Child(L"COMBOBOX"), CB_GETITEMHEIGHT, 0, 0));
}

TEST_F(ComboBoxTest, OpenListFillsTheControl) {
    RunComboBox(L"cbo.Style = 1\r\ncbo.Height = 1050");

    const COMBOBOXINFO parts = PartsOf(Child(L"COMBOBOX"));
    RECT combo = {};
    RECT list = {};
    GetWindowRect(Child(L"COMBOBOX"), &combo);
    GetWindowRect(parts.hwndList, &list);
    EXPECT_LE(combo.bottom - list.bottom, 2);
}

TEST_F(ComboBoxTest, FormMayCloseInItsEvents) {
    const std::wstring closing = L"\r\nfrm.Close\r\nEnd Sub\r\n";
    const std::wstring gone = Raising(L"Source.Note frm.Caption");
    const std::wstring items = L"cbo.AddItem \"a\"\r\ncbo.SetFocus\r\n";
    RunOnForm(kComboBox + (L"Sub cbo_Change" + closing) + items + L"Host.TypeKeys \"a\"\r\n" + gone);
    RunOnForm(kComboBox + (L"Sub cbo_Click" + closing) + items + L"Host.TypeKeys \"{DOWN}\"\r\n" + gone);
    RunOnForm(kComboBox + (L"Sub cbo_Click" + closing) + items + L"cbo.Style = 2\r\nHost.TypeKeys \"a\"\r\n" + gone);
    RunOnForm(kComboBox + (L"Sub cbo_DropDown" + closing) + items + L"Host.TypeKeys \"%{DOWN}\"\r\n" + gone);
    RunOnForm(kComboBox + (L"Sub cbo_LostFocus" + closing) + items + kTextBox + L"Host.TypeKeys \"{TAB}\"\r\n" + gone);

    EXPECT_EQ(notes, Notes(5, L"91"));
}

namespace {

EventSourceObject* theTickingSource = nullptr;

void CALLBACK TickOnce(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    theTickingSource->Fire(EventSourceObject::kTick, {Number(1)});
}

}  // namespace

TEST_F(ControlsTest, EventsGoOnWhileAScrollBarIsHeld) {
    source->OnCall(L"TickSoon", [this](Call&) {
        theTickingSource = source.Get();
        SetTimer(nullptr, 0, 100, TickOnce);
    });
    RunOnForm(std::wstring(kListBox) + kTextBox + Heard(L"txt_Change") +
              L"txt.Move 0, 3000\r\nFor i = 1 To 100\r\nlst.AddItem i\r\nNext\r\n"
              L"WScript.ConnectObject Source, \"src\"\r\n"
              L"Sub src_Tick(number)\r\ntxt.Text = \"x\"\r\nSource.Note \"tick\"\r\nEnd Sub\r\n"
              L"Host.MovePointer lst, 2850, 1500\r\nSource.TickSoon\r\nHost.HoldButton 300\r\n" +
              Noting(L"lst.TopIndex > 0"));

    EXPECT_EQ(notes, Notes({L"txt_Change", L"tick", L"True"}));
}

TEST_F(ControlsTest, CheckBoxIsTickedByTheUserAndTheScript) {
    RunOnForm(std::wstring(kCheckBox) + L"Sub chk_Click\r\nSource.Note chk.Value\r\nEnd Sub\r\n" +
              Heard(L"chk_DblClick") +
              L"chk.Value = 1\r\nchk.Value = 1\r\nchk.Value = 2\r\nHost.Click chk, 75, 200\r\n"
              L"Host.Click chk, 75, 200\r\nHost.TypeKeys \"{SPACE}\"\r\n");

    EXPECT_EQ(notes, Notes({L"1", L"2", L"0", L"1", L"0"}));
    EXPECT_EQ(SendMessageW(Child(L"BUTTON"), BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST_F(ControlsTest, CheckBoxKeepsTickAndCaptionOnItsOtherSide) {
    RunOnForm(
        std::wstring(kCheckBox) +
        L"chk.Caption = \"&Loud\"\r\nchk.Value = 1\r\nchk.Alignment = 1\r\nSource.Note chk.Caption & chk.Alignment");

    EXPECT_EQ(notes, Notes({L"&Loud1"}));
    EXPECT_TRUE(StyleOf(Child(L"BUTTON")) & BS_LEFTTEXT);
    EXPECT_EQ(SendMessageW(Child(L"BUTTON"), BM_GETCHECK, 0, 0), BST_CHECKED);
}

TEST_F(ControlsTest, ButtonIsClickedByPointerKeysAndScript) {
    RunOnForm(std::wstring(kButton) + Heard(L"cmd_Click") + Heard(L"cmd_DblClick") +
              L"Sub cmd_MouseDown(Button, Shift, X, Y)\r\nSource.Note \"down \" & Button & \" \" & X\r\nEnd Sub\r\n"
              L"Sub cmd_MouseUp(Button, Shift, X, Y)\r\nSource.Note \"up\"\r\nEnd Sub\r\n"
              L"cmd.Caption = \"&Go\"\r\nSource.Note cmd.Caption\r\n"
              L"Host.Click cmd, 150, 150\r\nHost.Click cmd, 150, 150\r\nHost.MovePointer frm, 3000, 3000\r\n"
              L"Source.Note \"keys\"\r\nHost.TypeKeys \"{SPACE}{ENTER}%g\"\r\n"
              L"cmd.Value = True\r\ncmd.Value = False\r\nSource.Note cmd.Value");

    EXPECT_EQ(notes, Notes({L"&Go", L"down 1 150", L"up", L"cmd_Click", L"down 1 150", L"up", L"cmd_Click", L"keys",
                            L"cmd_Click", L"cmd_Click", L"cmd_Click", L"cmd_Click", L"False"}));
}

TEST_F(ControlsTest, PressThatEndsBesideTheButtonClicksNothing) {
    RunOnForm(std::wstring(kButton) + Heard(L"cmd_Click") +
              L"Host.MovePointer cmd, 150, 150\r\nHost.PressButton\r\nHost.MovePointer frm, 3000, 3000\r\n"
              L"Host.ReleaseButton\r\nSource.Note \"done\"");

    EXPECT_EQ(notes, Notes({L"done"}));
}

namespace {

/// A form with a text box, a check box and two buttons, Enter for the first and Escape for the second one.
class DialogTest : public ControlsTest {
protected:
    int RunDialog(const std::wstring& script) {
        return RunOnForm(
            std::wstring(kTextBox) + kCheckBox +
            L"Set ok = frm.AddControl(\"CommandButton\", \"ok\")\r\nok.Caption = \"&OK\"\r\n"
            L"Set no = frm.AddControl(\"CommandButton\", \"no\")\r\nno.Caption = \"&No\"\r\n"
            L"chk.Move 0, 600\r\nok.Move 0, 1200\r\nno.Move 0, 1800\r\nok.Default = True\r\nno.Cancel = True\r\n" +
            Heard(L"ok_Click") + Heard(L"no_Click") + L"txt.SetFocus\r\n" + script);
    }
    static HWND Button(const wchar_t* caption) {
        return FindWindowExW(FindWindowW(kFormClass, L"frm"), nullptr, L"BUTTON", caption);
    }
    static bool IsMarked(const wchar_t* caption) {
        return (StyleOf(Button(caption)) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    }
};

}  // namespace

TEST_F(DialogTest, EnterAndEscapePressTheirButtons) {
    RunDialog(
        L"Sub txt_KeyDown(KeyCode, Shift)\r\nSource.Note KeyCode\r\nEnd Sub\r\n"
        L"Sub txt_KeyPress(KeyAscii)\r\nSource.Note KeyAscii\r\nEnd Sub\r\n"
        L"Sub txt_KeyUp(KeyCode, Shift)\r\nSource.Note -KeyCode\r\nEnd Sub\r\n"
        L"Host.TypeKeys \"{ENTER}{ESC}\"\r\nno.SetFocus\r\nHost.TypeKeys \"{ENTER}\"\r\n"
        L"chk.SetFocus\r\nHost.TypeKeys \"{ENTER}\"\r\nSource.Note chk");

    EXPECT_EQ(notes, Notes({L"ok_Click", L"no_Click", L"no_Click", L"ok_Click", L"0"}));
}

TEST_F(DialogTest, ButtonThatCannotBeUsedLeavesItsKeyToTheControl) {
    RunDialog(
        L"Sub txt_KeyDown(KeyCode, Shift)\r\nSource.Note KeyCode\r\nEnd Sub\r\n"
        L"ok.Enabled = False\r\nno.Visible = False\r\nHost.TypeKeys \"{ENTER}{ESC}\"");

    EXPECT_EQ(notes, Notes({L"13", L"27"}));
}

TEST_F(DialogTest, OneButtonIsTheDefault) {
    RunDialog(Noting(L"ok.Default & no.Default & ok.Cancel & no.Cancel") + L"no.Default = True\r\n" +
              Noting(L"ok.Default & no.Default") + L"Host.TypeKeys \"{ENTER}\"\r\nok.Default = False\r\n" +
              Noting(L"no.Default") + L"no.Default = False\r\nno.Cancel = False\r\nHost.TypeKeys \"{ENTER}{ESC}\"\r\n" +
              Noting(L"no.Default & no.Cancel"));

    EXPECT_EQ(notes, Notes({L"TrueFalseFalseTrue", L"FalseTrue", L"no_Click", L"True", L"FalseFalse"}));
}

TEST_F(DialogTest, FrameMarksTheButtonThatEnterPresses) {
    RunDialog(L"");
    EXPECT_TRUE(IsMarked(L"&OK"));
    EXPECT_FALSE(IsMarked(L"&No"));

    RunDialog(L"no.SetFocus");
    EXPECT_FALSE(IsMarked(L"&OK"));
    EXPECT_TRUE(IsMarked(L"&No"));
}

TEST_F(DialogTest, EnterBeginsALineOnlyWithCtrlWhenThereIsADefaultButton) {
    source->OnCall(L"PressCtrlEnter", [](Call&) {
        INPUT keys[4] = {};
        constexpr WORD kCodes[] = {VK_CONTROL, VK_RETURN, VK_RETURN, VK_CONTROL};
        for (int i = 0; i < 4; ++i) {
            keys[i].type = INPUT_KEYBOARD;
            keys[i].ki.wVk = kCodes[i];
            keys[i].ki.dwFlags = i < 2 ? 0 : KEYEVENTF_KEYUP;
        }
        SendInput(4, keys, sizeof *keys);
    });
    RunDialog(
        L"txt.MultiLine = True\r\nHost.TypeKeys \"{ENTER}\"\r\nSource.Note Len(txt)\r\n"
        L"Source.PressCtrlEnter\r\n" +
        Until(L"Len(txt) > 0") +
        L"Source.Note Len(txt)\r\n"
        L"ok.Default = False\r\nHost.TypeKeys \"{ENTER}\"\r\nSource.Note Len(txt)");

    EXPECT_EQ(notes, Notes({L"ok_Click", L"0", L"2", L"4"}));
}

TEST_F(DialogTest, TabAndArrowsMoveTheFocus) {
    RunDialog(
        L"Sub Press(keys)\r\nHost.TypeKeys keys\r\nSource.Note frm.ActiveControl.Name\r\nEnd Sub\r\n"
        L"Press \"{TAB}\"\r\nPress \"{TAB}\"\r\nPress \"{TAB}\"\r\nPress \"{TAB}\"\r\nPress \"+{TAB}\"\r\n"
        L"Press \"{LEFT}\"\r\nPress \"{UP}\"\r\nPress \"{RIGHT}\"\r\nPress \"{DOWN}\"\r\n"
        L"ok.TabStop = False\r\nPress \"+{TAB}\"\r\nno.TabIndex = -1\r\nPress \"+{TAB}\"\r\nPress \"+{TAB}\"");

    EXPECT_EQ(notes, Notes({L"chk", L"ok", L"no", L"txt", L"no", L"ok", L"chk", L"ok", L"no", L"chk", L"txt", L"no"}));
}

TEST_F(DialogTest, TabOutOfATextOfMoreLinesLeavesItUnchanged) {
    RunDialog(L"txt.MultiLine = True\r\nHost.TypeKeys \"{TAB}\"\r\nSource.Note frm.ActiveControl.Name & txt");

    EXPECT_EQ(notes, Notes({L"chk"}));
}

TEST_F(DialogTest, DisabledOrHiddenControlPassesTheFocusOn) {
    RunDialog(
        L"txt.Enabled = False\r\nSource.Note frm.ActiveControl.Name\r\n"
        L"Host.TypeKeys \"{TAB}\"\r\nSource.Note frm.ActiveControl.Name\r\n"
        L"ok.Visible = False\r\nSource.Note frm.ActiveControl.Name");

    EXPECT_EQ(notes, Notes({L"chk", L"ok", L"chk"}));
}

TEST_F(DialogTest, ControlsOnADisabledPanelCannotBeUsed) {
    RunDialog(
        L"Set pnl = frm.AddControl(\"Panel\", \"pnl\")\r\nSet chk2 = frm.AddControl(\"CheckBox\", \"chk2\", pnl)\r\n"
        L"chk2.Caption = \"&Two\"\r\nchk2.SetFocus\r\nSource.Note frm.ActiveControl.Name\r\n"
        L"pnl.Enabled = False\r\nSource.Note frm.ActiveControl.Name\r\n"
        L"Host.TypeKeys \"%t\"\r\nSource.Note frm.ActiveControl.Name & chk2\r\n"
        L"Host.TypeKeys \"+{TAB}\"\r\nSource.Note frm.ActiveControl.Name");

    EXPECT_EQ(notes, Notes({L"chk2", L"txt", L"txt0", L"no"}));
}

TEST_F(DialogTest, AccessKeysUseTheirControls) {
    RunDialog(
        L"chk.Caption = \"&Loud\"\r\nSet lbl = frm.AddControl(\"Label\", \"lbl\")\r\nlbl.Caption = \"&Text\"\r\n"
        L"lbl.TabIndex = -1\r\n"
        L"Sub Press(keys)\r\nHost.TypeKeys keys\r\nSource.Note frm.ActiveControl.Name & chk\r\nEnd Sub\r\n"
        L"Press \"%l\"\r\nPress \"%t\"\r\nPress \"%o\"\r\nPress \"%x\"\r\nPress \"%n\"\r\n"
        L"ok.Enabled = False\r\nPress \"%o\"\r\nlbl.UseMnemonic = False\r\nPress \"%t\"");

    EXPECT_EQ(notes, Notes({L"chk1", L"txt1", L"ok_Click", L"ok1", L"ok1", L"no_Click", L"no1", L"no1", L"no1"}));
}

TEST_F(DialogTest, AccessKeyOfSeveralControlsGoesRound) {
    RunDialog(
        L"chk.Caption = \"&Odd\"\r\nSub Press\r\nHost.TypeKeys \"%o\"\r\n"
        L"Source.Note frm.ActiveControl.Name & chk\r\nEnd Sub\r\nPress\r\nPress\r\nPress");

    EXPECT_EQ(notes, Notes({L"chk0", L"ok0", L"chk0"}));
}

TEST_F(DialogTest, FormSeesKeysBeforeTheyPressButtons) {
    RunDialog(
        L"frm.KeyPreview = True\r\nSub frm_KeyDown(KeyCode, Shift)\r\nSource.Note KeyCode\r\n"
        L"If KeyCode = 13 Then KeyCode = 0\r\nEnd Sub\r\nHost.TypeKeys \"{ENTER}{ESC}\"");

    EXPECT_EQ(notes, Notes({L"13", L"27", L"no_Click"}));
}

TEST_F(ControlsTest, PictureBoxIsATabStopIfItHandlesKeysOrTheFocus) {
    const auto isTabStop = [this](const std::wstring& procedure) {
        notes.clear();
        RunOnForm(L"Set box = frm.AddControl(\"PictureBox\", \"box\")\r\nSource.Note box.TabStop\r\n" + procedure);
        return notes;
    };
    EXPECT_EQ(isTabStop(L""), Notes({L"False"}));
    EXPECT_EQ(isTabStop(Heard(L"box_MouseDown")), Notes({L"False"}));
    for (const wchar_t* const event : {L"box_GotFocus", L"box_LostFocus"})
        EXPECT_EQ(isTabStop(Heard(event)), Notes({L"True"}));
    for (const wchar_t* const event : {L"box_KeyDown(a, b)", L"box_KeyUp(a, b)", L"box_KeyPress(a)"})
        EXPECT_EQ(isTabStop(std::wstring(L"Sub ") + event + L"\r\nEnd Sub"), Notes({L"True"}));
    const std::wstring target = L"Class Target\r\nPublic Sub KeyDown(a, b)\r\nEnd Sub\r\nEnd Class\r\n";
    EXPECT_EQ(isTabStop(target + L"Host.Forward box, New Target\r\nSource.Note box.TabStop"),
              Notes({L"False", L"True"}));
    EXPECT_EQ(isTabStop(target + L"Host.Forward box, New Target, \"MouseDown\"\r\nSource.Note box.TabStop"),
              Notes({L"False", L"False"}));
    EXPECT_EQ(isTabStop(L"box.TabStop = True\r\nSource.Note box.TabStop"), Notes({L"False", L"True"}));
    EXPECT_EQ(isTabStop(L"Sub box_KeyDown(a, b)\r\nEnd Sub\r\nbox.TabStop = False\r\nSource.Note box.TabStop"),
              Notes({L"True", L"False"}));
}

TEST_F(ControlsTest, ControlsHaveTheirColours) {
    const auto pixelOf = [](const wchar_t* className) {
        const HWND window = Child(className);
        RECT area = {};
        GetClientRect(window, &area);
        UpdateWindow(window);
        const HDC context = GetDC(window);
        const COLORREF colour = GetPixel(context, area.right - 3, area.bottom - 3);
        ReleaseDC(window, context);
        return colour;
    };
    const std::wstring colours =
        L"one.BackColor = &HFF0000\r\none.ForeColor = &HFF\r\n"
        L"Source.Note one.BackColor & \" \" & one.ForeColor\r\nHost.DoEvents";
    for (const std::wstring type : {L"TextBox", L"ListBox", L"CheckBox"}) {
        notes.clear();
        RunOnForm(L"Set one = frm.AddControl(\"" + type + L"\", \"one\")\r\none.Move 0, 0, 1500, 900\r\n" + colours);
        EXPECT_EQ(notes, Notes({L"16711680 255"}));
        EXPECT_EQ(pixelOf(type == L"TextBox" ? L"EDIT" : type == L"ListBox" ? L"LISTBOX" : L"BUTTON"), RGB(0, 0, 255));
    }
}

TEST_F(ControlsTest, ControlFollowsItsFontAndThatOfAnother) {
    const auto heightOf = [](HWND window) {
        LOGFONTW font = {};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
        return std::abs(font.lfHeight);
    };
    RunOnForm(std::wstring(kTextBox) + kButton + L"txt.Font.Size = 30");
    EXPECT_EQ(heightOf(Child(L"EDIT")), 600 / static_cast<int>(TwipsPerPixel(Axis::Y)));
    EXPECT_LT(heightOf(Child(L"BUTTON")), 20);

    RunOnForm(std::wstring(kTextBox) + kButton + L"Set cmd.Font = txt.Font\r\ntxt.Font.Size = 30");
    EXPECT_EQ(heightOf(Child(L"BUTTON")), heightOf(Child(L"EDIT")));
}

TEST_F(ControlsTest, FontTellsItsSizeInPoints) {
    // The system rounds to whole pixels, and the first font to a size that it has bitmaps of.
    RunOnForm(std::wstring(kTextBox) +
              L"Source.Note txt.Font.Size > 4 And txt.Font.Size < 11\r\n"
              L"txt.Font.Name = \"Tahoma\"\r\ntxt.Font.Size = 14\r\nSource.Note Abs(txt.Font.Size - 14) < 1");

    EXPECT_EQ(notes, Notes({L"True", L"True"}));
}

TEST_F(ControlsTest, ClosedFormsGiveBackTheirHandles) {
    const auto run = [this] {
        RunOnForm(std::wstring(kTextBox) + kListBox + kCheckBox + kButton +
                  L"txt.Font.Size = 20\r\ntxt.BackColor = &HFF\r\nchk.BackColor = &HFF00\r\ntxt.MultiLine = True\r\n"
                  L"Host.DoEvents\r\nfrm.Close");
    };
    constexpr int kRounds = 10;
    run();
    run();
    const long before = kwo::test_support::GdiObjectsInUse();
    for (int round = 0; round < kRounds; ++round)
        run();
    EXPECT_GT(before, 0);
    EXPECT_LT(kwo::test_support::GdiObjectsInUse(), before + kRounds);
}

}  // namespace kwohost::tests
