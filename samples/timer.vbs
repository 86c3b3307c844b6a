' Ticks of KWOUtil.KWOTimer: as an event, and by a callback object of the script's own.
Option Explicit

Class Metronome
    Public Beats
    Public Sub Tick(timer)
        Beats = Beats + 1
        WScript.Echo "beat " & Beats & " of " & timer.Item
        If Beats = 3 Then timer.Enabled = False
    End Sub
End Class

Dim ticks, timer, metronome
ticks = 0

' The event "Tick" of an object with the prefix "timer" calls this procedure.
Sub timer_Tick(sender)
    ticks = ticks + 1
    WScript.Echo "tick " & ticks & ", every " & sender.Interval & " milliseconds"
    If ticks = 3 Then sender.Interval = 0
End Sub

' Set Interval and Enabled in either order; ticks arrive while both allow them.
Set timer = WScript.CreateObject("KWOUtil.KWOTimer", "timer")
timer.Interval = 200
timer.Enabled = True
WScript.Sleep 1000
WScript.Echo "An interval of 0 has switched it off: Enabled is " & timer.Enabled

' A callback object replaces the event. Item is for your own use.
Set metronome = New Metronome
timer.Item = "the metronome"
Set timer.TimerEvents = metronome
timer.Interval = 100
timer.Enabled = True
WScript.Sleep 600

' CancelTimers without arguments cancels everything and releases the callback object.
timer.CancelTimers
WScript.Echo "The callback object is gone: " & (timer.TimerEvents Is Nothing)
