' What happens while a box is open: ticks, alarms and keys. Every box here is closed by an alarm.
Option Explicit

Dim checks
checks = 0
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim form, clock, keys, ticks, answer, turns
Set form = Host.CreateForm("frmBoxes")
form.Move 3000, 3000, 4500, 3000
form.Show
For turns = 1 To 400
    If Screen.ActiveForm Is form Then Exit For
    WScript.Sleep 20
Next

Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.Interval = 20
ticks = 0
Sub clock_Tick(sender)
    ticks = ticks + 1
End Sub
' A box is open as soon as its form is disabled. It stays open until some ticks have come, or much too long.
Sub clock_Alarm(sender, tag, newDateTime)
    turns = turns + 1
    If turns < 400 And (form.Enabled Or ticks < 4) Then
        sender.AddRelativeAlarm 20, tag
    Else
        Host.TypeKeys keys
    End If
End Sub

keys = "{ENTER}"
turns = 0
clock.AddRelativeAlarm 20, 1
clock.Enabled = True
answer = MsgBox("Shall it go on?", vbYesNo, "Question")
Check "the key closes the message box", answer = vbYes
Check "ticks come while it is open", ticks > 3

keys = "kwo{ENTER}"
turns = 0
clock.AddRelativeAlarm 20, 1
ticks = 0
answer = InputBox("Who is there?")
Check "the input box returns what is typed", answer = "kwo"
Check "ticks come while it is open, too", ticks > 3
clock.Enabled = False

' In a handler: no other handler runs until it returns, so another program has to press the key.
Dim files, file, stream, shell, before, after
Set files = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
file = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName & ".vbs")
Set stream = files.CreateTextFile(file, True)
' It presses the key until its file is gone: on a busy machine the box opens late.
stream.WriteLine "Set files = CreateObject(""Scripting.FileSystemObject"")"
stream.WriteLine "Do"
stream.WriteLine "    WScript.Sleep 500"
stream.WriteLine "    If Not files.FileExists(WScript.ScriptFullName) Then WScript.Quit"
stream.WriteLine "    Host.TypeKeys ""{ENTER}"""
stream.WriteLine "Loop"
stream.Close
Dim other
Set other = WScript.CreateObject("KWOUtil.KWOTimer", "other")
after = -1
Sub other_Alarm(sender, tag, newDateTime)
    shell.Run """" & WScript.FullName & """ """ & file & """", 0, False
    before = ticks
    answer = MsgBox("In a handler", vbOKCancel)
    after = ticks
    files.DeleteFile file
End Sub
clock.Enabled = True
other.AddRelativeAlarm 10, 1
For turns = 1 To 200
    If after >= 0 Then Exit For
    WScript.Sleep 50
Next
clock.Enabled = False
Check "the key closes the handler's box", answer = vbOK
Check "no tick comes while a handler's box is open", after >= 0 And after = before

form.Close
clock.CancelTimers
WScript.Echo "done " & checks
