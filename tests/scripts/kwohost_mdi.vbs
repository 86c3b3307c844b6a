' MDI forms, pictures, and the placement of real forms.
' arguments: "${KWO_PICTURES:-C:}\\placed-forms.bmp"
Option Explicit

Dim number, count, mdi, child, utility, plain, fso, folder, picture
count = 0
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub
Function Near(a, b)
    Near = Abs(a - b) <= 20
End Function

Set utility = CreateObject("KWOUtil.KWOUtility")
Set mdi = Host.CreateMDIForm("mdi")
mdi.Move 1500, 1200, 9000, 7500
mdi.Show
Set child = Host.CreateForm("child", mdi)
child.Move 0, 0, 3000, 1995
child.Show
Check "MDI child", child.MDIChild And Not mdi.MDIChild
Check "in the client area", child.Left = 0 And child.Top = 0 And mdi.ScaleWidth < mdi.Width
utility.KWO_CenterForm child
Check "not moved without its parent", child.Left = 0 And child.Top = 0
utility.KWO_CenterForm child, mdi
Check "centred", Near(child.Left, (mdi.ScaleWidth - child.Width) / 2) And Near(child.Top, (mdi.ScaleHeight - child.Height) / 2)
On Error Resume Next
Host.CreateForm "x", child
number = Err.Number
On Error GoTo 0
Check "no MDI form", number = 13

Set plain = Host.CreateForm("plain")
plain.Move 0, 0, 4500, 3000
plain.Show
utility.KWO_CenterForm plain
Check "on the screen", Near(plain.Left, (Screen.Width - 4500) / 2) And Near(plain.Top, (Screen.Height - 3000) / 2)
utility.KWO_CenterForm plain, mdi
Check "over a form", Near(plain.Left, mdi.Left + (mdi.Width - 4500) / 2) And Near(plain.Top, mdi.Top + (mdi.Height - 3000) / 2)
utility.KWO_SetFormPosition plain, , 60000, 60000
Check "pulled in", Near(plain.Left, Screen.Width - 4500) And Near(plain.Top, Screen.Height - 3000)
utility.KWO_SetFormPosition plain, , -600, -600
Check "left edge alone", plain.Left = 0 And plain.Top = -600
utility.KWO_SetFormPosition plain, 2, 300, 300, 3000, 3000
Check "maximised at last", plain.WindowState = 2
plain.WindowState = 1
utility.KWO_CenterForm plain
Check "no longer minimised", plain.WindowState = 0
If WScript.Arguments.Count > 0 Then
    Host.SavePicture Screen, WScript.Arguments(0)
End If

folder = Left(WScript.ScriptFullName, Len(WScript.ScriptFullName) - Len(WScript.ScriptName))
Set picture = Host.LoadPicture(folder & "..\..\samples\kwoutil.ico")
Check "icon", picture.Type = 3 And picture.Handle <> 0
On Error Resume Next
Host.LoadPicture "Z:\no such file.ico"
number = Err.Number
On Error GoTo 0
Check "no file", number = 53
On Error Resume Next
Host.LoadPicture WScript.ScriptFullName
number = Err.Number
On Error GoTo 0
Check "no picture", number = 481
On Error Resume Next
Host.SavePicture picture, "x.bmp"
number = Err.Number
On Error GoTo 0
Check "an icon cannot be saved", number = 481
On Error Resume Next
Host.SavePicture plain, "Z:\no such folder\x.bmp"
number = Err.Number
On Error GoTo 0
Check "no place for a file", number = 75

Dim tray
Set tray = CreateObject("KWOUtil.KWOSysTray")
Check "tray icon", tray.Create(plain.hWnd, picture, "tip") And tray.Tip = "tip"
Check "its picture", tray.Icon Is picture
Set tray = Nothing
WScript.Echo "done " & count
