' The example of docs/sys-params.md with a label.
Dim count
count = 0
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub
Set frmMain = Host.CreateForm("frmMain")
Set lblStatus = frmMain.AddControl("Label", "lblStatus")

'@example

Check "the label has the font", lblStatus.Font.Name = fonts.MessageFont.Name And lblStatus.Font.Name <> ""
Check "the same object", lblStatus.Font Is fonts.MessageFont
frmMain.Close
WScript.Echo "done " & count
