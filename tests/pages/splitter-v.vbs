' The example of docs/splitter-v.md in a wide and in a tall form: dragged, enlarged, and always as high as its panes.
Dim count
count = 0
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub
' Shows a form and waits until it is in front and has drawn itself.
Sub ShowInFront(shown)
    Dim turns
    shown.Show
    For turns = 1 To 400
        If Not Screen.ActiveForm Is Nothing Then
            If Screen.ActiveForm.Name = shown.Name Then Exit For
        End If
        WScript.Sleep 20
    Next
    Host.DoEvents
End Sub
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 1500, 1200, 6000, 3600
Set picLeft = frmMain.AddControl("PictureBox", "picLeft")
Set picRight = frmMain.AddControl("PictureBox", "picRight")
Set pnlBar = frmMain.AddControl("Panel", "pnlBar")
pnlBar.Move 1995, 0, 60, 1000

'@example

Sub CheckFit(name)
    Check name & ": the bar's height", pnlBar.Top = 60 And pnlBar.Height = picLeft.Height And picLeft.Height = frmMain.ScaleHeight - 120
    Check name & ": the panes", picLeft.Left = 60 And picLeft.Left + picLeft.Width = pnlBar.Left And picRight.Left = pnlBar.Left + pnlBar.Width And picRight.Left + picRight.Width = frmMain.ScaleWidth - 120
End Sub
Sub Drag(name, by)
    before = pnlBar.Left
    Host.MovePointer pnlBar, 30, 600
    Host.PressButton
    Host.MovePointer pnlBar, 30 + by, 600
    Check name & ": waits for the release", pnlBar.Left = before
    Host.ReleaseButton
    Check name & ": is where it was dropped", pnlBar.Left = before + by
    CheckFit name
End Sub
ShowInFront frmMain
CheckFit "at first"
Drag "in a wide form", 900
frmMain.Width = 4500
frmMain.Height = 6600
CheckFit "in a tall form"
Drag "in a tall form, dragged", -300
frmMain.Width = 7500
CheckFit "enlarged"
frmMain.Close
WScript.Echo "done " & count
