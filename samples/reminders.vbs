' Reminders: a calendar, what there is to do on a day, alarms, and an icon beside the clock.
'
' Closing the window hides it, and the alarms still come. A double click on the icon shows it; Exit ends the program.
Option Explicit

' ---- the reminders ----
' Each reminder has a number. The two dictionaries hold its date and its text, the registry holds both in one line, and
' the number is the tag of its alarm. No number is 0, because an alarm with the tag 0 replaces all others.
Const CurrentUser = &H80000001, AlarmEvent = 2, MinutesADay = 1440
Dim registry, key, clock, moments, texts, lastNumber
Set registry = CreateObject("KWOUtil.KWORegistry")
Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
Set moments = CreateObject("Scripting.Dictionary")
Set texts = CreateObject("Scripting.Dictionary")
key = registry.KWO_RegCreateKey(CurrentUser, "Software\KWOUtil Reminders")

Sub Remind(number, moment, text)
    moments(number) = moment
    texts(number) = text
    ' A date as a number of minutes is the same text in every country.
    registry.KWO_RegSetValue key, "", CStr(number), CLng(moment * MinutesADay) & " " & text
    clock.AddAlarm moment, number           ' replaces the alarm that this number has
End Sub
Sub Forget(number)
    moments.Remove number
    registry.KWO_RegDeleteValue key, "", CStr(number)
    clock.CancelTimers AlarmEvent, number
End Sub
' What an earlier run has kept. The registry keeps texts, so the defaults are texts too.
Sub Recall
    Dim number, line, blank
    lastNumber = CLng(registry.KWO_RegGetValueEx(key, "Last", "0"))
    For number = 1 To lastNumber
        line = registry.KWO_RegGetValueEx(key, CStr(number), "")
        blank = InStr(line, " ")
        If blank > 0 Then Remind number, CDate(CLng(Left(line, blank - 1)) / MinutesADay), Mid(line, blank + 1)
    Next
End Sub

' The alarm of a date that has passed comes after a second: what was due while the program did not run comes when it
' starts. While this procedure runs, no other alarm arrives; so it shows the window and does not wait for an answer.
Sub clock_Alarm(sender, tag, newDateTime)
    If moments(tag) > Now Then              ' an alarm that is more than 60 days ahead also comes on the 60th day
        newDateTime = moments(tag)
    Else
        ShowList
        If form.WindowState = 1 Then form.WindowState = 0   ' Show leaves a minimised window minimised
        form.Show
    End If
End Sub

' ---- the window: a calendar on the left, a list on the right, and below it a new reminder ----
Dim form, picMonth, view, chosen, lblDay, lstDue, txtTime, txtText
Function Add(kind, name, caption, left, top, width, height)
    Dim control
    Set control = form.AddControl(kind, name)
    control.Move left, top, width, height
    If caption <> "" Then control.Caption = caption
    Set Add = control
End Function
Set form = Host.CreateForm("frmReminders")
form.Caption = "Reminders"
form.Move 1500, 1200, 7800, 4200
Set picMonth = Add("PictureBox", "picMonth", "", 120, 120, 3600, 3450)
Set lblDay = Add("Label", "lblDay", "", 3840, 120, 3720, 270)
Set lstDue = Add("ListBox", "lstDue", "", 3840, 420, 3720, 1800)
Add "CommandButton", "cmdDone", "&Done", 3840, 2310, 1170, 390
Add "CommandButton", "cmdLater", "&Later", 5115, 2310, 1170, 390
Add "CommandButton", "cmdExit", "E&xit", 6390, 2310, 1170, 390
Set txtTime = Add("TextBox", "txtTime", "", 3840, 2820, 720, 330)
Set txtText = Add("TextBox", "txtText", "", 4620, 2820, 2940, 330)
Add("CommandButton", "cmdAdd", "&Add", 3840, 3210, 1170, 390).Default = True    ' Enter in a text box presses it

Set view = CreateObject("KWOUtil.KWOMonthView")
Host.Forward picMonth, view                 ' the mouse and the keys of the box
chosen = Date
view.Create picMonth, chosen, chosen, False, 150, False, form, True

' The calendar tells the form of a day before it selects the day.
Sub frmReminders_OnChangeDate(PictureBox, NewDate, Cancel)
    chosen = NewDate
    If Not view.IsSelected(NewDate) Then view.SelDaysClear  ' the earlier day could stay selected
    ShowList
End Sub
' What is due, whatever day is chosen, and what there is to do on the chosen day.
Sub ShowList
    Dim number, line
    lblDay.Caption = FormatDateTime(chosen, vbLongDate)
    lstDue.Clear
    For Each number In moments.Keys
        If moments(number) <= Now Or Int(moments(number)) = chosen Then
            line = FormatDateTime(moments(number), vbShortTime) & "  " & texts(number)
            If moments(number) <= Now Then line = "Now: " & line
            lstDue.AddItem line
            lstDue.ItemData(lstDue.NewIndex) = number
        End If
    Next
    If lstDue.ListCount > 0 Then lstDue.ListIndex = 0
End Sub
Sub cmdAdd_Click
    Dim time
    On Error Resume Next
    time = CDate(txtTime.Text)              ' stays empty if the text is no time
    On Error GoTo 0
    If IsEmpty(time) Or txtText.Text = "" Then
        lblDay.Caption = "Write a time, such as 14:30, and a text."
        Exit Sub
    End If
    lastNumber = lastNumber + 1
    registry.KWO_RegSetValue key, "", "Last", CStr(lastNumber)
    Remind lastNumber, chosen + time, txtText.Text
    txtText.Text = ""
    ShowList
End Sub
Sub cmdDone_Click
    If lstDue.ListIndex >= 0 Then Forget lstDue.ItemData(lstDue.ListIndex)
    ShowList
End Sub
Sub cmdLater_Click                          ' in five minutes
    Dim number
    If lstDue.ListIndex < 0 Then Exit Sub
    number = lstDue.ItemData(lstDue.ListIndex)
    Remind number, DateAdd("n", 5, Now), texts(number)
    ShowList
End Sub
Sub cmdExit_Click
    Host.Stop
End Sub
Sub frmReminders_Unload(Cancel)
    Cancel = True
    form.Hide
End Sub

' ---- the icon: what the mouse does on it arrives as a movement of a form of its own, which is never shown ----
Dim frmTray, tray
Set frmTray = Host.CreateForm("frmTray")
Set tray = CreateObject("KWOUtil.KWOSysTray")
tray.Create frmTray.hWnd, Host.LoadPicture(Replace(WScript.ScriptFullName, WScript.ScriptName, "kwoutil.ico")), "Reminders"
Sub frmTray_MouseMove(Button, Shift, X, Y)
    If CLng(X / Screen.TwipsPerPixelX) <> tray.DoubleClickMsg(1) Then Exit Sub
    If form.WindowState = 1 Then form.WindowState = 0
    form.Show
End Sub

Recall
ShowList
form.Show
Host.RunUntilStopped
tray.Destroy
