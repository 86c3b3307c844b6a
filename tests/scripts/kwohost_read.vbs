' options: --read
' expect-output: ^reader: role push button$
' expect-output: ^reader: Save: shortcut Alt\+S$
' expect-output: ^reader: Save: state pressed$
' expect-output: ^reader: role table$
' expect-output: ^reader: November, 2026: value .*2026, selected$
' expect-output: ^reader: role separator$
' What the controls tell screen readers.
Option Explicit

Dim form, panel, box, month, leftPane, rightPane, bar, button, view, splitter, focusDate, selDate
Set form = Host.CreateForm("frmMain")
Set box = form.AddControl("PictureBox", "picSave")
Set month = form.AddControl("PictureBox", "picMonth")
Set panel = form.AddControl("Panel", "pnlPanes")
Set leftPane = form.AddControl("PictureBox", "picLeft", panel)
Set rightPane = form.AddControl("PictureBox", "picRight", panel)
Set bar = form.AddControl("Panel", "pnlBar", panel)
box.AutoRedraw = True

Set button = CreateObject("KWOUtil.KWOPicBtn")
button.Create box, "&Save"
button.MouseDown 1, 0, 15, 15
Set view = CreateObject("KWOUtil.KWOMonthView")
focusDate = DateSerial(2026, 11, 21)
selDate = focusDate
view.Create month, focusDate, selDate
Set splitter = CreateObject("KWOUtil.KWOSplitterV")
If splitter.Create(leftPane, rightPane, bar) Then WScript.Echo "ok the controls are there"
WScript.Echo "done 1"
