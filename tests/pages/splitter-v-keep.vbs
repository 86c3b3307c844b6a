' The example of docs/splitter-v.md that restores a bar and keeps a least width of the panes and of the form.
'@include checks.vbs
'@include forms.vbs
storedState = 2
storedLeft = 600
storedTop = 600
storedWidth = 6000
storedHeight = 3600
storedBar = 6000
Set utility = CreateObject("KWOUtil.KWOUtility")
Set frmMain = Host.CreateForm("frmMain")
Set picLeft = frmMain.AddControl("PictureBox", "picLeft")
Set picRight = frmMain.AddControl("PictureBox", "picRight")
Set pnlBar = frmMain.AddControl("Panel", "pnlBar")
pnlBar.Move 1800, 0, 60, 1000
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
splitter.Create picLeft, picRight, pnlBar, 4, 60, 60, 60, 60
Sub pnlBar_MouseDown(Button, Shift, X, Y)
    splitter.MouseDown Button, Shift, X, Y
End Sub
Sub pnlBar_MouseMove(Button, Shift, X, Y)
    splitter.MouseMove Button, Shift, X, Y
End Sub

'@example

Sub CheckPanes(name)
    Check name & ": the panes meet the bar", picLeft.Left + picLeft.Width = pnlBar.Left And pnlBar.Left + pnlBar.Width = picRight.Left
    Check name & ": the bar's height", pnlBar.Height = picLeft.Height
End Sub
Sub DragTo(x)
    Host.MovePointer pnlBar, 30, 600
    Host.PressButton
    Host.MovePointer pnlBar, x - pnlBar.Left, 600
    Host.ReleaseButton
End Sub
ShowInFront frmMain
Check "maximised", frmMain.WindowState = 2 And frmMain.ScaleWidth > 7000
Check "the bar of the maximised form", pnlBar.Left = 6000
CheckPanes "maximised"
frmMain.WindowState = 0
Host.DoEvents
Check "as near as it can be in the normal form", frmMain.Width = 6000 And picRight.Width = Least
CheckPanes "normal"
frmMain.WindowState = 2
Host.DoEvents
Check "back in the maximised form", pnlBar.Left = 6000
frmMain.WindowState = 0
Host.DoEvents
DragTo 0
Check "the left pane keeps its width", picLeft.Width = Least And wanted = pnlBar.Left
DragTo 5900
Check "the right pane keeps its width", picRight.Width = Least And wanted = pnlBar.Left
CheckPanes "dragged"
there = pnlBar.Left
frmMain.Width = 4500
Check "the right pane keeps it in a narrower form", picRight.Width = Least
frmMain.Width = 6000
Check "the bar comes back", pnlBar.Left = there
frmMain.Width = 900
Check "the form keeps its width", frmMain.Width = 2400
frmMain.WindowState = 1
Host.DoEvents
frmMain.WindowState = 0
frmMain.Width = 6000
Host.DoEvents
Check "the bar comes back after that, too", pnlBar.Left = there
CheckPanes "after all"

' The class alone.
frmMain.Width = 4500
pnlBar.Left = 6000
splitter.Resize
Check "a bar beyond the edge moves there", pnlBar.Left < frmMain.ScaleWidth
pnlBar.Left = Margin
splitter.Resize
Check "a pane without a width", picLeft.Width = 0
splitter.MouseDown 1, 0, 30, 30
splitter.MouseUp 1, 0, 9000, 30
Check "the other pane without a width", picRight.Width = 0
pnlBar.Left = 1500
splitter.Resize
before = picRight.Width
pnlBar.Left = 9000
splitter.Resize
Check "a pane that would get a negative width", before > 0 And picRight.Width = before
frmMain.Close
WScript.Echo "done " & count
