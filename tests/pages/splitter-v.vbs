' The example of docs/splitter-v.md in a wide and in a tall form: dragged, enlarged, and always as high as its panes.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 1500, 1200, 6000, 3600
Set picLeft = frmMain.AddControl("PictureBox", "picLeft")
Set picRight = frmMain.AddControl("PictureBox", "picRight")
Set pnlBar = frmMain.AddControl("Panel", "pnlBar")
pnlBar.Move 1995, 0, 60, 1000

'@example

'@include splitter-v.vbs
