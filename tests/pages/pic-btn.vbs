' The example of docs/pic-btn.md on a form: clicked, missed, by the keys, and painted again.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 3000
frmMain.KeyPreview = True
Set picSave = frmMain.AddControl("PictureBox", "picSave")
picSave.Move 300, 300, 1500, 600
Set picOther = frmMain.AddControl("PictureBox", "picOther")
picOther.Move 2400, 300, 1500, 600
picOther.TabStop = True

' What the members do before Create.
Set early = CreateObject("KWOUtil.KWOPicBtn")
Function KeyRaises(key)
    On Error Resume Next
    early.KeyDown key, 0
    KeyRaises = Err.Number
End Function
Function FormKeyRaises(key)
    On Error Resume Next
    If early.Form_KeyDown(key, 4) Then FormKeyRaises = -1
    If Err.Number <> 0 Then FormKeyRaises = Err.Number
End Function
Function Raises(member)
    On Error Resume Next
    Select Case member
        Case "MouseDown": early.MouseDown 1, 0, 10, 10
        Case "MouseMove": early.MouseMove 1, 0, 10, 10
        Case "MouseUp": early.MouseUp 1, 0, 10, 10
        Case "DblClick": early.DblClick
        Case "GotFocus": early.GotFocus
        Case "LostFocus": early.LostFocus
        Case "Resize": early.Resize
        Case "Others": early.TextAlignment = 3: early.PicAlignment = early.TextAlignment: early.MultiLine = False
    End Select
    Raises = Err.Number
End Function
For Each member In Array("MouseUp", "GotFocus", "LostFocus")
    Check member & " before Create", Raises(member) = 91
Next
For Each member In Array("MouseDown", "MouseMove", "Resize", "Others")
    Check member & " before Create", Raises(member) = 0
Next
Check "Enter before Create", KeyRaises(13) = 91
Check "Space before Create", KeyRaises(32) = 91
Check "an arrow before Create", KeyRaises(39) = 0
Check "an access key before there is a caption", FormKeyRaises(83) = 0
early.Caption = "&Save"
Check "the caption before Create", early.Caption = "&Save"
Check "the access key before Create", FormKeyRaises(83) = 91
Check "another key before Create", FormKeyRaises(84) = 0
Check "DblClick before Create", Raises("DblClick") = 0
Check "MouseMove after DblClick before Create", Raises("MouseMove") = 91
Set early = Nothing

'@example

'@include pic-btn.vbs
