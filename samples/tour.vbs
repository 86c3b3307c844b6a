' A tour through the component: every class at work, on one form.
'
'   tour.vbs                    the form stays open until it is closed
'   tour.vbs --play [folder]    plays by itself, with the pointer and the keys; pictures go into the folder
Option Explicit

Dim playing, pictures
playing = False
pictures = ""
If WScript.Arguments.Count > 0 Then
    playing = (WScript.Arguments(0) = "--play")
End If
If WScript.Arguments.Count > 1 Then
    pictures = WScript.Arguments(1) & "\"
End If

' ---- the form: two buttons, two panes with a bar between them, a status line ----
Dim form, panel, picMonth, picLog, bar, status, boxes(1), names, captions, i
names = Array("picToday", "picClear")
captions = Array("&Today", "&Clear")
Set form = Host.CreateForm("frmTour")
form.Caption = "KWOUtil"
form.KeyPreview = True
form.Move 1500, 1200, 8400, 6000
Set panel = form.AddControl("Panel", "pnlPanes")
Set picMonth = form.AddControl("PictureBox", "picMonth", panel)
Set picLog = form.AddControl("PictureBox", "picLog", panel)
Set bar = form.AddControl("Panel", "pnlBar", panel)
Set status = form.AddControl("Label", "lblStatus")
For i = 0 To 1
    Set boxes(i) = form.AddControl("PictureBox", names(i))
    boxes(i).Move 120 + i * 1500, 120, 1350, 420
    boxes(i).AutoRedraw = True
    boxes(i).TabIndex = i + 1
Next
picLog.TabStop = False
picLog.AutoRedraw = True
picLog.BackColor = &H80000005
bar.BackColor = &H80000010
bar.MousePointer = 9
panel.Move 60, 660, form.ScaleWidth - 120, form.ScaleHeight - 1140
picMonth.Move 0, 0, 4000, 4000
bar.Move 4000, 0, 60, 1000
status.Move 120, form.ScaleHeight - 360, form.ScaleWidth - 240, 300

' ---- the classes ----
Dim view, splitter, buttons(1), utility, metrics, fonts, registry, timer, tray, focusDate, lines, ticks
lines = 0
ticks = 0
Set utility = CreateObject("KWOUtil.KWOUtility")
Set metrics = CreateObject("KWOUtil.KWOSysMetrics")
Set fonts = CreateObject("KWOUtil.KWOSysParams")
Set registry = CreateObject("KWOUtil.KWORegistry")
Set tray = CreateObject("KWOUtil.KWOSysTray")
Set timer = WScript.CreateObject("KWOUtil.KWOTimer", "timer")
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
Set view = CreateObject("KWOUtil.KWOMonthView")
For i = 0 To 1
    Set buttons(i) = CreateObject("KWOUtil.KWOPicBtn")
    buttons(i).Create boxes(i), captions(i)
Next
Set status.Font = fonts.StatusFont
splitter.Create picMonth, picLog, bar, 4, 0, 0, 0, 0
focusDate = Date
' The pictures of a tour that plays by itself are the same every day.
If playing Then focusDate = DateSerial(2026, 11, 21)
view.Create picMonth, focusDate, focusDate, True, 150, True, form, True
view.CaptionFontBold = True
view.SelDayFontBold = True
view.Resize

' ---- messages go to the right pane, to the status line and to the output ----
Sub Tell(text)
    WScript.Echo text
    If Not form.Visible And lines > 0 Then
        Exit Sub
    End If
    lines = lines + 1
    If lines > 22 Then
        picLog.Cls
        lines = 1
    End If
    picLog.CurrentX = 60
    picLog.CurrentY = 60 + (lines - 1) * picLog.TextHeight("X")
    picLog.Print text
    picLog.Refresh
    status.Caption = text
End Sub

' ---- events of the controls are forwarded ----
Sub picMonth_MouseDown(Button, Shift, X, Y)
    view.MouseDown Button, Shift, X, Y
End Sub
Sub picMonth_MouseMove(Button, Shift, X, Y)
    view.MouseMove Button, Shift, X, Y
End Sub
Sub picMonth_MouseUp(Button, Shift, X, Y)
    view.MouseUp Button, Shift, X, Y
End Sub
Sub picMonth_DblClick
    view.DblClick
End Sub
Sub picMonth_KeyDown(KeyCode, Shift)
    view.KeyDown KeyCode, Shift
End Sub
Sub picMonth_Resize
    If IsObject(view) Then
        view.Resize
    End If
End Sub

Sub pnlBar_MouseDown(Button, Shift, X, Y)
    splitter.MouseDown Button, Shift, X, Y
End Sub
Sub pnlBar_MouseMove(Button, Shift, X, Y)
    splitter.MouseMove Button, Shift, X, Y
End Sub
Sub pnlBar_MouseUp(Button, Shift, X, Y)
    splitter.MouseUp Button, Shift, X, Y
    bar.Height = panel.ScaleHeight
    Tell "the bar is at " & bar.Left
End Sub

Sub picToday_MouseDown(Button, Shift, X, Y)
    buttons(0).MouseDown Button, Shift, X, Y
End Sub
Sub picToday_MouseMove(Button, Shift, X, Y)
    buttons(0).MouseMove Button, Shift, X, Y
End Sub
Sub picToday_MouseUp(Button, Shift, X, Y)
    buttons(0).MouseUp Button, Shift, X, Y
End Sub
Sub picToday_DblClick
    buttons(0).DblClick
End Sub
Sub picToday_KeyDown(KeyCode, Shift)
    buttons(0).KeyDown KeyCode, Shift
