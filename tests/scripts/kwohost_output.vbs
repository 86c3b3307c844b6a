' expect-output: ^one 2 3\.5 True False Null  €$
' expect-output: ^part and end$
' expect-output: ^$
' expect-output: ^ok written without line end$
' expect-error: ^to the errors: ü$
Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim dictionary
Set dictionary = CreateObject("Scripting.Dictionary")
WScript.Echo "one", 2, 3.5, True, False, Null, Empty, "€"
WScript.Echo
WScript.StdOut.Write "part and "
WScript.StdOut.WriteLine "end"
WScript.StdErr.Write "to the errors: "
WScript.StdErr.WriteLine "ü"
WScript.StdOut.Write "ok written without "
WScript.StdOut.Write "line end"
WScript.StdOut.WriteLine
gChecks = gChecks + 1
WScript.Echo "ok the default member of an object:", WScript
gChecks = gChecks + 1

On Error Resume Next
WScript.Echo Array(1, 2)
Check "an array has no text", Err.Number = 13
Err.Clear
WScript.Echo Nothing
Check "nothing has no text", Err.Number = 91
Err.Clear
WScript.Echo dictionary
Check "an object without default has no text", Err.Number = 438
Err.Clear
WScript.StdOut.Write
Check "write takes one argument", Err.Number = 450
Err.Clear
WScript.StdOut.WriteLine 1, 2
Check "write line takes at most one", Err.Number = 450
WScript.Echo "done " & gChecks
