' Whether a click has come since the last time.
Function Saved
    Saved = (frmMain.Caption = "saved")
    frmMain.Caption = ""
End Function
ShowInFront frmMain
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
Check "an arrow moves the focus", FocusComesTo(frmMain, "picOther")
Host.TypeKeys "%s"
Check "the access key brings it back and clicks", frmMain.ActiveControl.Name = "picSave" And Saved
picSave.Width = 1800
Host.Click picSave, 1750, 300
Check "where the larger box has its new edge", Saved
picSave.Enabled = False
Host.Click picSave, 700, 300
Check "a disabled box", Not Saved
Host.TypeKeys "%s"
Check "the access key of a disabled box", Saved
saveButton.Caption = "Save"
Host.TypeKeys "%s"
Check "no access key", Not Saved
saveButton.Caption = "Save && &Close"
Check "no access key after two ampersands", Not saveButton.Form_KeyDown(Asc("C"), 4)
saveButton.Caption = "&Close && Save"
Check "one before them", saveButton.Form_KeyDown(Asc("C"), 4)
frmMain.Close
WScript.Echo "done " & count
