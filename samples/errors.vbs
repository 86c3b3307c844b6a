' Errors of the component in a script: number, source and description.
Option Explicit

Dim registry, timer, value
Set registry = CreateObject("KWOUtil.KWORegistry")
Set timer = CreateObject("KWOUtil.KWOTimer")

Sub Report(what)
    If Err.Number = 0 Then
        WScript.Echo what & ": no error"
    Else
        WScript.Echo what & ": " & Err.Number & " (0x" & Hex(Err.Number) & ")"
        If Err.Source <> "" Then WScript.Echo "    source:      " & Err.Source
        If Err.Description <> "" Then WScript.Echo "    description: " & Err.Description
    End If
    Err.Clear
End Sub

On Error Resume Next

' An error that a member raises; the member is its source.
Set timer.TimerEvents = registry
Report "A callback object without a procedure Tick"

' Errors of the call itself are raised before the member runs.
registry.NoSuchMember
Report "An unknown member"
registry.KWO_RegDeleteKey
Report "Too few arguments"
registry.KWO_RegDeleteKey &H80000001, "Software\None", 3, 4
Report "Too many arguments"
registry.KWO_RegDeleteKey "no number", "Software\None"
Report "Text where a number is needed"
registry.KWO_RegDeleteKey 1e20, "Software\None"
Report "A number that is too large"

' The registry class raises no error when the system refuses: its members return a status code.
value = registry.KWO_RegDeleteKey(&H80000001, "Software\No such key")
Report "Deleting a key that is not there"
WScript.Echo "    its status:  " & value

Set value = CreateObject("KWOUtil.NoSuchClass")
Report "An unknown class"
