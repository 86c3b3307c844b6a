' Dated and relative alarms of KWOUtil.KWOTimer: several at once, one that sets itself again, one that is cancelled.
Option Explicit

Const AlarmEvent = 2
Const Tea = 1, Stretch = 2, Never = 3, Late = 4

Dim timer, stretches, names
names = Array("", "Tea", "Stretch", "Never", "Late")
stretches = 0

' An alarm comes once. A date in NewDateTime brings the same alarm again.
Sub timer_Alarm(sender, tag, newDateTime)
    WScript.Echo "alarm " & tag & ": " & names(tag)
    If tag = Stretch Then
        stretches = stretches + 1
        If stretches < 3 Then newDateTime = DateAdd("s", 1, Now)
    End If
End Sub

Set timer = WScript.CreateObject("KWOUtil.KWOTimer", "timer")

' A relative alarm is given in milliseconds, each with a number of the caller's.
timer.AddRelativeAlarm 1500, Tea
timer.AddRelativeAlarm 300, Stretch

' An alarm with the same number takes the place of the first; this one is then taken back.
timer.AddRelativeAlarm 100, Never
timer.AddRelativeAlarm 200, Never
timer.CancelTimers AlarmEvent, Never

' A date that has passed, also a time of day, comes in about a second.
timer.AddAlarm DateAdd("h", -1, Now), Late

WScript.Sleep 4500
WScript.Echo stretches & " stretches, no alarm left"
