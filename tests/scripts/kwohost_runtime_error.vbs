' expect-exit: 1
' expect-error: kwohost_runtime_error\.vbs\(14, [0-9]+\): -2147191504 \(0x80047530\) Some source: Told by the script ü$
Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Sub Fails
    Check "before the error", True
    WScript.Echo "done " & gChecks


    Err.Raise &H80047530, "Some source", "Told by the script ü"
    WScript.Echo "not ok goes on after an error"
End Sub
Fails
