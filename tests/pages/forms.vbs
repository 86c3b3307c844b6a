' The example of docs/forms.md: in the middle of the screen, over another form, back in a stored place.
'@include checks.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 0, 0, 6000, 4500
Set frmAsk = Host.CreateForm("frmAsk")
frmAsk.Move 0, 0, 3000, 1500
storedState = 0
storedLeft = 1500
storedTop = 900
storedWidth = 4500
storedHeight = 3000

'@example

Check "over the form in the middle of the screen", frmAsk.Left = (Screen.Width - 3000) / 2 And frmAsk.Top = (Screen.Height - 1500) / 2
Check "back in its place", frmMain.Left = 1500 And frmMain.Top = 900 And frmMain.Width = 4500 And frmMain.Height = 3000
WScript.Echo "done " & count
