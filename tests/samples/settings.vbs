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
' What an earlier run would have left.
test.KWO_RegDeleteKey UserRoot, UserKey
Keep "Place", "1200 600 8400 4800"
Keep "Bar", 3000
Keep "Font", 2
Keep "Bold", 1
Keep "Sample", "Hello"
Set user = WScript.CreateObject("KWOUtil.KWOTimer", "user")
user.AddRelativeAlarm 200, 1

Sub user_Alarm(sender, tag, newDateTime)
    Check "the place", form.Left = 1200 And form.Top = 600 And form.Width = 8400 And form.Height = 4800
    Check "the bar", bar.Left = 3000 And bar.Height = lstFonts.Height And bar.Height = picSample.Height And picSample.Left = bar.Left + bar.Width
    Check "the settings", lstFonts.ListIndex = 2 And chkBold.Value = 1 And txtSample.Text = "Hello"
    Check "the sample", picSample.Font.Bold

    Host.MovePointer bar, 30, 600
    Host.PressButton
    Host.MovePointer bar, 630, 600
    Host.ReleaseButton
    Check "dragged", bar.Left = 3600 And lstFonts.Width = bar.Left And bar.Height = lstFonts.Height And bar.Height = picSample.Height
    Host.MovePointer bar, 30, 600
    Host.PressButton
    Host.MovePointer bar, -3400, 600
    Host.ReleaseButton
    Check "no pane vanishes", bar.Left = 1500 And lstFonts.Width = 1500
    Host.Click lstFonts, 600, 300
    Check "another font", lstFonts.ListIndex = 1
    Host.TypeKeys "%b"
    Check "not bold", chkBold.Value = 0 And Not picSample.Font.Bold
    Host.Click txtSample, txtSample.Width - 100, 150
    Host.TypeKeys " you"
    Check "typed", txtSample.Text = "Hello you"
    form.Width = 9600
    Check "the buttons follow", picClose.Left + picClose.Width = form.ScaleWidth - 120
    Check "the panes follow", picSample.Left + picSample.Width = panes.ScaleWidth
    form.Width = 8400
    Picture "settings"
    form.WindowState = 2
    Host.TypeKeys "%s"
End Sub
Sub Picture(name)
    Dim folder
    folder = CreateObject("WScript.Shell").ExpandEnvironmentStrings("%KWO_PICTURES%")
    folder = Replace(folder, Chr(0), "")    ' Wine adds the zero at its end
    If InStr(folder, "%") = 0 Then Host.SavePicture form, folder & "\" & name & ".bmp"
End Sub

'@sample

Check "saved", Kept("Font") = "1" And Kept("Bold") = "0" And Kept("Sample") = "Hello you" And Kept("Bar") = "1500"
Check "the place of the normal window", Kept("State") = "2" And Kept("Place") = "1200 600 8400 4800"
test.KWO_RegDeleteKey UserRoot, UserKey
WScript.Echo "done " & checks
