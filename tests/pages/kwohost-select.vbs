' The text box of docs/kwohost.md that selects its text, and what the page says of Tab, access keys and Resize.
'@include checks.vbs
'@include forms.vbs
resized = ""
Sub pnlMore_Resize
    resized = resized & " " & IsObject(pnlMore)
End Sub
loaded = ""
Sub frmMain_Load
    loaded = loaded & " " & IsObject(frmMain)
End Sub
Set frmMain = Host.CreateForm("frmMain")
Check "Load comes before the variable is there:" & loaded, loaded = " False"
frmMain.Move 3000, 2000, 6000, 3000
Set txtOther = frmMain.AddControl("TextBox", "txtOther")
txtOther.Move 300, 300, 3000, 300
txtOther.Text = "other"
Set txtName = frmMain.AddControl("TextBox", "txtName")
txtName.Move 300, 900, 3000, 300
txtName.Text = "name"
Set pnlMore = frmMain.AddControl("Panel", "pnlMore")
pnlMore.Move 300, 1500, 3000, 600
Check "Resize comes before the variable is there:" & resized, resized = " False True"
Set chkLoud = frmMain.AddControl("CheckBox", "chkLoud", pnlMore)
chkLoud.Caption = "&Loud"
Set lstItems = frmMain.AddControl("ListBox", "lstItems")
lstItems.Move 4000, 300, 1500, 900
For number = 1 To 30
    lstItems.AddItem "item " & number
Next
lstItems.TopIndex = 29
Check "the first one of the last page", lstItems.TopIndex > 20 And lstItems.TopIndex < 29

'@example

ShowInFront frmMain
Check "the first text box has the focus", FocusComesTo(frmMain, "txtOther")
Check "and selects nothing", txtOther.SelLength = 0
Host.TypeKeys "{TAB}"
Check "the other selects all", FocusComesTo(frmMain, "txtName") And txtName.SelText = "name"
Host.TypeKeys "x"
Check "so that it is replaced", txtName.Text = "x"
Host.TypeKeys "+=+5+["
Check "the keys of plus, per cent and brace: " & txtName.Text, txtName.Text = "x+%{"
Host.TypeKeys "+{TAB}"
Check "it selects nothing by Tab either", FocusComesTo(frmMain, "txtOther") And txtOther.SelLength = 0
Host.TypeKeys "%l"
Check "an access key", chkLoud.Value = 1
pnlMore.Visible = False
Host.TypeKeys "%l"
Check "none on a hidden panel", chkLoud.Value = 1
pnlMore.Visible = True
pnlMore.Enabled = False
Host.TypeKeys "%l"
Check "on a disabled panel: " & chkLoud.Value, chkLoud.Value = 1
frmMain.Close
WScript.Echo "done " & count
