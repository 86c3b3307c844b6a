Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Check "quit without a code is success", True
WScript.Echo "done " & gChecks
WScript.Quit
WScript.Echo "not ok goes on after Quit"
