' An icon beside the clock. What the mouse does on it arrives as a mouse movement of the form, with the number of the
' mouse's message in place of X.
Option Explicit

Const LeftButton = 1, RightButton = 2
Dim form, tray, icon
Set form = Host.CreateForm("frmTray")
Set tray = CreateObject("KWOUtil.KWOSysTray")
Set icon = Host.LoadPicture(Left(WScript.ScriptFullName, Len(WScript.ScriptFullName) - Len(WScript.ScriptName)) & "kwoutil.ico")

Sub frmTray_MouseMove(Button, Shift, X, Y)
    Select Case CLng(X / Screen.TwipsPerPixelX)
        Case tray.MouseDownMsg(LeftButton)
            WScript.Echo "left button down"
        Case tray.MouseUpMsg(LeftButton)
            WScript.Echo "left button up"
        Case tray.DoubleClickMsg(LeftButton)
            WScript.Echo "left button, double click"
        Case tray.MouseUpMsg(RightButton)
            WScript.Echo "right button up"
    End Select
End Sub

WScript.Echo "added:", tray.Create(form.hWnd, icon, "KWOUtil is here")
WScript.Echo "its tip:", tray.Tip
tray.Tip = "KWOUtil is still here"
WScript.Echo "and now:", tray.Tip
' Time to click; an argument of the script says how many seconds.
Dim seconds
seconds = 2
If WScript.Arguments.Count > 0 Then seconds = CLng(WScript.Arguments(0))
WScript.Sleep seconds * 1000
tray.Destroy
WScript.Echo "removed"
