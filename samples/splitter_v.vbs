' Two panes and a bar between them that you can drag.
Option Explicit

Dim form, leftPane, rightPane, bar, splitter
Set form = Host.CreateForm("frmSplit")
form.Caption = "Splitter"
form.Move 3000, 2000, 6000, 3600
Set leftPane = form.AddControl("PictureBox", "picLeft")
Set rightPane = form.AddControl("PictureBox", "picRight")
Set bar = form.AddControl("Panel", "pnlBar")
leftPane.BackColor = &H80000005
rightPane.BackColor = &H80000005
' A bar in the colour of shadows, to see it between the panes.
bar.BackColor = &H80000010
bar.MousePointer = 9
bar.Move 2000, 0, 60, 1000

Set splitter = CreateObject("KWOUtil.KWOSplitterV")
WScript.Echo "created:", splitter.Create(leftPane, rightPane, bar, 4, 60, 60, 60, 60)

Sub pnlBar_MouseDown(Button, Shift, X, Y)
    splitter.MouseDown Button, Shift, X, Y
End Sub
Sub pnlBar_MouseMove(Button, Shift, X, Y)
    splitter.MouseMove Button, Shift, X, Y
End Sub
Sub pnlBar_MouseUp(Button, Shift, X, Y)
    splitter.MouseUp Button, Shift, X, Y
    FitBar
End Sub
Sub frmSplit_Resize
    If Not IsEmpty(splitter) Then
        splitter.Resize
        FitBar
    End If
End Sub
' The class does not adjust the bar's height.
Sub FitBar
    If form.ScaleHeight > 120 Then
        bar.Height = form.ScaleHeight - 120
    End If
End Sub

Sub Tell(what)
    WScript.Echo what & ": bar at " & bar.Left & ", left pane " & leftPane.Width & ", right pane " & rightPane.Width
End Sub

form.Show
WScript.Sleep 200
Tell "at first"
Host.MovePointer bar, 30, 600
Host.PressButton
Host.MovePointer bar, 900, 600
If WScript.Arguments.Count > 0 Then
    Host.SavePicture form, WScript.Arguments(0)
End If
Host.ReleaseButton
Tell "dragged to the right"
form.Width = 4500
Tell "in a narrower form"
WScript.Sleep 500
form.Close
