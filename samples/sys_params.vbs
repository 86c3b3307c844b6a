' The fonts of the desktop, and a label in one of them.
Option Explicit

Dim fonts, form, label, top
Set fonts = CreateObject("KWOUtil.KWOSysParams")
Set form = Host.CreateForm("frmFonts")
form.Caption = "Fonts of the desktop"
form.Move 3000, 2000, 6000, 3300
top = 150

Sub Show(name, font)
    Dim style
    style = ""
    If font.Bold Then style = style & ", bold"
    If font.Italic Then style = style & ", italic"
    WScript.Echo Left(name & Space(14), 14) & font.Name & ", " & font.Size & " points" & style

    Set label = form.AddControl("Label", "lbl" & name)
    label.Move 200, top, 5400, 500
    Set label.Font = font
    label.Caption = name & ": " & font.Name & " " & font.Size
    top = top + 600
End Sub

Show "Caption", fonts.CaptionFont
Show "Menu", fonts.MenuFont
Show "Status", fonts.StatusFont
Show "Message", fonts.MessageFont
form.Show
WScript.Sleep 1500
form.Close
