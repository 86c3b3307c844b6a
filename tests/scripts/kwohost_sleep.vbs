Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim started, elapsed
started = Timer
WScript.Sleep 300
elapsed = Timer - started
If elapsed < 0 Then elapsed = elapsed + 86400
Check "not shorter", elapsed >= 0.29
Check "not much longer", elapsed < 10
started = Timer
WScript.Sleep 0
elapsed = Timer - started
If elapsed < 0 Then elapsed = elapsed + 86400
Check "no length", elapsed < 5
WScript.Echo "done " & gChecks
