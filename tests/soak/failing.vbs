' Handlers and callbacks that raise errors. An error ends the tick or alarm that it belongs to, so each comes once.
' Wine's CreateObject never releases the class object, and its Err.Raise loses its texts if nobody catches the error.
' So the objects are made by WScript, and the errors are divisions by zero.
Option Explicit

Dim clock, called, plain, ticks, alarms, calledTicks, calledAlarms, direct
ticks = 0
alarms = 0
calledTicks = 0
calledAlarms = 0
direct = 0

Class Listener
    Public Sub Tick(sender)
        calledTicks = calledTicks + 1
        ticks = ticks / 0
    End Sub
    Public Sub Alarm(sender, tag, newDateTime)
        calledAlarms = calledAlarms + 1
        newDateTime = "no date"
        ticks = ticks / 0
    End Sub
End Class

Sub clock_Tick(sender)
    ticks = ticks + 1
    ticks = ticks / 0
End Sub
Sub clock_Alarm(sender, tag, newDateTime)
    alarms = alarms + 1
    ticks = ticks / 0
End Sub

Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.Interval = 40
clock.Enabled = True
clock.AddRelativeAlarm 90, 1
Set called = WScript.CreateObject("KWOUtil.KWOTimer")
Set called.TimerEvents = New Listener
Set called.AlarmEvents = New Listener
called.Interval = 40
called.Enabled = True
called.AddRelativeAlarm 90, 2

' Errors of members, caught by the script.
On Error Resume Next
Set plain = WScript.CreateObject("KWOUtil.KWOMonthView")
plain.ShowMonth 1, 2026
If Err.Number = 91 Then direct = direct + 1
Err.Clear
clock.AddAlarm "no date", 3
If Err.Number = 0 Then direct = direct + 1
Err.Clear
On Error Goto 0

Function Said
    Said = "tick " & ticks & ", alarm " & alarms & ", called tick " & calledTicks & ", called alarm " & calledAlarms & ", direct " & direct
End Function
Sub Finish
    clock.CancelTimers
    called.CancelTimers
    Set clock = Nothing
    Set called = Nothing
    Set plain = Nothing
End Sub
