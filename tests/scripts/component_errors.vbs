' How the component's failures reach a script.
Option Explicit

Dim checks
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name & " (" & Err.Number & " " & Err.Source & ": " & Err.Description & ")"
    Err.Clear
End Sub

Dim registry, timer, name
Set registry = CreateObject("KWOUtil.KWORegistry")
Set timer = CreateObject("KWOUtil.KWOTimer")

On Error Resume Next
registry.NoSuchMember
Check "an unknown member", Err.Number = 438
registry.KWO_RegDeleteKey
Check "too few arguments", Err.Number = 450
registry.KWO_RegDeleteKey 1, "a", 3
Check "too many arguments", Err.Number = 450
registry.KWO_RegDeleteKey "text", "a"
Check "text for a number", Err.Number = 13
registry.KWO_RegDeleteKey Null, "a"
Check "null for a number", Err.Number = 13
registry.KWO_RegDeleteKey registry, "a"
Check "an object for a number", Err.Number = 13 Or Err.Number = 438
registry.KWO_RegDeleteKey Array(1), "a"
Check "an array for a number", Err.Number = 13
registry.KWO_RegDeleteKey 4294967296, "a"
Check "a number above 32 bits", Err.Number = 6
registry.KWO_RegDeleteKey -2147483649, "a"
Check "a number below 32 bits", Err.Number = 6
registry.KWO_RegDeleteKey , "a"
Check "a required argument left out", Err.Number <> 0
Set timer.TimerEvents = registry
Check "an object that cannot be called back has a number", Err.Number = 13
Set timer.TimerEvents = registry
Check "the member's name as the source", Err.Source = "KWOTimer.TimerEvents (Set)"
Set timer.TimerEvents = registry
Check "and a description", Err.Description = "Type mismatch"

WScript.Echo "done " & checks
