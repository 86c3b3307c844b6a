' The second example of docs/sys-tray.md: clicks on the icon are sent to the form as the taskbar sends them.
'@include checks.vbs
Set frmMain = Host.CreateForm("frmMain")
Set icon = Host.LoadPicture("kwoutil.ico")

'@example

Sub OnIcon(message)
    frmTray_MouseMove 0, 0, message * Screen.TwipsPerPixelX, 0
End Sub
Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.AddRelativeAlarm 20, 1
Sub clock_Alarm(sender, tag, newDateTime)
    OnIcon tray.MouseDownMsg(1)
    Check "a press alone does nothing", Not frmMain.Visible
    OnIcon tray.MouseUpMsg(1)
    Check "a click shows the window", frmMain.Visible
    OnIcon tray.MouseDownMsg(2)
    Check "the form of the icon stays hidden", Not frmTray.Visible
    OnIcon tray.MouseUpMsg(2)
End Sub
Host.RunUntilStopped
Check "the right button ends the program", count = 3
tray.Destroy
WScript.Echo "done " & count
