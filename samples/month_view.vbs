' A calendar on a picture box: click days, hold the arrows, use the keys. Argument of the script: a file for a
' picture of the form, which then closes.
Option Explicit

Dim form, box, status, view, focusDate
Set form = Host.CreateForm("frmMonth")
form.Caption = "Month view"
form.Move 1500, 900, 4500, 4650
Set box = form.AddControl("PictureBox", "picMonth")
box.Move 150, 150, 4000, 3300
Set status = form.AddControl("Label", "lblStatus")
status.Move 150, 3600, 4000, 500

Set view = CreateObject("KWOUtil.KWOMonthView")
focusDate = DateSerial(2026, 11, 21)
If Not view.Create(box, focusDate, focusDate, True, 150, True, form, True) Then
    WScript.Echo "The calendar could not be created."
    WScript.Quit 1
End If
view.SelDayFontBold = True
view.CaptionFontBold = True
view.SelDaysAdd DateSerial(2026, 11, 24)
view.SelDaysAdd DateSerial(2026, 11, 25)
view.Resize

' Forward the events of the picture box.
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
    If Not IsEmpty(view) Then
        view.Resize
    End If
End Sub

' The calendar asks before it changes.
Sub frmMonth_OnChangeMonth(PictureBox, NewMonth, NewYear, Cancel)
    Tell "month " & NewMonth & "/" & NewYear
End Sub
Sub frmMonth_OnChangeDate(PictureBox, NewDate, Cancel)
    ' Sundays cannot be selected.
    Cancel = (Weekday(NewDate) = 1)
    If Cancel Then
        Tell "not on Sundays"
    Else
        Tell "day " & Day(NewDate)
    End If
End Sub
Sub Tell(text)
    status.Caption = text
    WScript.Echo text
End Sub

form.Show
box.SetFocus
If WScript.Arguments.Count > 0 Then
    Host.SavePicture form, WScript.Arguments(0)
Else
    WScript.Sleep 3000
End If
form.Close
