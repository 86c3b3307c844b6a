' The short example of docs/pic-btn.md, with Host.Forward, on a form: clicked, missed, by the keys, and painted again.
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
frmMain.Move 3000, 2000, 6000, 3000
Set picSave = frmMain.AddControl("PictureBox", "picSave")
picSave.Move 300, 300, 1500, 600
Set picOther = frmMain.AddControl("PictureBox", "picOther")
picOther.Move 2400, 300, 1500, 600
picOther.TabStop = True

'@example

' Whether a click has come since the last time.
Function Saved
    Saved = (frmMain.Caption = "saved")
    frmMain.Caption = ""
End Function
frmMain.Show
WScript.Sleep 100
Check "the drawing is kept", picSave.AutoRedraw
Host.Click picSave, 700, 300
Check "a click", Saved
Host.Click picSave, 700, 300
Check "the second of a double click", Saved
Host.MovePointer picSave, 700, 300
Host.PressButton
Check "pressed only", Not Saved
Host.MovePointer picSave, 700, 1500
Host.ReleaseButton
Check "released outside", Not Saved
Host.TypeKeys "{SPACE}"
Check "Space", Saved
Host.TypeKeys "{ENTER}"
Check "Enter", Saved
Host.TypeKeys "{RIGHT}"
WScript.Sleep 100
Check "an arrow moves the focus", frmMain.ActiveControl.Name = "picOther"
Host.TypeKeys "%s"
Check "the access key brings it back and clicks", frmMain.ActiveControl.Name = "picSave" And Saved
picSave.Width = 1800
Host.Click picSave, 1750, 300
Check "where the larger box has its new edge", Saved
frmMain.Close
WScript.Echo "done " & count
