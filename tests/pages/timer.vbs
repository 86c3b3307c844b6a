' The example of docs/timer.md, which waits for its ticks and its alarm.
' expect-output: ^tick$
' expect-output: ^alarm 7$
'@include checks.vbs

'@example

' What comes from here on does not count: the example itself must have waited.
WScript.DisconnectObject clock
Check "the tick goes on", clock.Enabled
clock.CancelTimers

' While a handler processes messages, nothing else arrives.
Set utility = CreateObject("KWOUtil.KWOUtility")
Set busy = WScript.CreateObject("KWOUtil.KWOTimer", "busy")
Set other = WScript.CreateObject("KWOUtil.KWOTimer", "other")
order = ""
Sub busy_Alarm(sender, tag, newDateTime)
    order = order & " begin"
    utility.KWO_Pause 300
    order = order & " end"
End Sub
Sub other_Alarm(sender, tag, newDateTime)
    order = order & " alarm"
End Sub
Sub other_Tick(sender)
    order = order & " tick"
    sender.Enabled = False
End Sub
busy.AddRelativeAlarm 20, 1
other.AddRelativeAlarm 60, 2
other.Interval = 100
other.Enabled = True
For turns = 1 To 400
    If InStr(order, "tick") > 0 Then Exit For
    WScript.Sleep 20
Next
Check "an alarm and a tick wait for the handler:" & order, order = " begin end alarm tick"

' A time of today that has passed. The handler asks for the next day's.
Set daily = WScript.CreateObject("KWOUtil.KWOTimer", "daily")
alarms = 0
Sub daily_Alarm(sender, tag, newDateTime)
    alarms = alarms + 1
    newDateTime = Date + 1 + TimeSerial(7, 0, 0)
End Sub
daily.AddAlarm TimeSerial(0, 0, 1), 1
For turns = 1 To 400
    If alarms > 0 Then Exit For
    WScript.Sleep 20
Next
WScript.Sleep 1200
Check "a time that has passed comes in about a second, and the next day's does not:" & alarms, alarms = 1
daily.CancelTimers

busy.AddRelativeAlarm 2147483647, 1
busy.CancelTimers
On Error Resume Next
busy.AddRelativeAlarm 2147483648, 1
number = Err.Number
On Error GoTo 0
Check "a relative alarm of more than 24.8 days", number = 6
WScript.Echo "done " & count
