' What happens while a box is open: ticks, alarms and keys. Every box here is closed by an alarm.
Option Explicit

Dim checks
checks = 0
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim form, clock, keys, ticks, answer
Set form = Host.CreateForm("frmBoxes")
form.Move 3000, 3000, 4500, 3000
form.Show
WScript.Sleep 100

Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.Interval = 20
ticks = 0
Sub clock_Tick(sender)
    ticks = ticks + 1
End Sub
Sub clock_Alarm(sender, tag, newDateTime)
    Host.TypeKeys keys
End Sub

keys = "{ENTER}"
clock.AddRelativeAlarm 500, 1
clock.Enabled = True
answer = MsgBox("Shall it go on?", vbYesNo, "Question")
Check "the key closes the message box", answer = vbYes
Check "ticks come while it is open", ticks > 3

keys = "kwo{ENTER}"
clock.AddRelativeAlarm 500, 1
ticks = 0
answer = InputBox("Who is there?")
Check "the input box returns what is typed", answer = "kwo"
Check "ticks come while it is open, too", ticks > 3
clock.Enabled = False

form.Close
clock.CancelTimers
WScript.Echo "done " & checks
