' expect-exit: 7
Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

' A caught error must not keep a script alive that wants to end.
Sub Inner
    On Error Resume Next
    WScript.Quit 7
    WScript.Echo "not ok goes on after Quit in a procedure"
End Sub
On Error Resume Next
Check "before the end", True
WScript.Echo "done " & gChecks
Inner
WScript.Echo "not ok goes on after Quit"
