' The example of docs/sys-params.md with a label.
'@include checks.vbs
Set frmMain = Host.CreateForm("frmMain")
Set lblStatus = frmMain.AddControl("Label", "lblStatus")

'@example

Check "the label has the font", lblStatus.Font.Name = fonts.MessageFont.Name And lblStatus.Font.Name <> ""
Check "the same object", lblStatus.Font Is fonts.MessageFont
lblStatus.Font.Size = 20
Check "shared", Abs(fonts.MessageFont.Size - 20) < 0.5
Check "another object has its own", Abs(CreateObject("KWOUtil.KWOSysParams").MessageFont.Size - 20) > 0.5
frmMain.Close
WScript.Echo "done " & count
