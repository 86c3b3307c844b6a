' Errors of handlers and callbacks, on their way through the timer to the code that waits for it.
Option Explicit

Dim checks, clock, failing
checks = 0
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Class Listener
    Public Sub Tick(sender)
        Err.Raise 77, "Listener", "the listener fails"
    End Sub
    Public Sub Alarm(sender, tag, newDateTime)
        tag = tag / (tag - tag)
    End Sub
End Class
Class Quiet
    Public Sub Tick(sender)
        On Error Resume Next
        clock.Interval = "often"
        Err.Clear
    End Sub
End Class
Sub clock_Tick(sender)
    Err.Raise 78, "Handler", "the handler fails"
End Sub
Sub clock_Alarm(sender, tag, newDateTime)
    On Error Resume Next
    clock.TimerTick 1
    Check "a handler gets what its own call raises", Err.Number = 78
End Sub

Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
On Error Resume Next
clock.TimerTick 1
Check "the number of a handler's error", Err.Number = 78
Check "its source", Err.Source = "Handler"
Check "its description", Err.Description = "the handler fails"
Err.Clear
clock.TimerTick 2, 5
Err.Clear

Set failing = New Listener
Set clock.TimerEvents = failing
clock.TimerTick 1
Check "the number of a callback's error", Err.Number = 77
Check "its source, too", Err.Source = "Listener"
Check "its description, too", Err.Description = "the listener fails"
Err.Clear
Set clock.AlarmEvents = failing
clock.TimerTick 2, 5
Check "the number of a callback's division by zero", Err.Number = 11 Or Err.Number = &H80020012
Err.Clear
Set clock.TimerEvents = New Quiet
clock.TimerTick 1
Check "a callback that handles its error has none", Err.Number = 0
Set clock.TimerEvents = Nothing
Set clock.AlarmEvents = Nothing
On Error GoTo 0
WScript.Sleep 0
WScript.Echo "done " & checks
