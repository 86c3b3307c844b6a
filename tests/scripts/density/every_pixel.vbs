' Every class at the display's density, which ./test changes: what is drawn at a pixel is hit at that pixel.
Option Explicit

Dim count, form, box, sample, metrics, twipsX, twipsY
count = 0
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
Set metrics = CreateObject("KWOUtil.KWOSysMetrics")
twipsX = Screen.TwipsPerPixelX
twipsY = Screen.TwipsPerPixelY
WScript.Echo "twips in a pixel:", twipsX, twipsY
Check "whole twips", twipsX = Int(twipsX) And twipsY = Int(twipsY)
Check "the twips of the metrics", metrics.ScreenX(1) = metrics.ScreenX * twipsX And metrics.ScreenY(1) = metrics.ScreenY * twipsY
Check "the size of the screen", Screen.Width = metrics.ScreenX(1) And Screen.Height = metrics.ScreenY(1)

' ---- the picture box itself ----
Const BoxLeft = 7
Const BoxTop = 5
Const BoxWidth = 267
Const BoxHeight = 291
Set form = Host.CreateForm("frmMonth")
form.Move 100 * twipsX, 60 * twipsY, 400 * twipsX, 420 * twipsY
Set box = form.AddControl("PictureBox", "picMonth")
box.Move BoxLeft * twipsX, BoxTop * twipsY, BoxWidth * twipsX, BoxHeight * twipsY
Check "the box in twips", box.ScaleWidth = BoxWidth * twipsX And box.ScaleHeight = BoxHeight * twipsY
box.ScaleMode = 3
Check "the box in pixels", box.ScaleWidth = BoxWidth And box.ScaleHeight = BoxHeight
box.ScaleMode = 1
Dim pixel, wrong
wrong = 0
For pixel = 0 To BoxWidth
    If box.ScaleX(pixel * twipsX, 1, 3) <> pixel Or box.ScaleY(pixel, 3, 1) <> pixel * twipsY Then
        wrong = wrong + 1
    End If
Next
Check "every pixel has its twips (" & wrong & ")", wrong = 0
' The same text on a box that counts in pixels.
Set sample = form.AddControl("PictureBox", "picSample")
sample.ScaleMode = 3
sample.Visible = False
Check "the height of a text", box.TextHeight("JjGg|") = sample.TextHeight("JjGg|") * twipsY

' It counts in pixels, so that the pointer's places below are those of the screen whatever the twips are.
Dim ruler
Sub AddRuler
    Set ruler = form.AddControl("Panel", "pnlRuler")
    ruler.Visible = False
    ruler.Move 0, 0
    ruler.ScaleMode = 3
End Sub

' ---- the calendar: a month of 31 days ----
Dim view, focusDate, months, told, button, cellWidth, cellHeight, daysTop, spare, lefts(7), column
months = 0
AddRuler
Set view = CreateObject("KWOUtil.KWOMonthView")
focusDate = DateSerial(2026, 12, 31)
Check "created", view.Create(box, focusDate, , False, 150, True, form, True)
Sub picMonth_MouseDown(Button, Shift, X, Y)
    view.MouseDown Button, Shift, X, Y
End Sub
Sub picMonth_MouseMove(Button, Shift, X, Y)
    view.MouseMove Button, Shift, X, Y
End Sub
Sub picMonth_MouseUp(Button, Shift, X, Y)
    view.MouseUp Button, Shift, X, Y
End Sub
Sub frmMonth_OnChangeMonth(PictureBox, NewMonth, NewYear, Cancel)
    months = months + 1
End Sub
Sub frmMonth_OnChangeDate(PictureBox, NewDate, Cancel)
    told = Day(NewDate)
End Sub
button = sample.TextHeight("JjGg|") + 6
cellWidth = (BoxWidth - 8) \ 7
cellHeight = (BoxHeight - 8 - (4 + button) - 4) \ 7
daysTop = 4 + button + 4 + cellHeight + 4
spare = BoxWidth - 8 - 7 * cellWidth
lefts(0) = 4
For column = 0 To 6
    lefts(column + 1) = lefts(column) + cellWidth
    If column < spare Then
        lefts(column + 1) = lefts(column + 1) + 1
    End If
Next

ShowInFront form
' Odd days at the first pixel of their cell, even ones at the last.
Dim firstColumn, number, place, x, y, missed
firstColumn = Weekday(DateSerial(2026, 12, 1), 0) - 1
missed = ""
For number = 1 To 31
    place = firstColumn + number - 1
    column = place Mod 7
    x = lefts(column)
    y = daysTop + (place \ 7) * cellHeight
    If number Mod 2 = 0 Then
        x = lefts(column + 1) - 1
        y = y + cellHeight - 1
    End If
    told = 0
    Host.Click ruler, BoxLeft + x, BoxTop + y
    If told <> number Then
        missed = missed & " " & number & "=" & told
    End If
Next
Check "every day is hit:" & missed, missed = ""

