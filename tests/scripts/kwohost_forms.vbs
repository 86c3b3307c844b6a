' Forms and controls as scripts see them.
Option Explicit

Dim number, count, form, box, other, label, panel, px, log
count = 0
log = ""
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub
' Shows a form and waits until it is in front and has drawn itself.
Sub ShowInFront(shown)
    Dim turns
    shown.Show
    For turns = 1 To 400
        If Not Screen.ActiveForm Is Nothing Then
            If Screen.ActiveForm.Name = shown.Name Then Exit For
        End If
        WScript.Sleep 20
    Next
    Host.DoEvents
End Sub

Sub frm_Load
    log = log & "load;"
End Sub
Sub frm_Resize
    log = log & "resize;"
End Sub
Sub frm_Unload(Cancel)
    log = log & "unload;"
    Cancel = refuse
End Sub
Sub frm_KeyDown(KeyCode, Shift)
    log = log & "form key " & KeyCode & ";"
    If KeyCode = 65 Then
        KeyCode = 0
    End If
End Sub
Sub box_KeyDown(KeyCode, Shift)
    log = log & "box key " & KeyCode & "/" & Shift & ";"
End Sub
Sub box_KeyPress(KeyAscii)
    log = log & "char " & KeyAscii & ";"
End Sub
Sub box_MouseDown(Button, Shift, X, Y)
    log = log & "down " & Button & " " & X & " " & Y & ";"
End Sub
Sub box_MouseMove(Button, Shift, X, Y)
    moved = X & " " & Y
    heldButton = Button
End Sub
Sub box_MouseUp(Button, Shift, X, Y)
    log = log & "up " & Button & ";"
End Sub
Sub box_DblClick
    log = log & "dbl;"
End Sub
Sub box_GotFocus
    log = log & "got;"
End Sub
Sub box_LostFocus
    log = log & "lost;"
End Sub
Sub box_Resize
    log = log & "box resize;"
End Sub
Sub frm_OnSomething(First, Second)
    Second = First * 2
End Sub
Sub frm_OnFailure
    Err.Raise 1234, "the form", "refused"
End Sub
Dim refuse, moved, heldButton
refuse = 0

px = Screen.TwipsPerPixelX
Check "screen", Screen.Width > 640 * px And Screen.Height > 480 * px And Screen.TwipsPerPixelY > 0
Set form = Host.CreateForm("frm")
Check "load", log = "load;"
Check "hidden at first", Not form.Visible
form.Move 1500, 1200, 6000, 4500
Check "place", form.Left = 1500 And form.Top = 1200 And form.Width = 6000 And form.Height = 4500
form.Left = 1515
form.Width = 6015
Check "single places", form.Left = 1515 And form.Top = 1200 And form.Width = 6015 And form.Height = 4500
Check "inner size", form.ScaleWidth < form.Width And form.ScaleHeight < form.Height And form.ScaleWidth > 5000
Check "names", form.Name = "frm" And form.Caption = "frm" And Not form.MDIChild
On Error Resume Next
form.Width = -15
number = Err.Number
On Error GoTo 0
Check "negative size", number = 380
On Error Resume Next
form.WindowState = 3
number = Err.Number
On Error GoTo 0
Check "unknown state", number = 380
Check "state before it is shown", form.WindowState = 0

log = ""
Set box = form.AddControl("PictureBox", "box")
box.Move 300, 300, 1800, 1500
Check "box resize", InStr(log, "box resize;") > 0
Set other = form.AddControl("picturebox", "other")
other.Move 3000, 300, 1500, 1500
other.TabIndex = 1
other.TabStop = True
Check "box", box.Left = 300 And box.Width = 1800 And box.hWnd <> 0 And TypeName(box) = "PictureBox"
Check "parents", box.Parent.Name = "frm" And box.Container.Name = "frm"
On Error Resume Next
form.AddControl "Slider", "x"
number = Err.Number
On Error GoTo 0
Check "unknown control", number = 429

