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