' The arrows at their outermost pixels, and a pixel beside them. Clicks that follow each other are far apart.
Function Steps(left, top)
    months = 0
    Host.Click ruler, BoxLeft + left, BoxTop + top
    Steps = months
End Function
Dim nextLeft
nextLeft = BoxWidth - 4 - button
Check "previous, first pixel", Steps(4, 4) = 1
Check "next, first pixel", Steps(nextLeft, 4) = 1
Check "previous, last pixel", Steps(4 + button - 1, 4 + button - 1) = 1
Check "next, last pixel", Steps(nextLeft + button - 1, 4 + button - 1) = 1
Check "right of previous", Steps(4 + button, 4) = 0
Check "left of next", Steps(nextLeft - 1, 4 + button - 1) = 0
Check "left of previous", Steps(3, 4 + button - 1) = 0
Check "right of next", Steps(nextLeft + button, 4) = 0
Check "below previous", Steps(4, 4 + button) = 0
Check "below next", Steps(nextLeft + button - 1, 4 + button) = 0
Check "back in December", view.VisibleMonth = 12 And view.VisibleYear = 2026

' ---- the middle of the screen ----
Dim utility
Set utility = CreateObject("KWOUtil.KWOUtility")
utility.KWO_CenterForm form
Check "centred", form.Left = Int((metrics.ScreenX - 400) / 2) * twipsX And form.Top = Int((metrics.ScreenY - 420) / 2) * twipsY
utility.KWO_SetFormPosition form, 0, Screen.Width, Screen.Height
Check "pulled onto the screen", form.Left = (metrics.ScreenX - 400) * twipsX And form.Top = (metrics.ScreenY - 420) * twipsY
form.Close

' ---- the button ----
Dim face, clicks
clicks = 0
Set form = Host.CreateForm("frmButton")
form.Move 100 * twipsX, 60 * twipsY, 400 * twipsX, 300 * twipsY
Set box = form.AddControl("PictureBox", "picSave")
box.AutoRedraw = True
box.Move BoxLeft * twipsX, BoxTop * twipsY, 101 * twipsX, 37 * twipsY
AddRuler
Set face = CreateObject("KWOUtil.KWOPicBtn")
face.Create box, "&Save"
Sub picSave_MouseDown(Button_, Shift, X, Y)
    face.MouseDown Button_, Shift, X, Y
End Sub
Sub picSave_MouseMove(Button_, Shift, X, Y)
    face.MouseMove Button_, Shift, X, Y
End Sub
Sub picSave_MouseUp(Button_, Shift, X, Y)
    face.MouseUp Button_, Shift, X, Y
End Sub
Sub frmButton_OnButtonClick(PictureBox)
    clicks = clicks + 1
End Sub
' What the press at one place of the box and the release at another click.
Function Clicked(fromX, fromY, toX, toY)
    clicks = 0
    Host.MovePointer ruler, BoxLeft + fromX, BoxTop + fromY
    Host.PressButton
    Host.MovePointer ruler, BoxLeft + toX, BoxTop + toY
    Host.ReleaseButton
    Clicked = clicks
End Function
ShowInFront form
Check "the button's corners", Clicked(0, 0, 100, 36) = 1
Check "released right of the button", Clicked(100, 36, 101, 36) = 0
Check "released below the button", Clicked(0, 0, 0, 37) = 0
form.Close

' ---- the splitter ----
Dim leftPane, rightPane, bar, splitter, before
Set form = Host.CreateForm("frmSplit")
form.Move 100 * twipsX, 60 * twipsY, 400 * twipsX, 300 * twipsY
Set leftPane = form.AddControl("PictureBox", "picLeft")
Set rightPane = form.AddControl("PictureBox", "picRight")
Set bar = form.AddControl("Panel", "pnlBar")
bar.Move 133 * twipsX, 0, 4 * twipsX, 40 * twipsY
AddRuler
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
Check "split", splitter.Create(leftPane, rightPane, bar, 5)
Sub pnlBar_MouseDown(Button_, Shift, X, Y)
    splitter.MouseDown Button_, Shift, X, Y
End Sub
Sub pnlBar_MouseMove(Button_, Shift, X, Y)
    splitter.MouseMove Button_, Shift, X, Y
End Sub
Sub pnlBar_MouseUp(Button_, Shift, X, Y)
    splitter.MouseUp Button_, Shift, X, Y
End Sub
Check "five pixels", bar.Width = 5 * twipsX And bar.Left = 133 * twipsX
ShowInFront form
Host.MovePointer ruler, 135, 50
Host.PressButton
Host.MovePointer ruler, 212, 50
Host.ReleaseButton
Check "moved by 77 pixels", bar.Left = (133 + 77) * twipsX
Check "five pixels afterwards", bar.Width = 5 * twipsX
Check "the panes fit", leftPane.Width = bar.Left And rightPane.Left = bar.Left + bar.Width And rightPane.Left + rightPane.Width = form.ScaleWidth
form.Close
WScript.Echo "done " & count
