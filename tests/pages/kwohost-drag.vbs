' The dragging of docs/kwohost.md: the bar gets the press, the movement outside itself, and the release.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 3600
Set pnlBar = frmMain.AddControl("Panel", "pnlBar")
pnlBar.Move 1995, 0, 60, 2400
got = ""
Sub pnlBar_MouseDown(Button, Shift, X, Y)
    got = got & " down " & X
End Sub
Sub pnlBar_MouseMove(Button, Shift, X, Y)
    If Button = 1 And X > 60 Then got = got & " held " & X
End Sub
Sub pnlBar_MouseUp(Button, Shift, X, Y)
    got = got & " up " & X
End Sub
ShowInFront frmMain

'@example

Check "dragged:" & got, Left(got, 8) = " down 30" And InStr(got, " held 930") > 0 And Right(got, 7) = " up 930"
frmMain.Close
WScript.Echo "done " & count
