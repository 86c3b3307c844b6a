' The timer class as a VBScript author uses it: its properties, and ticks and alarms as events.
Option Explicit

Dim checks
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Const TimerEvent = 1, AlarmEvent = 2
Dim timer, told, rearmed, sameTimer, begun
told = ""
rearmed = 0
sameTimer = True

Sub my_Tick(sender)
    told = told & "t"
    sameTimer = sameTimer And (sender Is timer)
End Sub
Sub my_Alarm(sender, tag, newDateTime)
    told = told & tag
    sameTimer = sameTimer And (sender Is timer)
    If tag = 9 And rearmed < 1 Then
        rearmed = rearmed + 1
        newDateTime = DateAdd("s", -5, Now)
    End If
End Sub
' Waits until something was told, or much too long.
Sub WaitFor(text)
    Dim turns
    For turns = 1 To 400
        If InStr(told, text) > 0 Then Exit Sub
        WScript.Sleep 20
    Next
End Sub

Set timer = WScript.CreateObject("KWOUtil.KWOTimer", "my_")

Check "Item is empty at first", IsEmpty(timer.Item)
timer.Item = "text"
Check "and holds what it is given", timer.Item = "text"
Set timer.Item = timer
Check "an object as well", timer.Item Is timer
timer.Item = Empty
Check "ItemData is 0 at first", timer.ItemData = 0
timer.ItemData = -7
Check "and a 32-bit number", timer.ItemData = -7
Check "it is switched off at first", timer.Enabled = False And timer.Interval = 0
Check "without callback objects", (timer.TimerEvents Is Nothing) And (timer.AlarmEvents Is Nothing)

timer.Enabled = True
Check "enabled without an interval it waits", timer.Enabled = True
timer.Interval = 30
WaitFor "ttt"
Check "ticks come again and again", InStr(told, "ttt") > 0
timer.Interval = 0
Check "an interval of 0 switches it off", timer.Enabled = False
told = ""
timer.AddRelativeAlarm 150, 4               ' by then some ticks would have come
WaitFor "4"
Check "and no tick comes any more", told = "4"

told = ""
timer.AddRelativeAlarm 60, 5
timer.AddRelativeAlarm 30, 6
timer.AddRelativeAlarm 20, 7
timer.CancelTimers AlarmEvent, 7
WaitFor "5"
Check "alarms come in the order of their times, a cancelled one does not", told = "65"

told = ""
timer.AddRelativeAlarm 40, 1
timer.AddRelativeAlarm 40, 2
timer.AddRelativeAlarm 20, 0
WaitFor "0"
timer.AddRelativeAlarm 150, 4               ' by then the others would have come
WaitFor "4"
Check "an alarm with the tag 0 replaces all", told = "04"

told = ""
begun = Timer_Seconds
timer.AddAlarm DateAdd("d", -1, Now), 4
WaitFor "4"
Check "a date that has passed comes after a second", told = "4" And Timer_Seconds - begun > 0.7

told = ""
timer.AddRelativeAlarm 20, 9
WaitFor "99"
Check "NewDateTime brings the alarm again, once", told = "99" And rearmed = 1

told = ""
timer.AddRelativeAlarm 50, 3
timer.Enabled = True
timer.Interval = 20
timer.CancelTimers
timer.AddRelativeAlarm 150, 4               ' by then all of it would have come
WaitFor "4"
Check "CancelTimers cancels everything", told = "4"
Check "and leaves the settings", timer.Enabled = True And timer.Interval = 20
timer.Enabled = False
timer.Enabled = True
WaitFor "t"
Check "until they change", InStr(told, "t") > 0
timer.CancelTimers TimerEvent
told = ""
timer.TimerTick 1
timer.TimerTick 2, 8
timer.TimerTick 3
timer.TimerTick
Check "TimerTick forces one", told = "t8"
Check "the sender is the timer itself", sameTimer

Function Timer_Seconds
    Timer_Seconds = CDbl(Now) * 86400
End Function

WScript.Echo "done " & checks
