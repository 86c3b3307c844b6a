' Alarms of KWOUtil.KWOTimer, at a date and after a time: several at once, one that repeats, one that is cancelled.
Option Explicit

Const AlarmEvent = 2
Const Tea = 1, Stretch = 2, Never = 3, Late = 4

Dim timer, stretches, names
names = Array("", "Tea", "Stretch", "Never", "Late")
stretches = 0

' An alarm arrives once. A date in NewDateTime makes it arrive again.
Sub timer_Alarm(sender, tag, newDateTime)
    WScript.Echo "alarm " & tag & ": " & names(tag)
    If tag = Stretch Then
        stretches = stretches + 1
        If stretches < 3 Then newDateTime = DateAdd("s", 1, Now)
    End If
End Sub

Set timer = WScript.CreateObject("KWOUtil.KWOTimer", "timer")

' A relative alarm is in milliseconds. You give each alarm a number of your own.
timer.AddRelativeAlarm 1500, Tea
timer.AddRelativeAlarm 300, Stretch

' An alarm with the same number replaces the first one; this one is then cancelled.
timer.AddRelativeAlarm 100, Never
timer.AddRelativeAlarm 200, Never
timer.CancelTimers AlarmEvent, Never

' An alarm for a date or a time of day that has passed arrives in about a second.
timer.AddAlarm DateAdd("h", -1, Now), Late

WScript.Sleep 4500
WScript.Echo stretches & " stretches, no alarm left"
