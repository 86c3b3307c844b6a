' A form with a calendar, two buttons and a splitter. The program calls the procedures from Open to Shut.
' Wine's CreateObject never releases the class object, so WScript makes the objects.
Option Explicit

Dim form, panel, picMonth, picRest, bar, boxes(1), view, splitter, buttons(1), utility
Dim forms, months, dates, clicks, drags
forms = 0
months = 0
dates = 0
clicks = 0
drags = 0

Sub Open(bevel, month, spin)
    Dim i, names, captions, focusDate
    names = Array("picFirst", "picSecond")
    captions = Array("&First", "&Second")
    Set form = Host.CreateForm("frmSoak")
    form.KeyPreview = True
    form.Move 600, 600, 8400, 6000
    Set panel = form.AddControl("Panel", "pnlPanes")
    Set picMonth = form.AddControl("PictureBox", "picMonth", panel)
    Set picRest = form.AddControl("PictureBox", "picRest", panel)
    Set bar = form.AddControl("Panel", "pnlBar", panel)
    For i = 0 To 1
        Set boxes(i) = form.AddControl("PictureBox", names(i))
        boxes(i).Move 120 + i * 1500, 120, 1350, 420
        boxes(i).AutoRedraw = True
        Set buttons(i) = WScript.CreateObject("KWOUtil.KWOPicBtn")
        buttons(i).Create boxes(i), captions(i)
    Next
    panel.Move 60, 660, form.ScaleWidth - 120, form.ScaleHeight - 780
    picMonth.Move 0, 0, 4000, 4000
    bar.Move 4000, 0, 60, 1000
    Set splitter = WScript.CreateObject("KWOUtil.KWOSplitterV")
    If Not splitter.Create(picMonth, picRest, bar, 4, 0, 0, 0, 0) Then Err.Raise 1000, "forms.vbs", "no splitter"
    Set view = WScript.CreateObject("KWOUtil.KWOMonthView")
    focusDate = DateSerial(2026, 1 + month, 10)
    If Not view.Create(picMonth, focusDate, focusDate, True, 50 + spin * 40, True, form, True) Then
        Err.Raise 1000, "forms.vbs", "no calendar"
    End If
    view.DayBevel = bevel
    view.CaptionFontBold = (bevel = 1)
    view.SelDaysAdd DateSerial(2026, 1 + month, 20)
    view.Resize
    Set utility = WScript.CreateObject("KWOUtil.KWOUtility")
    utility.KWO_CenterForm form
    form.Show
    utility.KWO_SetFormPosition form, 0, form.Left + 15, form.Top + 15
    picMonth.SetFocus
    forms = forms + 1
End Sub

Sub ClickCalendar(x, y)
    Host.Click picMonth, picMonth.ScaleWidth * x / 100, picMonth.ScaleHeight * y / 100
End Sub
Sub HoldArrow(side, ms)
    Host.MovePointer picMonth, 200 + side * (picMonth.ScaleWidth - 400), 200
    Host.HoldButton ms
End Sub
Sub CalendarKeys(which)
    Dim keys
    keys = Array("{RIGHT}{SPACE}", "{DOWN}{ENTER}", "{PGDN}", "{PGUP}{LEFT}", "{UP}{SPACE}", "+{TAB}")
    picMonth.SetFocus
    Host.TypeKeys keys(which)
End Sub
Sub ClickButton(which, x)
    Host.Click boxes(which), 10 + x * 13, 200
End Sub
Sub HoldButton(which, ms)
    Host.MovePointer boxes(which), 500, 200
    Host.HoldButton ms
End Sub
Sub ButtonKeys(which)
    Dim keys
    keys = Array("{ENTER}", "{SPACE}", "%s", "{RIGHT}{ENTER}")
    boxes(which Mod 2).SetFocus
    Host.TypeKeys keys(which)
