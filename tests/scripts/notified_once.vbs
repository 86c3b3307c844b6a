' A procedure that fails, whatever with, is not called a second time with other arguments.
' expect-exit: 1
' expect-error: Type mismatch
' expect-error: cannot take the value
Option Explicit

Dim count, form, box, view, focusDate, asked
count = 0
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub

Set form = Host.CreateForm("frmMonth")
form.Move 3000, 3000, 4500, 4500
Set box = form.AddControl("PictureBox", "picMonth")
box.Move 150, 150, 4000, 3600
Set view = CreateObject("KWOUtil.KWOMonthView")
Sub frmMonth_OnChangeMonth(PictureBox, NewMonth, NewYear, Cancel)
    asked = asked + 1
    Err.Raise 13
End Sub
Sub frmMonth_OnChangeDate(PictureBox, NewDate, Cancel)
    asked = asked + 1
    Cancel = "perhaps"
End Sub

focusDate = DateSerial(2026, 11, 21)
Check "created", view.Create(box, focusDate, , True, , True)
asked = 0
view.ShowMonth 12, 2026
Check "asked for the month once", asked = 1
Check "a form that fails refuses no month", view.VisibleMonth = 12
asked = 0
view.KeyDown 32, 0
Check "asked for the date once", asked = 1
Check "a form that fails refuses no date", view.IsSelected(DateSerial(2026, 12, 1))

WScript.Echo "done " & count
