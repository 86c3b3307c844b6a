' The form of docs/kwohost.md that hides instead of closing, and the button that ends the program.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 4500, 3000
Set cmdExit = frmMain.AddControl("CommandButton", "cmdExit")

'@example

Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.AddRelativeAlarm 20, 1
Sub clock_Alarm(sender, tag, newDateTime)
    ShowInFront frmMain
    frmMain.Close
    Check "closing hides it", Not frmMain.Visible
    ShowInFront frmMain
    Check "it can be shown again", frmMain.Visible
    cmdExit.Value = True
End Sub
Host.RunUntilStopped
Check "the button ends the program, and the form is still there", count = 2 And frmMain.Visible
WScript.Echo "done " & count
