' The timer class as a VBScript author uses it: its properties, and ticks and alarms as events.
Option Explicit

Dim checks
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Const TimerEvent = 1, AlarmEvent = 2
Dim clock, told, rearmed, sameTimer, begun
told = ""
rearmed = 0
sameTimer = True

Sub my_Tick(sender)
    told = told & "t"
    sameTimer = sameTimer And (sender Is clock)
End Sub
Sub my_Alarm(sender, tag, newDateTime)
    told = told & tag
    sameTimer = sameTimer And (sender Is clock)
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

Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "my_")

Check "Item is empty at first", IsEmpty(clock.Item)
clock.Item = "text"
Check "and holds what it is given", clock.Item = "text"
Set clock.Item = clock
Check "an object as well", clock.Item Is clock
clock.Item = Empty
Check "ItemData is 0 at first", clock.ItemData = 0
clock.ItemData = -7
Check "and a 32-bit number", clock.ItemData = -7
Check "it is switched off at first", clock.Enabled = False And clock.Interval = 0
Check "without callback objects", (clock.TimerEvents Is Nothing) And (clock.AlarmEvents Is Nothing)

clock.Enabled = True
Check "enabled without an interval it waits", clock.Enabled = True
clock.Interval = 30
WaitFor "ttt"
Check "ticks come again and again", InStr(told, "ttt") > 0
clock.Interval = 0
Check "an interval of 0 switches it off", clock.Enabled = False
told = ""
clock.AddRelativeAlarm 150, 4               ' by then some ticks would have come
WaitFor "4"
Check "and no tick comes any more", told = "4"

told = ""
clock.AddRelativeAlarm 60, 5
clock.AddRelativeAlarm 30, 6
clock.AddRelativeAlarm 20, 7
clock.CancelTimers AlarmEvent, 7
WaitFor "5"
Check "alarms come in the order of their times, a cancelled one does not", told = "65"

told = ""
clock.AddRelativeAlarm 40, 1
clock.AddRelativeAlarm 40, 2
clock.AddRelativeAlarm 20, 0
WaitFor "0"
clock.AddRelativeAlarm 150, 4               ' by then the others would have come
WaitFor "4"
Check "an alarm with the tag 0 replaces all", told = "04"

told = ""
begun = Timer
clock.AddAlarm DateAdd("d", -1, Now), 4
WaitFor "4"
Check "a date that has passed comes after a second", told = "4" And SecondsSince(begun) >= 0.98

told = ""
clock.AddRelativeAlarm 20, 9
WaitFor "99"
Check "NewDateTime brings the alarm again, once", told = "99" And rearmed = 1

told = ""
clock.AddRelativeAlarm 50, 3
clock.Enabled = True
clock.Interval = 20
clock.CancelTimers
clock.AddRelativeAlarm 150, 4               ' by then all of it would have come
WaitFor "4"
Check "CancelTimers cancels everything", told = "4"
Check "and leaves the settings", clock.Enabled = True And clock.Interval = 20
clock.Enabled = False
clock.Enabled = True
WaitFor "t"
Check "until they change", InStr(told, "t") > 0
clock.CancelTimers TimerEvent
told = ""
clock.TimerTick 1
clock.TimerTick 2, 8
clock.TimerTick 3
clock.TimerTick
Check "TimerTick forces one", told = "t8"
Check "the sender is the timer itself", sameTimer

' Also over midnight, when Timer begins at 0 again.
Function SecondsSince(begun)
    SecondsSince = Timer - begun
    If SecondsSince < 0 Then SecondsSince = SecondsSince + 86400
End Function

WScript.Echo "done " & checks
