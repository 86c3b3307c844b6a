' The example of docs/sys-tray.md: the mouse's messages are sent to the form as the taskbar does it.
' expect-output: ^opened$
'@include checks.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 0, 0, 12000, 6000
Set icon = Host.LoadPicture("kwoutil.ico")

'@example

Check "there is an icon", tray.Tip = "My program is running"
Check "a movement is no double click", Not frmMain.Visible
frmMain_MouseMove 0, 0, tray.MouseDownMsg(1) * Screen.TwipsPerPixelX, 0
Check "nor is a press", Not frmMain.Visible
frmMain_MouseMove 0, 0, tray.DoubleClickMsg(1) * Screen.TwipsPerPixelX, 0
Check "a double click shows the form", frmMain.Visible
tray.Destroy
frmMain.Close
WScript.Echo "done " & count
