' Two buttons on picture boxes. Click them with the mouse, with Enter or Space, or with Alt and the underlined letter.
Option Explicit

Dim form, boxes(1), buttons(1), status, i, clicks
clicks = 0
Set form = Host.CreateForm("frmButtons")
form.Caption = "Picture buttons"
form.KeyPreview = True
form.Move 3000, 2000, 4800, 2400
Set boxes(0) = form.AddControl("PictureBox", "picSave")
Set boxes(1) = form.AddControl("PictureBox", "picClose")
Set status = form.AddControl("Label", "lblStatus")
status.Move 300, 1200, 4000, 500
For i = 0 To 1
    boxes(i).Move 300 + i * 2000, 300, 1700, 600
    boxes(i).TabIndex = i
    boxes(i).AutoRedraw = True
    Set buttons(i) = CreateObject("KWOUtil.KWOPicBtn")
Next
' Ignore the result: Create always returns False.
buttons(0).Create boxes(0), "&Save"
buttons(1).Create boxes(1), "&Close"

Sub picSave_MouseDown(Button, Shift, X, Y)
    buttons(0).MouseDown Button, Shift, X, Y
End Sub
Sub picSave_MouseMove(Button, Shift, X, Y)
    buttons(0).MouseMove Button, Shift, X, Y
End Sub
Sub picSave_MouseUp(Button, Shift, X, Y)
    buttons(0).MouseUp Button, Shift, X, Y
End Sub
Sub picSave_DblClick
    buttons(0).DblClick
End Sub
Sub picSave_GotFocus
    buttons(0).GotFocus
End Sub
Sub picSave_LostFocus
    buttons(0).LostFocus
End Sub
Sub picSave_KeyDown(KeyCode, Shift)
    buttons(0).KeyDown KeyCode, Shift
End Sub

Sub picClose_MouseDown(Button, Shift, X, Y)
    buttons(1).MouseDown Button, Shift, X, Y
End Sub
Sub picClose_MouseMove(Button, Shift, X, Y)
    buttons(1).MouseMove Button, Shift, X, Y
End Sub
Sub picClose_MouseUp(Button, Shift, X, Y)
    buttons(1).MouseUp Button, Shift, X, Y
End Sub
Sub picClose_DblClick
    buttons(1).DblClick
End Sub
Sub picClose_GotFocus
    buttons(1).GotFocus
End Sub
Sub picClose_LostFocus
    buttons(1).LostFocus
End Sub
Sub picClose_KeyDown(KeyCode, Shift)
    buttons(1).KeyDown KeyCode, Shift
End Sub

' The form receives the access keys.
Sub frmButtons_KeyDown(KeyCode, Shift)
    If Not buttons(0).Form_KeyDown(KeyCode, Shift) Then
        buttons(1).Form_KeyDown KeyCode, Shift
    End If
End Sub

Sub frmButtons_OnButtonClick(PictureBox)
    clicks = clicks + 1
    status.Caption = "clicked: " & PictureBox.Name & ", " & clicks
    WScript.Echo "clicked:", PictureBox.Name
End Sub

form.Show
WScript.Sleep 200
Host.Click boxes(0), 800, 300
Host.TypeKeys "{SPACE}{TAB}{ENTER}%s"
If WScript.Arguments.Count > 0 Then
    Host.SavePicture form, WScript.Arguments(0)
End If
WScript.Sleep 500
form.Close
