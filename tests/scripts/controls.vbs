' The three controls on real forms, with the pointer and the keys of the system.
Option Explicit

Dim count, form, box, view, button, other, splitter, leftPane, rightPane, bar, focusDate, before, steps, clicks, picSave, keysInClick
count = 0
clicks = 0
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub
' Shows a form and waits until it is in front and has drawn itself.
Sub ShowInFront(shown)
    Dim turns
    shown.Show
    For turns = 1 To 400
        If Not Screen.ActiveForm Is Nothing Then
            If Screen.ActiveForm.Name = shown.Name Then Exit For
        End If
        WScript.Sleep 20
    Next
    Host.DoEvents
End Sub
' Waits until a control of a form has the focus.
Function FocusComesTo(owner, name)
    Dim turns
    For turns = 1 To 400
        If Not owner.ActiveControl Is Nothing Then
            FocusComesTo = (owner.ActiveControl.Name = name)
            If FocusComesTo Then Exit Function
        End If
        WScript.Sleep 20
    Next
End Function

' ---- month view ----
Dim months, days, refuse
months = 0
days = 0
refuse = False
Set form = Host.CreateForm("frmMonth")
form.Move 3000, 3000, 4500, 4500
Set box = form.AddControl("PictureBox", "picMonth")
box.Move 150, 150, 4000, 3600
Set view = CreateObject("KWOUtil.KWOMonthView")
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
Sub frmMonth_OnChangeMonth(PictureBox, NewMonth, NewYear, Cancel)
    months = months + 1
End Sub
Sub frmMonth_OnChangeDate(PictureBox, NewDate, Cancel)
    days = days + 1
    Cancel = refuse
End Sub
Function MonthCount
    MonthCount = view.VisibleYear * 12 + view.VisibleMonth
End Function

focusDate = DateSerial(2026, 11, 21) + 0.5
Check "created", view.Create(box, focusDate, DateSerial(2026, 11, 21), True, 100, True, form, True)
Check "no time of day", focusDate = DateSerial(2026, 11, 21)
Check "drawn for good", box.AutoRedraw
ShowInFront form
Check "selected at first", view.IsSelected(DateSerial(2026, 11, 21))

before = MonthCount
Host.Click box, box.ScaleWidth - 200, 200
Check "a click steps once", MonthCount = before + 1 And months = 1
Host.Click box, 200, 200
Check "and back", MonthCount = before And months = 2
Host.MovePointer box, box.ScaleWidth - 200, 200
Host.HoldButton 1000
steps = MonthCount - before
' At once and every tenth of a second: on a busy machine some less.
Check "a held button repeats", steps >= 4 And steps <= 12
view.ShowMonth 11, 2026
Check "the month is shown", view.VisibleMonth = 11 And view.VisibleYear = 2026

' The middle of the fifth row: a day between the 22nd and the 28th.
Host.Click box, box.ScaleWidth / 2, box.ScaleHeight * 0.68
Check "a day is clicked", days = 1
refuse = True
Host.Click box, box.ScaleWidth / 2 - 1200, box.ScaleHeight * 0.68
Check "a day is refused", days = 2
refuse = False
before = days
Host.TypeKeys "{LEFT}{SPACE}"
Check "keys select", days = before + 1
Host.TypeKeys "{PGDN}"
Check "keys change the month", view.VisibleMonth = 12
view.SelDaysClear
Check "cleared", Not view.IsSelected(DateSerial(2026, 11, 21)) And view.SelDay = 0
form.Close

' A form that goes away while it is asked.
Set form = Host.CreateForm("frmGone")
Set box = form.AddControl("PictureBox", "picGone")
box.Move 150, 150, 4000, 3600
Sub frmGone_OnChangeMonth(PictureBox, NewMonth, NewYear, Cancel)
    form.Close
End Sub
Set view = CreateObject("KWOUtil.KWOMonthView")
Check "created again", view.Create(box, focusDate, , , , True, , True)
Dim number
On Error Resume Next
view.ShowMonth 1, 2030
number = Err.Number
On Error GoTo 0
Check "the box is gone", number = 91
Set view = Nothing

' A form that is closed while an arrow is held: the release goes to nobody, and the next step is far away.
Dim closer, begun, lasted
Set form = Host.CreateForm("frmHeld")
form.Move 3000, 3000, 4500, 4500
Set box = form.AddControl("PictureBox", "picHeld")
box.Move 150, 150, 4000, 3600
Set view = CreateObject("KWOUtil.KWOMonthView")
Check "created for holding", view.Create(box, focusDate, , , 30000)
lasted = -1
Sub picHeld_MouseDown(Button, Shift, X, Y)
    begun = Timer
    view.MouseDown Button, Shift, X, Y
    lasted = Timer - begun
    If lasted < 0 Then lasted = lasted + 86400      ' midnight has passed
