' A tour through what the component has so far.
Option Explicit

Dim names, name, made
names = Array("KWORegistry", "KWOUtility", "KWOSplitterV", "KWOPicBtn", "KWOSysParams", "KWOSysTray", _
              "KWOSysMetrics", "KWOMonthView", "KWOTimer", "IKWOTimer", "IKWOAlarm")

WScript.Echo "Classes of KWOUtil:"
For Each name In names
    Set made = CreateObject("KWOUtil." & name)
    WScript.Echo "    KWOUtil." & name & " -> " & TypeName(made)
Next

WScript.Echo
WScript.Echo "The registry:"
Const CurrentUser = &H80000001
Const KeyName = "Software\KWOUtil Tour"
Dim registry, value
Set registry = CreateObject("KWOUtil.KWORegistry")
WScript.Echo "    write:  status " & registry.KWO_RegSetValue(CurrentUser, KeyName, "Visitor", "you")
WScript.Echo "    read:   status " & registry.KWO_RegGetValue(CurrentUser, KeyName, "Visitor", value) & ", """ & value & """"
WScript.Echo "    delete: status " & registry.KWO_RegDeleteKey(CurrentUser, KeyName)
WScript.Echo "    read:   status " & registry.KWO_RegGetValue(CurrentUser, KeyName, "Visitor", value) & ", """ & value & """"

WScript.Echo
WScript.Echo "The timer:"
Dim timer, ticks
ticks = 0
Sub timer_Tick(sender)
    ticks = ticks + 1
    WScript.Echo "    tick " & ticks
    If ticks = 3 Then sender.Enabled = False
End Sub
Sub timer_Alarm(sender, tag, newDateTime)
    WScript.Echo "    alarm " & tag
End Sub
Set timer = WScript.CreateObject("KWOUtil.KWOTimer", "timer")
timer.Interval = 100
timer.Enabled = True
timer.AddRelativeAlarm 500, 7
WScript.Sleep 800

WScript.Echo
WScript.Echo "An error of the component:"
On Error Resume Next
Set timer.TimerEvents = registry
WScript.Echo "    number:      " & Err.Number
WScript.Echo "    source:      " & Err.Source
WScript.Echo "    description: " & Err.Description
