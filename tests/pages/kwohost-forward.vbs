' The forwarding of docs/kwohost.md: the button and the script's own procedure get the same event.
' expect-output: ^after the button has had it$
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 3000
Set picSave = frmMain.AddControl("PictureBox", "picSave")
picSave.Move 300, 300, 1500, 600
clicks = 0
Sub frmMain_OnButtonClick(PictureBox)
    clicks = clicks + 1
End Sub

'@example

ShowInFront frmMain
Host.Click picSave, 700, 300
Check "the button is clicked", clicks = 1
frmMain.Close
WScript.Echo "done " & count
