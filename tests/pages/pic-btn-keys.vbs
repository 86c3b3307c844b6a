' The example of docs/pic-btn.md with OK and Cancel: Enter and Escape from a text box and from both buttons.
'@include checks.vbs
'@include forms.vbs
Set frmMain = Host.CreateForm("frmMain")
frmMain.Move 3000, 2000, 6000, 3000
Set txtName = frmMain.AddControl("TextBox", "txtName")
txtName.Move 300, 1200, 3000, 300
Set picOK = frmMain.AddControl("PictureBox", "picOK")
picOK.Move 300, 300, 1500, 600
picOK.AutoRedraw = True
Set picCancel = frmMain.AddControl("PictureBox", "picCancel")
picCancel.Move 2400, 300, 1500, 600
picCancel.AutoRedraw = True
Set okButton = CreateObject("KWOUtil.KWOPicBtn")
okButton.Create picOK, "OK"
Host.Forward picOK, okButton
Set cancelButton = CreateObject("KWOUtil.KWOPicBtn")
cancelButton.Create picCancel, "Cancel"
Host.Forward picCancel, cancelButton
clicked = ""
Sub frmMain_OnButtonClick(PictureBox)
    clicked = clicked & " " & PictureBox.Name
    If isLast Then frmMain.Close
End Sub
isLast = False
pressed = ""
isShown = False
Sub txtName_KeyDown(KeyCode, Shift)
    If Not isShown Then Exit Sub
    okButton.KeyDown 13, 0
    KeyCode = 0
End Sub
Sub txtName_KeyPress(KeyAscii)
    pressed = pressed & " " & KeyAscii
End Sub

'@example

Sub Press(keys, expected)
    clicked = ""
    Host.TypeKeys keys
    Check keys & " clicks" & clicked, clicked = expected
End Sub
ShowInFront frmMain
txtName.SetFocus
Press "{ENTER}", " picOK"
Press "{ESC}", " picCancel"
Check "the keys are used up", pressed = ""
Press "x", ""
Check "others are not", pressed = " 120"
picOK.SetFocus
Press "{ENTER}", " picOK"
picCancel.SetFocus
Press "{ENTER}", " picCancel"
Press "{ESC}", " picCancel"
txtName.SetFocus
pressed = ""
isShown = True
Press "a", " picOK"
Check "a click that is shown lets the key through", pressed = " 97"
isLast = True
picOK.SetFocus
Host.TypeKeys "{SPACE}"
On Error Resume Next
caption = frmMain.Caption
number = Err.Number
On Error GoTo 0
Check "the procedure may close the form", number = 91
WScript.Echo "done " & count
