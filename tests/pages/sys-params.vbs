' The example of docs/sys-params.md with a label.
'@include checks.vbs
Set frmMain = Host.CreateForm("frmMain")
Set lblStatus = frmMain.AddControl("Label", "lblStatus")

'@example

Check "the label has the font", lblStatus.Font.Name = fonts.MessageFont.Name And lblStatus.Font.Name <> ""
Check "the same object", lblStatus.Font Is fonts.MessageFont
frmMain.Close
WScript.Echo "done " & count
