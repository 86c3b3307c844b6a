' expect-exit: 1
' expect-error: kwohost_short_number\.vbs\([0-9]+, [0-9]+\): 6 \(0x800A0006\) [^:]+: .+
Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Check "before the error", True
WScript.Echo "done " & gChecks
Err.Raise 6
