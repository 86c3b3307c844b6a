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
    If tag = 2 Then TryTheRightButton Else TryTheLeftButton sender
End Sub
Sub TryTheLeftButton(sender)
    OnIcon tray.MouseDownMsg(1)
    Check "a press alone does nothing", Not frmMain.Visible
    OnIcon tray.MouseUpMsg(1)
    Check "a click shows the window", frmMain.Visible
    frmMain.WindowState = 1
    OnIcon tray.MouseUpMsg(1)
    Check "and a minimised one", frmMain.WindowState = 0
    Set other = Host.LoadPicture("kwoutil.ico")
    Set tray.Icon = other
    Check "another picture", tray.Icon.Handle = other.Handle
    frmMain.Enabled = False                 ' as it is while a box is open
    OnIcon tray.MouseUpMsg(2)
    frmMain.Enabled = True
    sender.AddRelativeAlarm 20, 2
End Sub
Sub TryTheRightButton
    OnIcon tray.MouseDownMsg(2)
    Check "the form of the icon stays hidden", Not frmTray.Visible
    OnIcon tray.MouseUpMsg(2)
End Sub
Host.RunUntilStopped
Check "the right button ends the program when no box is open", count = 5
tray.Destroy
WScript.Echo "done " & count