End Sub
Sub DragBar(distance)
    Dim x
    x = bar.Left
    Host.MovePointer bar, 30, 900
    Host.PressButton
    Host.MovePointer bar, 30 + distance, 900
    Host.MovePointer bar, 30 + distance / 2, 900
    Host.ReleaseButton
    If bar.Left <> x Then drags = drags + 1
    bar.Height = panel.ScaleHeight
End Sub
Sub ResizeForm(width, height)
    form.Width = width
    form.Height = height
End Sub
Sub Shut
    Dim i
    form.Close
    Set view = Nothing
    Set splitter = Nothing
    For i = 0 To 1
        Set buttons(i) = Nothing
        Set boxes(i) = Nothing
    Next
    Set utility = Nothing
    Set picMonth = Nothing
    Set picRest = Nothing
    Set bar = Nothing
    Set panel = Nothing
    Set form = Nothing
End Sub
Function Told(what)
    Select Case what
        Case "forms"
            Told = forms
        Case "months"
            Told = months
        Case "dates"
            Told = dates
        Case "clicks"
            Told = clicks
        Case "drags"
            Told = drags
    End Select
    Told = CLng(Told)
End Function

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
        If Not view Is Nothing Then view.Resize
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
End Sub

Sub picFirst_MouseDown(Button, Shift, X, Y)
    buttons(0).MouseDown Button, Shift, X, Y
End Sub
Sub picFirst_MouseMove(Button, Shift, X, Y)
    buttons(0).MouseMove Button, Shift, X, Y
End Sub
Sub picFirst_MouseUp(Button, Shift, X, Y)
    buttons(0).MouseUp Button, Shift, X, Y
End Sub
Sub picFirst_DblClick
    buttons(0).DblClick
End Sub
Sub picFirst_KeyDown(KeyCode, Shift)
    buttons(0).KeyDown KeyCode, Shift
End Sub
Sub picFirst_GotFocus
    buttons(0).GotFocus
End Sub
Sub picFirst_LostFocus
    If Not buttons(0) Is Nothing Then buttons(0).LostFocus
End Sub
Sub picSecond_MouseDown(Button, Shift, X, Y)
    buttons(1).MouseDown Button, Shift, X, Y
End Sub
Sub picSecond_MouseMove(Button, Shift, X, Y)
    buttons(1).MouseMove Button, Shift, X, Y
End Sub
Sub picSecond_MouseUp(Button, Shift, X, Y)
    buttons(1).MouseUp Button, Shift, X, Y
End Sub
Sub picSecond_DblClick
    buttons(1).DblClick
End Sub
Sub picSecond_KeyDown(KeyCode, Shift)
    buttons(1).KeyDown KeyCode, Shift
End Sub
Sub picSecond_GotFocus
    buttons(1).GotFocus
End Sub
Sub picSecond_LostFocus
    If Not buttons(1) Is Nothing Then buttons(1).LostFocus
End Sub

Sub frmSoak_KeyDown(KeyCode, Shift)
    If Not buttons(0).Form_KeyDown(KeyCode, Shift) Then
        buttons(1).Form_KeyDown KeyCode, Shift
    End If
End Sub
Sub frmSoak_Resize
    If IsObject(splitter) Then
        If Not splitter Is Nothing Then
            If form.ScaleHeight > 1500 Then
                panel.Move 60, 660, form.ScaleWidth - 120, form.ScaleHeight - 780
                splitter.Resize
                bar.Height = panel.ScaleHeight
            End If
        End If
    End If
End Sub
Sub frmSoak_OnChangeMonth(PictureBox, NewMonth, NewYear, Cancel)
    months = months + 1
    Cancel = (NewYear < 2020)
End Sub
Sub frmSoak_OnChangeDate(PictureBox, NewDate, Cancel)
    dates = dates + 1
    Cancel = (Weekday(NewDate) = 1)
End Sub
Sub frmSoak_OnButtonClick(PictureBox)
    clicks = clicks + 1
    If PictureBox.Name = "picSecond" Then
        view.SelDaysClear
        view.Resize
    End If
End Sub
