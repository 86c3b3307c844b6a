' The example of docs/splitter-v.md that restores a bar: in a normal form, and in one that comes back maximised.
'@include checks.vbs
storedState = 2
storedLeft = 600
storedTop = 600
storedWidth = 4800
storedHeight = 3600
storedBar = 6000
Set utility = CreateObject("KWOUtil.KWOUtility")
Set frmMain = Host.CreateForm("frmMain")
Set picLeft = frmMain.AddControl("PictureBox", "picLeft")
Set picRight = frmMain.AddControl("PictureBox", "picRight")
Set pnlBar = frmMain.AddControl("Panel", "pnlBar")
pnlBar.Move 1800, 0, 60, 1000
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
splitter.Create picLeft, picRight, pnlBar, 4
Sub frmMain_Resize
    If IsObject(splitter) Then splitter.Resize
End Sub

'@example

Check "maximised", frmMain.WindowState = 2 And frmMain.ScaleWidth > 7000
Check "the bar of the maximised form", pnlBar.Left = 6000 And picLeft.Width = 6000
frmMain.WindowState = 0
Host.DoEvents
Check "moved into the normal form", pnlBar.Left < frmMain.ScaleWidth And frmMain.Width = 4800
moved = pnlBar.Left
frmMain.WindowState = 2
Host.DoEvents
Check "and not moved back", pnlBar.Left = moved
frmMain.WindowState = 0
pnlBar.Left = 6000
splitter.Resize
Check "set before the form has its size, the place is lost", pnlBar.Left < 4800
frmMain.Close
WScript.Echo "done " & count
