Attribute VB_Name = "Client"
' KWOUtil from an office macro or a classic BASIC program. Import this file and AlarmListener.cls, and tick "KWO General
' and Common Utilities" under Tools, References. The results are in the Immediate window (Ctrl+G).
'
' Bitness: that of the program. A 64-bit office program uses the 64-bit library; the text of a macro stays the same.
Option Explicit

Private Const CurrentUser As Long = &H80000001
Private Const KeyName As String = "Software\KWOUtil Client"

Public Sub UseEverything()
    Dim registry As New KWOUtil.KWORegistry
    Dim utility As New KWOUtil.KWOUtility
    Dim listener As New AlarmListener
    Dim value As String, key As Long, moment As Date

    ' A by-reference result: the member puts the text into the variable.
    registry.KWO_RegSetValue CurrentUser, KeyName, "Greeting", "Hello"
    registry.KWO_RegGetValue CurrentUser, KeyName, "Greeting", value
    Debug.Print "by reference: " & value

    ' A date: the default is a date, so the result is one.
    key = registry.KWO_RegCreateKey(CurrentUser, KeyName)
    registry.KWO_RegSetValue key, "", "When", "2024-02-29 13:30:00"
    moment = registry.KWO_RegGetValueEx(key, "When", DateSerial(2000, 1, 1))
    Debug.Print "date: " & Format$(moment, "yyyy-mm-dd hh:nn:ss")
    registry.KWO_RegDeleteKey CurrentUser, KeyName

    ' Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
    listener.Clock.AddRelativeAlarm 50, 7
    utility.KWO_Pause 300

    ' An error: this member refuses the seconds from 33 to 99.
    On Error Resume Next
    utility.KWO_Pause 50
    Debug.Print "error: " & Err.Number
    Debug.Print "source: " & Err.Source
    Debug.Print "description: " & Err.Description
End Sub

' Without the reference: members are called by name, and the compiler checks nothing.
Public Sub UseItLateBound()
    Dim registry As Object, value As String
    Set registry = CreateObject("KWOUtil.KWORegistry")
    registry.KWO_RegSetValue CurrentUser, KeyName, "Greeting", "Hello"
    registry.KWO_RegGetValue CurrentUser, KeyName, "Greeting", value
    Debug.Print "by reference: " & value
    registry.KWO_RegDeleteKey CurrentUser, KeyName
End Sub
