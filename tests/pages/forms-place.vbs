' The second example of docs/forms.md: a form that was maximised, moved, maximised again and minimised.
'@include checks.vbs
Set before = CreateObject("KWOUtil.KWORegistry")
before.KWO_RegSetValue &H80000001, "Software\My Program", "State", "2"
before.KWO_RegSetValue &H80000001, "Software\My Program", "Place", "1500 900 4500 3000"
shown = ""
Sub frmMain_Resize
    If frmMain.Visible Then shown = shown & " " & frmMain.WindowState
End Sub
Set frmMain = Host.CreateForm("frmMain")

'@example

Host.DoEvents
Check "comes back maximised", frmMain.WindowState = 2
Check "was never seen in another state:" & shown, InStr(shown, "0") = 0
frmMain.WindowState = 0
Host.DoEvents
Check "has the stored place", frmMain.Left = 1500 And frmMain.Top = 900 And frmMain.Width = 4500 And frmMain.Height = 3000
Function Stored
    Dim state, place
    before.KWO_RegGetValue &H80000001, "Software\My Program", "State", state
    before.KWO_RegGetValue &H80000001, "Software\My Program", "Place", place
    Stored = state & " " & place
End Function
frmMain.Move 1800, 1200, 4800, 3300
frmMain.WindowState = 2
Host.DoEvents
shown = ""
frmMain_Unload False
Check "moved and maximised: " & Stored, Stored = "2 1800 1200 4800 3300"
frmMain.WindowState = 1
frmMain.Show
frmMain_Unload False
Check "a minimised form: " & Stored, Stored = "0 1800 1200 4800 3300"
Check "nobody saw it become normal:" & shown, InStr(shown, "0") = 0
frmMain.Show
frmMain.Move 2100, 1500, 5100, 3600
frmMain.Close
Check "a normal form: " & Stored, Stored = "0 2100 1500 5100 3600"
before.KWO_RegDeleteKey &H80000001, "Software\My Program"
WScript.Echo "done " & count
