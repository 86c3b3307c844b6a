' KWOUtil from VB.NET, early bound: the project has a reference to "KWO General and Common Utilities" (Project, Add
' Reference, COM). On the command line, tlbimp of the Windows SDK makes one:
'
'   tlbimp KWOUtil.dll /out:Interop.KWOUtil.dll
'   vbc /reference:Interop.KWOUtil.dll early_bound.vb
'
' Bitness: that of the process. /platform:x86 and /platform:x64 choose one; without them it is that of the system.
Option Strict On
Imports System

Public Module Program
    Private WithEvents mTimer As KWOUtil.KWOTimer

    Private Sub mTimer_Alarm(sender As Object, ByRef tag As Integer, ByRef newDateTime As Date) _
        Handles mTimer.Alarm
        Console.WriteLine("event: alarm " & tag)
    End Sub

    Private Sub ReadTheRegistry()
        Dim registry As New KWOUtil.KWORegistry()
        Dim currentUser As Integer = &H80000001
        Dim keyName As String = "Software\KWOUtil Client"

        ' A by-reference result: the member puts the text into the variable.
        Dim value As String = ""
        registry.KWO_RegSetValue(currentUser, keyName, "Greeting", "Hello")
        registry.KWO_RegGetValue(currentUser, keyName, "Greeting", value)
        Console.WriteLine("by reference: " & value)

        ' A date: the default is a date, so the result is one.
        Dim key As Integer = registry.KWO_RegCreateKey(currentUser, keyName)
        registry.KWO_RegSetValue(key, "", "When", "2024-02-29 13:30:00")
        Dim moment As Date = CDate(registry.KWO_RegGetValueEx(key, "When", #1/1/2000#))
        Console.WriteLine("date: " & moment.ToString("yyyy-MM-dd HH:mm:ss"))
        registry.KWO_RegDeleteKey(currentUser, keyName)
    End Sub

    ' The objects belong to the thread that creates them; its apartment must be single-threaded.
    <STAThread>
    Public Sub Main()
        ReadTheRegistry()
        Dim utility As New KWOUtil.KWOUtility()

        ' Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
        mTimer = New KWOUtil.KWOTimer()
        mTimer.AddRelativeAlarm(50, 7)
        utility.KWO_Pause(300)

        ' An error: this member refuses the seconds from 33 to 99. Some numbers have an exception of their own (this
        ' one is an OverflowException), the others are a COMException; HResult has the number in either.
        Try
            utility.KWO_Pause(50)
        Catch problem As Exception
            Console.WriteLine("error: " & (problem.HResult And &HFFFF))
            Console.WriteLine("source: " & problem.Source)
            Console.WriteLine("description: " & problem.Message)
        End Try
    End Sub
End Module
