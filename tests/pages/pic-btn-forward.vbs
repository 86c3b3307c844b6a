' The short example of docs/pic-btn.md, with Host.Forward, on a form: clicked, missed, by the keys, and painted again.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 3000
Set picSave = frmMain.AddControl("PictureBox", "picSave")
picSave.Move 300, 300, 1500, 600
Set picOther = frmMain.AddControl("PictureBox", "picOther")
picOther.Move 2400, 300, 1500, 600
picOther.TabStop = True

'@example

'@include pic-btn.vbs
