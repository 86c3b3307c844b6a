' The example of docs/month-view.md on a form: the arrows, days, a Sunday, the keys, a larger box.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 6000
Set picMonth = frmMain.AddControl("PictureBox", "picMonth")
picMonth.Move 150, 150, 4000, 3600

'@example

'@include month-view.vbs
