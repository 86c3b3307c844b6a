' The example of docs/month-view.md with one selected day at most, and what a calendar without it does.
'@include checks.vbs
'@include forms.vbs
Sub ClickDayBelow(box)
    Host.Click box, box.ScaleWidth / 2, box.ScaleHeight * 0.68
End Sub
Function SelectedDays(calendar)
    SelectedDays = 0
    For tried = DateSerial(2026, 10, 1) To DateSerial(2027, 2, 28)
        If calendar.IsSelected(tried) Then SelectedDays = SelectedDays + 1
    Next
End Function
first = DateSerial(2026, 11, 2)

' Without the procedure, and at first without any option.
Set frmPlain = Host.CreateForm("frmPlain")
frmPlain.Move 3000, 2000, 6000, 6000
Set picPlain = frmPlain.AddControl("PictureBox", "picPlain")
picPlain.Move 150, 150, 4000, 3600
Set plain = CreateObject("KWOUtil.KWOMonthView")
shown = first
Check "Create without options", plain.Create(picPlain, shown)
Host.Forward picPlain, plain
ShowInFront frmPlain
ClickDayBelow picPlain
Check "a click selects nothing then", SelectedDays(plain) = 0 And Not plain.CanSelect
Check "the shortest interval", plain.Create(picPlain, shown, shown, False, -32768)
Check "one beyond 16 bits", Not plain.Create(picPlain, shown, shown, False, 32768)
plain.CaptionFontBold = True
plain.CaptionFontColor = 255
plain.CaptionBevel = 3
plain.MinDate = DateSerial(2026, 1, 1)
plain.Create picPlain, shown, shown, False, 150, False, frmPlain, True
Check "Create sets the colours", plain.CaptionFontColor = &H80000012 And plain.DayHdrFontColor = &H80000011 And _
    plain.DayFontColor = picPlain.ForeColor And plain.SelDayFontColor = &H8000000E
Check "and the bevels", plain.CaptionBevel = 0 And plain.DayHdrBevel = 3 And plain.DayBevel = 3
Check "and leaves the rest", plain.CaptionFontBold And plain.MinDate = DateSerial(2026, 1, 1)
plain.CaptionFontBold = False
plain.MinDate = 0
ClickDayBelow picPlain
Check "a click moves the selection with the focus", SelectedDays(plain) = 1 And Not plain.IsSelected(first)
ClickDayBelow picPlain
Check "a second one keeps it", SelectedDays(plain) = 1
Host.TypeKeys "{RIGHT}"
ClickDayBelow picPlain
Check "the clicked day stays selected", SelectedDays(plain) = 1
Host.TypeKeys "{RIGHT}"
Host.Click picPlain, picPlain.ScaleWidth / 2, picPlain.ScaleHeight * 0.5
Check "the earlier day stays after an arrow", SelectedDays(plain) = 2
Host.TypeKeys "{RIGHT} "
Check "Space selects one day", SelectedDays(plain) = 1
plain.ShowMonth 12, 2026
ClickDayBelow picPlain
Check "the earlier day stays after ShowMonth", SelectedDays(plain) = 2
frmPlain.Close

Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 6000
Set picMonth = frmMain.AddControl("PictureBox", "picMonth")
picMonth.Move 150, 150, 4000, 3600
Set cmdOK = frmMain.AddControl("CommandButton", "cmdOK")
cmdOK.Move 4500, 150, 1200, 400
cmdOK.TabIndex = 1
cmdOK.Default = True
clicks = 0
Sub cmdOK_Click
    clicks = clicks + 1
End Sub
Set view = CreateObject("KWOUtil.KWOMonthView")
shown = first
view.Create picMonth, shown, shown, False, 150, False, frmMain, True
Host.Forward picMonth, view

'@example

ShowInFront frmMain
Check "the calendar has the focus", FocusComesTo(frmMain, "picMonth")
ClickDayBelow picMonth
Host.TypeKeys "{RIGHT}"
Host.Click picMonth, picMonth.ScaleWidth / 2, picMonth.ScaleHeight * 0.5
Check "one day after an arrow", SelectedDays(view) = 1
view.ShowMonth 12, 2026
ClickDayBelow picMonth
Check "one day after ShowMonth", SelectedDays(view) = 1 And Month(view.SelDay) = 12
chosen = view.SelDay
Host.TypeKeys "{RIGHT}{ENTER}"
Check "Enter selects, the button is not pressed", SelectedDays(view) = 1 And view.SelDay = chosen + 1 And clicks = 0
Host.TypeKeys "{SPACE}"
Check "Space removes the day", SelectedDays(view) = 0
Host.TypeKeys "{TAB}"
Check "the button has the focus", FocusComesTo(frmMain, "cmdOK") And cmdOK.Default
picMonth.SetFocus
cmdOK.Default = True
Host.TypeKeys "{ENTER}"
Check "a default button gets Enter before the calendar", clicks = 1 And SelectedDays(view) = 0
frmMain.Close
WScript.Echo "done " & count
