' expect-exit: 1
' expect-error: kwohost_recursion\.vbs: 28 \(0x800A001C\) .*stack
Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Function Depth(left)
    If left = 0 Then Depth = 0 Else Depth = 1 + Depth(left - 1)
End Function
Sub Endless
    Endless
End Sub
Check "deep recursion has room", Depth(10000) = 10000
WScript.Echo "done " & gChecks
Endless