Set panel = form.AddControl("Panel", "pnl")
panel.Move 300, 2100, 3000, 1500
panel.ScaleMode = 3
Set label = form.AddControl("Label", "lbl", panel)
label.Move 5, 6, 100, 20
Check "units of the container", label.Left = 5 And label.Width = 100 And label.Container.Name = "pnl"
panel.ScaleMode = 1
Check "the same in twips", label.Left = 5 * px And label.Width = 100 * px
Set label.Container = form
Check "moved out", label.Container.Name = "frm"
On Error Resume Next
Set label.Container = box
number = Err.Number
On Error GoTo 0
Check "no container", number = 425
Check "scales", form.ScaleX(1, 3, 1) = px And form.ScaleX(px, 1, 3) = 1 And form.ScaleY(10, 3, 3) = 10
On Error Resume Next
form.ScaleX 1, 2, 3
number = Err.Number
On Error GoTo 0
Check "no scale", number = 5
label.Caption = "text"
Check "default member", label = "text"

box.AutoRedraw = True
Check "drawing", box.hDC <> 0 And box.TextHeight("Jg") > 100 And box.TextWidth("WW") > box.TextWidth("W")
box.Font.Bold = False
px = box.TextWidth("WWWWWWWW")
box.Font.Bold = True
Check "bold is wider", box.TextWidth("WWWWWWWW") > px
box.Line 38, 0, 0, 300, 300, &HFF
box.Refresh

ShowInFront form
Check "visible", form.Visible And Screen.ActiveForm.Name = "frm"
log = ""
Host.Click box, 450, 600
Check "click", log = "got;down 1 450 600;up 1;" Or log = "down 1 450 600;up 1;"
Check "focus", form.ActiveControl.Name = "box"
Host.Click box, 900, 900                    ' or the next click would be the second one of a double click
log = ""
Host.Click box, 450, 600
Host.PressButton
Host.ReleaseButton
Check "double click", log = "down 1 450 600;up 1;dbl;up 1;"
Host.MovePointer box, 600, 750
Check "movement", moved = "600 750" And heldButton = 0
Host.PressButton 2
Host.MovePointer box, -300, 750
Check "captured", moved = "-300 750" And heldButton = 2
Host.ReleaseButton 2

log = ""
Host.TypeKeys "b"
Check "keys", log = "box key 66/0;char 98;"
log = ""
form.KeyPreview = True
Host.TypeKeys "ab"
Check "preview", log = "form key 65;form key 66;box key 66/0;char 98;"
form.KeyPreview = False
log = ""
Host.TypeKeys "{TAB}"
Check "tab", form.ActiveControl.Name = "other" And log = "lost;"
Host.TypeKeys "+{TAB}"
Check "shift and tab", form.ActiveControl.Name = "box"

Dim doubled
doubled = 0
form.OnSomething 21, doubled
Check "procedures as members", doubled = 42
On Error Resume Next
form.OnNothing 1
number = Err.Number
On Error GoTo 0
Check "no procedure", number = 438

form.WindowState = 2
Check "maximised", form.WindowState = 2
On Error Resume Next
form.Left = 0
number = Err.Number
On Error GoTo 0
Check "maximised stays", number = 384
form.WindowState = 1
Check "minimised", form.WindowState = 1
form.WindowState = 0
Check "normal", form.WindowState = 0 And form.Left = 1515

refuse = 1
form.Close
Check "refused", form.Visible
refuse = 0
log = ""
form.Close
Check "closed", Left(log, 7) = "unload;"
On Error Resume Next
form.Show
number = Err.Number
On Error GoTo 0
Check "gone form", number = 91
On Error Resume Next
box.Cls
number = Err.Number
On Error GoTo 0
Check "gone box", number = 91
On Error Resume Next
box.Left = 1
number = Err.Number
On Error GoTo 0
Check "gone place", number = 91
WScript.Echo "done " & count
