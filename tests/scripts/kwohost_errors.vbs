' Errors of handlers and callbacks, on their way through the timer to the code that waits for it.
Option Explicit

Dim checks, clock
checks = 0
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Class Listener
    Public Sub Tick(sender)
        Err.Raise 77, "Listener", "the listener fails"
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

Set clock.TimerEvents = New Listener
clock.TimerTick 1
Check "the number of a callback's error", Err.Number = 77
Err.Clear
Set clock.TimerEvents = Nothing
On Error GoTo 0
WScript.Sleep 50
WScript.Echo "done " & checks
