' KWOUtil from VBScript, under any script host:
'
'   kwohost client.vbs
'   cscript client.vbs
'
' Bitness: that of the host. 64-bit Windows has two: System32\cscript.exe is 64-bit, SysWOW64\cscript.exe is 32-bit.
Option Explicit

Const CurrentUser = &H80000001
Const KeyName = "Software\KWOUtil Client"
Dim registry, timer, utility, key, value, moment

' A callback object is any object with a procedure of this name.
Class AlarmListener
    Public Sub Alarm(sender, tag, newDateTime)
        WScript.Echo "event: alarm " & tag
    End Sub
End Class

Function TwoDigits(number)
    TwoDigits = Right("0" & number, 2)
End Function

Function DateText(moment)
    DateText = Year(moment) & "-" & TwoDigits(Month(moment)) & "-" & TwoDigits(Day(moment)) & " " & _
        TwoDigits(Hour(moment)) & ":" & TwoDigits(Minute(moment)) & ":" & TwoDigits(Second(moment))
End Function

Set registry = CreateObject("KWOUtil.KWORegistry")
Set timer = CreateObject("KWOUtil.KWOTimer")
Set utility = CreateObject("KWOUtil.KWOUtility")

' A by-reference result: the member puts the text into the variable.
registry.KWO_RegSetValue CurrentUser, KeyName, "Greeting", "Hello"
registry.KWO_RegGetValue CurrentUser, KeyName, "Greeting", value
WScript.Echo "by reference: " & value

' A date: the default is a date, so the result is one.
key = registry.KWO_RegCreateKey(CurrentUser, KeyName)
registry.KWO_RegSetValue key, "", "When", "2024-02-29 13:30:00"
moment = registry.KWO_RegGetValueEx(key, "When", DateSerial(2000, 1, 1))
WScript.Echo "date: " & DateText(moment)
registry.KWO_RegDeleteKey CurrentUser, KeyName

' Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
Set timer.AlarmEvents = New AlarmListener
timer.AddRelativeAlarm 50, 7
utility.KWO_Pause 300

' An error: this member refuses the seconds from 33 to 99.
On Error Resume Next
utility.KWO_Pause 50
WScript.Echo "error: " & Err.Number
WScript.Echo "source: " & Err.Source
WScript.Echo "description: " & Err.Description
