ShowInFront frmMain
' The calendar has asked for the date some seconds ago.
shown = DateSerial(view.VisibleYear, view.VisibleMonth, 1)
Check "the month of today", shown = DateSerial(Year(Now), Month(Now), 1) Or shown = DateSerial(Year(Now - 1 / 1440), Month(Now - 1 / 1440), 1)
Function MonthCount
    MonthCount = view.VisibleYear * 12 + view.VisibleMonth
End Function
before = MonthCount
Host.Click picMonth, picMonth.ScaleWidth - 200, 200
Check "the right arrow", MonthCount = before + 1
Host.Click picMonth, 200, 200
Check "the left arrow", MonthCount = before

' A row of seven days in the middle of the month: six are selected by a click, the Sunday among them is not.
view.ShowMonth 11, 2026
selected = 0
sundays = 0
For column = 0 To 6
    view.SelDaysClear
    Host.Click picMonth, (column + 0.5) * picMonth.ScaleWidth / 7, picMonth.ScaleHeight * 0.68
    If view.SelDay = 0 Then
        sundays = sundays + 1
    ElseIf Weekday(view.SelDay) <> 1 And view.IsSelected(view.SelDay) Then
        selected = selected + 1
    End If
Next
Check "six days can be clicked", selected = 6
Check "a Sunday cannot", sundays = 1

view.SelDaysClear
view.ShowMonth 10, 2026
view.ShowMonth 11, 2026
Host.TypeKeys "{SPACE}"
Check "not on Sunday, the 1st", Not view.IsSelected(DateSerial(2026, 11, 1))
Host.TypeKeys "{RIGHT}{SPACE}"
Check "on Monday, the 2nd", view.IsSelected(DateSerial(2026, 11, 2))
Host.TypeKeys "{PGDN}"
Check "Page Down", view.VisibleMonth = 12
picMonth.Width = 5000
Host.Click picMonth, picMonth.ScaleWidth - 200, 200
Check "the arrow of the larger box", view.VisibleMonth = 1
frmMain.Close
WScript.Echo "done " & count