End Sub
Sub closer_Alarm(sender, tag, newDateTime)
    form.Close
End Sub
ShowInFront form
Set closer = WScript.CreateObject("KWOUtil.KWOTimer", "closer_")
closer.AddRelativeAlarm 1000, 1
Host.MovePointer box, box.ScaleWidth - 200, 200
Host.HoldButton 2500
Check "the press ended with the form", lasted >= 0 And lasted < 20
closer.CancelTimers
Set closer = Nothing
Set view = Nothing

' ---- picture button ----
Set form = Host.CreateForm("frmButton")
form.Move 3000, 3000, 4500, 3000
form.KeyPreview = True
Set picSave = form.AddControl("PictureBox", "picSave")
picSave.Move 300, 300, 1500, 600
picSave.AutoRedraw = True
Set other = form.AddControl("PictureBox", "picOther")
other.Move 2100, 300, 1500, 600
other.TabIndex = 1
other.TabStop = True
Set button = CreateObject("KWOUtil.KWOPicBtn")
Check "create tells nothing", Not button.Create(picSave, "&Save")
Sub picSave_MouseDown(Button_, Shift, X, Y)
    button.MouseDown Button_, Shift, X, Y
End Sub
Sub picSave_MouseMove(Button_, Shift, X, Y)
    button.MouseMove Button_, Shift, X, Y
End Sub
Sub picSave_MouseUp(Button_, Shift, X, Y)
    button.MouseUp Button_, Shift, X, Y
End Sub
Sub picSave_KeyDown(KeyCode, Shift)
    button.KeyDown KeyCode, Shift
End Sub
Sub frmButton_KeyDown(KeyCode, Shift)
    button.Form_KeyDown KeyCode, Shift
End Sub
keysInClick = 0
Sub frmButton_OnButtonClick(PictureBox)
    clicks = clicks + 1
    If keysInClick > 0 Then
        keysInClick = keysInClick - 1
        Host.TypeKeys "{SPACE}"
    End If
End Sub
ShowInFront form
Host.Click picSave, 700, 300
Check "clicked", clicks = 1
Host.MovePointer picSave, 700, 300
Host.PressButton
Host.MovePointer picSave, 700, 1500
Host.ReleaseButton
Check "released outside", clicks = 1
Host.TypeKeys "{SPACE}"
Check "by Space", clicks = 2
Host.TypeKeys "{ENTER}"
Check "by Enter", clicks = 3
keysInClick = 3
Host.TypeKeys "{SPACE}"
Check "keys during a click start none", clicks = 4 And keysInClick = 2
keysInClick = 0
Host.TypeKeys "{RIGHT}"
Check "an arrow moves the focus", FocusComesTo(form, "picOther")
Host.TypeKeys "%s"
Check "by its access key", clicks = 5 And form.ActiveControl.Name = "picSave"
form.Close

' ---- splitter ----
Set form = Host.CreateForm("frmSplit")
form.Move 3000, 3000, 6000, 3600
Set leftPane = form.AddControl("PictureBox", "picLeft")
Set rightPane = form.AddControl("PictureBox", "picRight")
Set bar = form.AddControl("Panel", "pnlBar")
bar.Move 1995, 0, 60, 1000
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
Check "splitter", splitter.Create(leftPane, rightPane, bar, 4)
Sub pnlBar_MouseDown(Button_, Shift, X, Y)
    splitter.MouseDown Button_, Shift, X, Y
End Sub
Sub pnlBar_MouseMove(Button_, Shift, X, Y)
    splitter.MouseMove Button_, Shift, X, Y
End Sub
Sub pnlBar_MouseUp(Button_, Shift, X, Y)
    splitter.MouseUp Button_, Shift, X, Y
End Sub
Check "panes beside the bar", leftPane.Width = bar.Left And rightPane.Left = bar.Left + bar.Width
ShowInFront form
before = bar.Left
Host.MovePointer bar, 30, 600
Host.PressButton
Host.MovePointer bar, 930, 600
Check "the bar waits for the release", bar.Left = before
Host.ReleaseButton
Check "the bar is where it was dropped", bar.Left = before + 900
Check "the panes follow", leftPane.Width = bar.Left And rightPane.Left = bar.Left + bar.Width
form.Close
WScript.Echo "done " & count
