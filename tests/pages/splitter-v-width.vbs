' The second example of docs/splitter-v.md: neither pane gets narrower than 900 twips. Without it they vanish.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 1500, 1200, 6000, 3600
Set picLeft = frmMain.AddControl("PictureBox", "picLeft")
Set picRight = frmMain.AddControl("PictureBox", "picRight")
Set pnlBar = frmMain.AddControl("Panel", "pnlBar")
pnlBar.Move 1995, 0, 60, 1000
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
splitter.Create picLeft, picRight, pnlBar, 4, 60, 60, 60, 60
Sub pnlBar_MouseDown(Button, Shift, X, Y)
    splitter.MouseDown Button, Shift, X, Y
End Sub
Sub pnlBar_MouseMove(Button, Shift, X, Y)
    splitter.MouseMove Button, Shift, X, Y
End Sub

'@example

Sub DragTo(x)
    Host.MovePointer pnlBar, 30, 600
    Host.PressButton
    Host.MovePointer pnlBar, x - pnlBar.Left, 600
    Host.ReleaseButton
End Sub
ShowInFront frmMain
DragTo 0
Check "the left pane keeps its width", picLeft.Width = Least
DragTo 5900
Check "the right pane keeps its width", picRight.Width = Least
Check "the panes meet the bar", picLeft.Left + picLeft.Width = pnlBar.Left And pnlBar.Left + pnlBar.Width = picRight.Left
frmMain.Width = 4500
Check "the right pane keeps it in a narrower form", picRight.Width = Least

' The class alone.
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
