' The example of docs/month-view.md that reads the selection after a change: by the pointer, by a key, and refused.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 6000
Set picMonth = frmMain.AddControl("PictureBox", "picMonth")
picMonth.Move 150, 150, 4000, 3600
Set view = CreateObject("KWOUtil.KWOMonthView")
first = DateSerial(2026, 11, 2)
view.Create picMonth, first, first, False, 150, True, frmMain, True
refuse = False
atNotification = 0
announced = 0
Sub frmMain_OnChangeDate(PictureBox, NewDate, Cancel)
    atNotification = view.SelDay
    announced = NewDate
    Cancel = refuse
End Sub

'@example

ShowInFront frmMain
Host.Click picMonth, picMonth.ScaleWidth / 2, picMonth.ScaleHeight * 0.68
chosen = view.SelDay
Check "the old day is selected in OnChangeDate", atNotification = first And announced = chosen And chosen <> first
Check "the new one behind the event", frmMain.Caption = FormatDateTime(chosen, vbLongDate)
Host.TypeKeys "{RIGHT}{SPACE}"
Check "a key", atNotification = chosen And frmMain.Caption = FormatDateTime(chosen + 1, vbLongDate)
refuse = True
Host.TypeKeys "{RIGHT}{SPACE}"
Check "a refused day", announced = chosen + 2 And frmMain.Caption = FormatDateTime(chosen + 1, vbLongDate)
refuse = False
Host.TypeKeys "{LEFT}{SPACE}"
Check "a selected day leaves the selection", announced = chosen + 1 And view.SelDay = 0
frmMain.Close
WScript.Echo "done " & count