End Sub
Sub picToday_GotFocus
    buttons(0).GotFocus
End Sub
Sub picToday_LostFocus
    buttons(0).LostFocus
End Sub
Sub picClear_MouseDown(Button, Shift, X, Y)
    buttons(1).MouseDown Button, Shift, X, Y
End Sub
Sub picClear_MouseMove(Button, Shift, X, Y)
    buttons(1).MouseMove Button, Shift, X, Y
End Sub
Sub picClear_MouseUp(Button, Shift, X, Y)
    buttons(1).MouseUp Button, Shift, X, Y
End Sub
Sub picClear_DblClick
    buttons(1).DblClick
End Sub
Sub picClear_KeyDown(KeyCode, Shift)
    buttons(1).KeyDown KeyCode, Shift
End Sub
Sub picClear_GotFocus
    buttons(1).GotFocus
End Sub
Sub picClear_LostFocus
    buttons(1).LostFocus
End Sub

Sub frmTour_KeyDown(KeyCode, Shift)
    If Not buttons(0).Form_KeyDown(KeyCode, Shift) Then
        buttons(1).Form_KeyDown KeyCode, Shift
    End If
End Sub
Sub frmTour_Resize
    If IsObject(splitter) Then
        If form.ScaleHeight > 1500 Then
            panel.Move 60, 660, form.ScaleWidth - 120, form.ScaleHeight - 1140
            status.Move 120, form.ScaleHeight - 360, form.ScaleWidth - 240, 300
            splitter.Resize
            bar.Height = panel.ScaleHeight
        End If
    End If
End Sub

' ---- events of the classes ----
Sub frmTour_OnChangeMonth(PictureBox, NewMonth, NewYear, Cancel)
    Tell "month: " & MonthName(NewMonth) & " " & NewYear
End Sub
Sub frmTour_OnChangeDate(PictureBox, NewDate, Cancel)
    Cancel = (Weekday(NewDate) = 1)
    If Cancel Then
        Tell "day " & Day(NewDate) & ": not on Sundays"
    Else
        Tell "day " & Day(NewDate)
    End If
End Sub
Sub frmTour_OnButtonClick(PictureBox)
    Select Case PictureBox.Name
        Case "picToday"
            Tell "button: today"
            view.ShowMonth Month(focusDate), Year(focusDate)
        Case "picClear"
            Tell "button: clear"
            view.SelDaysClear
            view.Resize
    End Select
End Sub
Sub timer_Tick(sender)
    ticks = ticks + 1
    Tell "tick " & ticks
    If ticks = 3 Then
        sender.Enabled = False
    End If
End Sub
Sub timer_Alarm(sender, tag, newDateTime)
    Tell "alarm " & tag
End Sub
Sub frmTour_MouseMove(Button, Shift, X, Y)
    If CLng(X / Screen.TwipsPerPixelX) = tray.MouseUpMsg(1) Then
        Tell "the tray icon was clicked"
    End If
End Sub

Sub Picture(name)
    If pictures <> "" Then
        Host.SavePicture form, pictures & "tour-" & name & ".bmp"
    End If
End Sub

' ---- the tour ----
utility.KWO_CenterForm form
form.Show
picMonth.SetFocus
Tell "Windows " & utility.KWO_WinMajorVersion & "." & utility.KWO_WinMinorVersion & ", " & metrics.ScreenX & " by " & metrics.ScreenY & " pixels"
Tell "menus are written in " & fonts.MenuFont.Name & " " & fonts.MenuFont.Size
Const CurrentUser = &H80000001
Dim value
registry.KWO_RegSetValue CurrentUser, "Software\KWOUtil Tour", "Visitor", "you"
registry.KWO_RegGetValue CurrentUser, "Software\KWOUtil Tour", "Visitor", value
Tell "the registry says: " & value
registry.KWO_RegDeleteKey CurrentUser, "Software\KWOUtil Tour"
Tell "tray icon: " & tray.Create(form.hWnd, Host.LoadPicture(Left(WScript.ScriptFullName, Len(WScript.ScriptFullName) - Len(WScript.ScriptName)) & "kwoutil.ico"), "KWOUtil")
timer.Interval = 100
timer.Enabled = True
timer.AddRelativeAlarm 500, 7

If Not playing Then
    Host.Run
Else
    WScript.Sleep 800
    Picture "1-start"
    Dim right, cell
    right = picMonth.ScaleWidth - 200
    Host.Click picMonth, right, 200
    Host.Click picMonth, 200, 200
    Host.MovePointer picMonth, right, 200
    Host.HoldButton 500
    Picture "2-months"
    Host.Click boxes(0), 600, 200
    cell = picMonth.ScaleHeight / 8
    Host.Click picMonth, picMonth.ScaleWidth / 2, cell * 5
    Host.Click picMonth, 300, cell * 5
    picMonth.SetFocus
    Host.TypeKeys "{RIGHT}{RIGHT}{SPACE}{DOWN}{SPACE}{PGDN}{PGUP}"
    Picture "3-days"
    Host.MovePointer bar, 30, 900
    Host.PressButton
    Host.MovePointer bar, 930, 900
    Picture "4-dragging"
    Host.ReleaseButton
    form.Width = 9600
    form.Height = 6600
    Picture "5-larger"
    Host.TypeKeys "%c"
    Host.TypeKeys "{TAB}"
    Picture "6-cleared"
    WScript.Sleep 200
End If
If form.Visible Then
    form.Close
End If
tray.Destroy
WScript.Echo "The tour is over."
