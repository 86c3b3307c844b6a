' arguments: given
Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Check "byte order mark", Len("ü€") = 2 And WScript.Arguments.Count = 1
WScript.Echo "done " & gChecks
