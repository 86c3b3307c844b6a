' A settings window: the fonts of the desktop on the left, a sample on the right, and a bar between them to drag. It opens
' again where it was closed, with the bar and the settings as they were.
Option Explicit

' ---- what the registry keeps: texts, so every default is a text too ----
Const CurrentUser = &H80000001
Dim registry, key
Set registry = CreateObject("KWOUtil.KWORegistry")
key = registry.KWO_RegCreateKey(CurrentUser, "Software\KWOUtil Settings")
Function Stored(name, default)
    Stored = registry.KWO_RegGetValueEx(key, name, CStr(default))
End Function
Sub Store(name, value)
    registry.KWO_RegSetValue key, "", name, CStr(value)
End Sub

' ---- the window: two panes with a bar in a panel, and below them the settings and two buttons ----
Const Margin = 120, ButtonWidth = 1290, RowHeight = 390, LeastPane = 1500
Dim form, panes, lstFonts, picSample, bar, txtSample, chkBold, picSave, picClose
Set form = Host.CreateForm("frmSettings")
form.Caption = "Settings"
Set panes = form.AddControl("Panel", "pnlPanes")
Set lstFonts = form.AddControl("ListBox", "lstFonts", panes)
Set picSample = form.AddControl("PictureBox", "picSample", panes)
Set bar = form.AddControl("Panel", "pnlBar", panes)
Set txtSample = form.AddControl("TextBox", "txtSample")
Set chkBold = form.AddControl("CheckBox", "chkBold")
Set picSave = form.AddControl("PictureBox", "picSave")
Set picClose = form.AddControl("PictureBox", "picClose")
bar.BackColor = &H80000010                  ' the colour of shadows, to see it between the panes
bar.MousePointer = 9                        ' sizes to the left and right
picSample.AutoRedraw = True
picSample.BackColor = &H80000005            ' the colour of windows
chkBold.Caption = "&Bold"

' ---- the classes: each gets the events of its box ----
Dim splitter, btnSave, btnClose, utility, place, wantedBar
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
splitter.Create lstFonts, picSample, bar, 4, 0, 0, 0, 0
Host.Forward bar, splitter
Set btnSave = MakeButton(picSave, "&Save")
Set btnClose = MakeButton(picClose, "&Close")
Function MakeButton(box, caption)
    Dim button
    Set button = CreateObject("KWOUtil.KWOPicBtn")
    box.AutoRedraw = True
    box.Move 0, 0, ButtonWidth, RowHeight
    button.Create box, caption
    Host.Forward box, button                ' also Form_KeyDown of its form
    Set MakeButton = button
End Function

' Puts everything into its place. Resize also comes before the classes are there, and while the form is minimised.
Sub frmSettings_Resize
    Dim row, right
    If IsEmpty(btnClose) Or form.WindowState = 1 Then Exit Sub
    row = form.ScaleHeight - Margin - RowHeight
    right = form.ScaleWidth - Margin
    If row < 4 * RowHeight Or right < 3 * LeastPane Then Exit Sub
    panes.Move Margin, Margin, right - Margin, row - 2 * Margin
    txtSample.Move Margin, row + 30, 1800, RowHeight - 60
    chkBold.Move 2 * Margin + 1800, row, 900, RowHeight
    picSave.Move right - 2 * ButtonWidth - Margin, row
    picClose.Move right - ButtonWidth, row
    FitBar
End Sub
' The bar goes where the user wants it, or as near as it can: the panes may not vanish. The splitter does not fit the
' height of its bar.
Sub FitBar
    bar.Left = wantedBar
    If bar.Left > panes.ScaleWidth - LeastPane Then bar.Left = panes.ScaleWidth - LeastPane
    If bar.Left < LeastPane Then bar.Left = LeastPane
    splitter.Resize
    bar.Height = lstFonts.Height            ' that of whole lines
End Sub
Sub pnlBar_MouseUp(Button, Shift, X, Y)     ' after the splitter has moved the bar
    wantedBar = bar.Left
    FitBar
    wantedBar = bar.Left
End Sub

' ---- the sample ----
' The fonts are shared by all who ask the same object for them. A new object makes fonts that this window may change.
Sub ShowSample
    Dim fonts, font, title
    Set fonts = CreateObject("KWOUtil.KWOSysParams")
    Select Case lstFonts.ListIndex
        Case 0: Set font = fonts.CaptionFont
        Case 1: Set font = fonts.MenuFont
        Case 2: Set font = fonts.StatusFont
        Case Else: Set font = fonts.MessageFont
    End Select
    If chkBold.Value = 1 Then font.Bold = True
    title = font.Name & ", " & FormatNumber(font.Size, 1) & " points"
    Set picSample.Font = font
    picSample.Cls
    picSample.CurrentX = Margin
    picSample.CurrentY = Margin
    picSample.Print title
    picSample.CurrentX = Margin
    picSample.CurrentY = Margin + 2 * picSample.TextHeight("X")
    picSample.Print txtSample.Text
    picSample.Refresh
End Sub
Sub lstFonts_Click
    ShowSample
End Sub
Sub chkBold_Click
    ShowSample
End Sub
Sub txtSample_Change
    ShowSample
End Sub
Sub picSample_Resize
    If Not IsEmpty(btnClose) Then ShowSample
End Sub

' ---- saved by the button, the place always ----
Sub frmSettings_OnButtonClick(PictureBox)
    If PictureBox.Name = "picSave" Then
        Store "Font", lstFonts.ListIndex
        Store "Bold", chkBold.Value
        Store "Sample", txtSample.Text
    End If
    form.Close
End Sub
Sub frmSettings_Unload(Cancel)
    Store "Bar", wantedBar
    Store "State", form.WindowState And 2   ' a minimised window comes back as a normal one
    form.Hide
    form.WindowState = 0                    ' nobody sees it: the place is now that of the normal window
    Store "Place", form.Left & " " & form.Top & " " & form.Width & " " & form.Height
End Sub

lstFonts.AddItem "Captions"
lstFonts.AddItem "Menus"
lstFonts.AddItem "Status bars"
lstFonts.AddItem "Messages"
lstFonts.ListIndex = CLng(Stored("Font", 0))
chkBold.Value = CLng(Stored("Bold", 0))
txtSample.Text = Stored("Sample", "The quick brown fox")
wantedBar = CLng(Stored("Bar", 2400))
Set utility = CreateObject("KWOUtil.KWOUtility")
place = Split(Stored("Place", "1500 1200 7200 4200"), " ")
utility.KWO_SetFormPosition form, CLng(Stored("State", 0)), CLng(place(0)), CLng(place(1)), CLng(place(2)), CLng(place(3))
form.Show
FitBar                                      ' after Show: a maximised window has its size only now
Host.Run
