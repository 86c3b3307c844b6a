' Drives samples/reminders.vbs. The user is a timer: the alarms of the sample come between its steps.
Option Explicit

Dim checks
checks = 0
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Const UserRoot = &H80000001, UserKey = "Software\KWOUtil Reminders"
Dim test, user, turns
Set test = CreateObject("KWOUtil.KWORegistry")
Function Kept(name)
    Dim value
    test.KWO_RegGetValue UserRoot, UserKey, name, value
    Kept = value
End Function
Function MinutesOf(moment)
    MinutesOf = CLng(moment * 1440)
End Function
' What an earlier run would have left: a reminder that was due an hour ago.
test.KWO_RegDeleteKey UserRoot, UserKey
test.KWO_RegSetValue UserRoot, UserKey, "Last", "1"
test.KWO_RegSetValue UserRoot, UserKey, "1", MinutesOf(Now) - 60 & " water the plants"
Set user = WScript.CreateObject("KWOUtil.KWOTimer", "user")
turns = 0
user.AddRelativeAlarm 50, 1

Sub user_Alarm(sender, tag, newDateTime)
    Select Case tag
        Case 1
            Check "the window is shown", form.Visible
            Check "what was due is listed", lstDue.ListCount = 1 And Right(lstDue.List(0), 16) = "water the plants"
            form.WindowState = 1
            form.Close
            Check "closing hides it", Not form.Visible
            sender.AddRelativeAlarm 300, 2
        Case 2
            If TakesKeys(sender, 2) Then
                Check "the alarm shows it", form.Visible And form.WindowState = 0
                UseTheWindow
                form.WindowState = 1
                form.Close
                sender.AddRelativeAlarm 300, 3
            End If
        Case 3
            frmTray_MouseMove 0, 0, tray.DoubleClickMsg(1) * Screen.TwipsPerPixelX, 0
            Check "the icon shows the window", form.Visible And form.WindowState = 0
            sender.AddRelativeAlarm 20, 4
        Case 4
            If TakesKeys(sender, 4) Then ClickButton 2
    End Select
End Sub
' If the window has not got the focus yet, the step comes again, and much too late it is taken all the same.
Function TakesKeys(sender, tag)
    TakesKeys = Not form.ActiveControl Is Nothing Or turns > 500
    turns = turns + 1
    If Not TakesKeys Then sender.AddRelativeAlarm 20, tag
End Function
Sub ClickOn(control)
    Host.Click control, control.Width / 2, control.Height / 2
End Sub
' 0 done, 1 later, 2 exit.
Sub ClickButton(number)
    Host.Click form, 4400 + 1275 * number, 2500
End Sub
Sub UseTheWindow
    Dim before
    ClickButton 0
    Check "done", lstDue.ListCount = 0 And Kept("1") = ""

    before = lblDay.Caption
    ClickOn picMonth
    Host.TypeKeys "{PGDN}"
    Host.Click picMonth, picMonth.ScaleWidth / 2, picMonth.ScaleHeight * 0.68
    Check "a day of the next month", chosen > Date And Month(chosen) <> Month(Date) And Not view.IsSelected(Date) And lblDay.Caption <> before
    ClickOn txtTime
    Host.TypeKeys "half{ENTER}"
    Check "no time", lstDue.ListCount = 0 And InStr(lblDay.Caption, "14:30") > 0
    txtTime.Text = ""
    Host.TypeKeys "23:45{TAB}call home{ENTER}"
    Check "added", lstDue.ListCount = 1 And lstDue.List(0) = "23:45  call home" And txtText.Text = ""
    Check "kept", Kept("2") = MinutesOf(chosen) + 1425 & " call home" And Kept("Last") = "2"
    Picture "reminders"
    Host.TypeKeys "%l"
    Check "later", lstDue.ListCount = 0 And Abs(CLng(Left(Kept("2"), 8)) - MinutesOf(Now) - 5) <= 1
End Sub
Sub Picture(name)
    Dim folder
    folder = CreateObject("WScript.Shell").ExpandEnvironmentStrings("%KWO_PICTURES%")
    folder = Replace(folder, Chr(0), "")    ' Wine adds the zero at its end
    If InStr(folder, "%") = 0 Then Host.SavePicture form, folder & "\" & name & ".bmp"
End Sub

'@sample

Check "it ended by its button", Not frmTray.Visible
Check "what is not done is kept", Kept("2") <> ""
Set clock = Nothing
test.KWO_RegDeleteKey UserRoot, UserKey
WScript.Echo "done " & checks
