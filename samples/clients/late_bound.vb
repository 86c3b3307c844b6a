' KWOUtil from VB.NET, late bound: members are called by name.
'
'   vbc late_bound.vb
'
' Bitness: that of the process. /platform:x86 and /platform:x64 choose one; without them it is that of the system.
Option Strict Off
Imports System
Imports System.Runtime.InteropServices

' A callback object is any object that automation can call, with a procedure of this name.
<ComVisible(True)>
Public Class AlarmListener
    Public Sub Alarm(sender As Object, ByRef tag As Integer, ByRef newDateTime As Date)
        Console.WriteLine("event: alarm " & tag)
    End Sub
End Class

Public Module Program
    ' The objects belong to the thread that creates them; its apartment must be single-threaded.
    <STAThread>
    Public Sub Main()
        Const CurrentUser = &H80000001
        Const KeyName = "Software\KWOUtil Client"
        Dim registry As Object = CreateObject("KWOUtil.KWORegistry")
        Dim timer As Object = CreateObject("KWOUtil.KWOTimer")
        Dim utility As Object = CreateObject("KWOUtil.KWOUtility")

        ' A by-reference result: the member puts the text into the variable.
        Dim value As String = ""
        registry.KWO_RegSetValue(CurrentUser, KeyName, "Greeting", "Hello")
        registry.KWO_RegGetValue(CurrentUser, KeyName, "Greeting", value)
        Console.WriteLine("by reference: " & value)

        ' A date: the default is a date, so the result is one.
        Dim key As Integer = registry.KWO_RegCreateKey(CurrentUser, KeyName)
        registry.KWO_RegSetValue(key, "", "When", "2024-02-29 13:30:00")
        Dim moment As Date = registry.KWO_RegGetValueEx(key, "When", #1/1/2000#)
        Console.WriteLine("date: " & moment.ToString("yyyy-MM-dd HH:mm:ss"))
        registry.KWO_RegDeleteKey(CurrentUser, KeyName)

        ' Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
        timer.AlarmEvents = New AlarmListener()
        timer.AddRelativeAlarm(50, 7)
        utility.KWO_Pause(300)

        ' An error: this member refuses the seconds from 33 to 99.
        On Error Resume Next
        utility.KWO_Pause(50)
        Console.WriteLine("error: " & Err.Number)
        Console.WriteLine("source: " & Err.Source)
        Console.WriteLine("description: " & Err.Description)
    End Sub
End Module
