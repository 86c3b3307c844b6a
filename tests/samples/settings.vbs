' Drives samples/settings.vbs: restored, used, saved, closed.
Option Explicit

Dim checks
checks = 0
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Const UserRoot = &H80000001, UserKey = "Software\KWOUtil Settings"
Dim test, user
Set test = CreateObject("KWOUtil.KWORegistry")
Function Kept(name)
    Dim value
    test.KWO_RegGetValue UserRoot, UserKey, name, value
    Kept = value
End Function
Sub Keep(name, value)
    test.KWO_RegSetValue UserRoot, UserKey, name, CStr(value)
End Sub
' Places are whole pixels. At some densities a pixel has 8 twips, at others 15.
Function IsAt(place, expected)
    IsAt = Abs(place - expected) < 2 * Screen.TwipsPerPixelX
End Function
' What an earlier run would have left. The normal window is narrower than the place of the bar.
test.KWO_RegDeleteKey UserRoot, UserKey
Keep "State", 2
Keep "Place", "600 600 6600 4800"
Keep "Bar", 5400
Keep "Font", 2
Keep "Bold", 1
Keep "Sample", "Hello"
Dim turns
turns = 0
Set user = WScript.CreateObject("KWOUtil.KWOTimer", "user")
user.AddRelativeAlarm 20, 1

Sub user_Alarm(sender, tag, newDateTime)
    turns = turns + 1
    If turns < 400 And form.ActiveControl Is Nothing Then
        sender.AddRelativeAlarm 20, tag
        Exit Sub
    End If
    Check "maximised, with the bar in its place", form.WindowState = 2 And IsAt(bar.Left, 5400) And lstFonts.Width = bar.Left
    form.WindowState = 0
    Check "the place", form.Left = 600 And form.Top = 600 And form.Width = 6600 And form.Height = 4800
    Check "the bar", IsAt(bar.Left, panes.ScaleWidth - 1500) And bar.Height = lstFonts.Height And bar.Height = picSample.Height And picSample.Left = bar.Left + bar.Width
    form.WindowState = 2
    Check "the bar comes back in the larger window", IsAt(bar.Left, 5400)
    form.WindowState = 0
    Check "the settings", lstFonts.ListIndex = 2 And chkBold.Value = 1 And txtSample.Text = "Hello"
    Check "the sample", picSample.Font.Bold

    DragBarTo 3000
    Check "dragged", IsAt(bar.Left, 3000) And lstFonts.Width = bar.Left And bar.Height = lstFonts.Height And bar.Height = picSample.Height
    DragBarTo 60
    Check "no pane vanishes", IsAt(bar.Left, 1500) And lstFonts.Width = bar.Left
    Host.Click lstFonts, 600, 300
    Check "another font", lstFonts.ListIndex = 1
    Host.TypeKeys "%b"
    Check "not bold", chkBold.Value = 0 And Not picSample.Font.Bold
    Host.Click txtSample, txtSample.Width - 100, 150
    Host.TypeKeys " you"
    Check "typed", txtSample.Text = "Hello you"
    form.Width = 7200
    Check "the buttons follow", IsAt(picClose.Left + picClose.Width, form.ScaleWidth - 120)
    Check "the panes follow", picSample.Left + picSample.Width = panes.ScaleWidth
    form.Width = 6600
    Picture "settings"
    form.Left = 960
    form.WindowState = 2
    Host.TypeKeys "%s"
End Sub
' The bar has four pixels, whatever that is in twips.
Sub DragBarTo(left)
    Host.MovePointer bar, bar.Width / 2, 600
    Host.PressButton
    Host.MovePointer bar, left - bar.Left + bar.Width / 2, 600
    Host.ReleaseButton
End Sub
Sub Picture(name)
    Dim folder
    folder = CreateObject("WScript.Shell").ExpandEnvironmentStrings("%KWO_PICTURES%")
    folder = Replace(folder, Chr(0), "")    ' Wine adds the zero at its end
    If InStr(folder, "%") = 0 Then Host.SavePicture form, folder & "\" & name & ".bmp"
End Sub

'@sample

Check "saved", Kept("Font") = "1" And Kept("Bold") = "0" And Kept("Sample") = "Hello you" And IsAt(CLng(Kept("Bar")), 1500)
Check "the place of the normal window", Kept("State") = "2" And Kept("Place") = "960 600 6600 4800"
test.KWO_RegDeleteKey UserRoot, UserKey
WScript.Echo "done " & checks
