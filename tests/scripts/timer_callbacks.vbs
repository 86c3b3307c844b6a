' Callback objects of a script in place of the timer's events.
Option Explicit

Dim checks
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Class Listener
    Public Told
    Public NewDate
    Public Sub Tick(timer)
        Told = Told & "t"
    End Sub
    Public Sub Alarm(timer, tag, newDateTime)
        Told = Told & tag
        If Not IsEmpty(NewDate) Then
            newDateTime = NewDate
            NewDate = Empty
        End If
    End Sub
End Class

Class Deaf
    Public Nothing_Here
End Class

Dim timer, listener, other, events
events = ""
Sub my_Tick(sender)
    events = events & "T"
End Sub
Sub my_Alarm(sender, tag, newDateTime)
    events = events & "A"
End Sub
Sub WaitFor(text)
    Dim turns
    For turns = 1 To 400
        If InStr(listener.Told, text) > 0 Then Exit Sub
        WScript.Sleep 20
    Next
End Sub

Set listener = New Listener
Set timer = WScript.CreateObject("KWOUtil.KWOTimer", "my_")
Set timer.TimerEvents = listener
Set timer.AlarmEvents = listener
Check "a callback object reads back as itself", (timer.TimerEvents Is listener) And (timer.AlarmEvents Is listener)

timer.Interval = 20
timer.Enabled = True
WaitFor "tt"
timer.Enabled = False
Check "ticks call it", InStr(listener.Told, "tt") > 0

listener.Told = ""
timer.AddRelativeAlarm 20, 5
WaitFor "5"
Check "alarms call it with their tags", listener.Told = "5"

listener.Told = ""
listener.NewDate = DateAdd("h", -1, Now)
timer.AddRelativeAlarm 20, 6
WaitFor "66"
Check "a date that it writes brings the alarm again", listener.Told = "66"
Check "the events stay silent meanwhile", events = ""

listener.Told = ""
listener.NewDate = "no date"
timer.AddRelativeAlarm 20, 7
WaitFor "7"
timer.AddRelativeAlarm 150, 8               ' by then the other one would have come again
WaitFor "8"
Check "what is no date ends the alarm alone", listener.Told = "78"

Set timer.TimerEvents = Nothing
listener.Told = ""
timer.TimerTick 1
timer.TimerTick 2, 8
Check "Nothing brings the event back, for its own kind", events = "T" And listener.Told = "8"

timer.CancelTimers 2
Check "cancelling alarms keeps the callback object", timer.AlarmEvents Is listener
timer.CancelTimers
Check "cancelling everything lets it go", timer.AlarmEvents Is Nothing

On Error Resume Next
Set timer.TimerEvents = New Deaf
Check "an object without Tick is refused", Err.Number = 13
Err.Clear
Set timer.AlarmEvents = CreateObject("Scripting.Dictionary")
Check "one without Alarm, too", Err.Number = 13
Err.Clear
Set timer.TimerEvents = CreateObject("KWOUtil.IKWOTimer")
Check "the pattern object is taken", Err.Number = 0
timer.TimerTick 1
Check "and does nothing", Err.Number = 0 And events = "T"

WScript.Echo "done " & checks
