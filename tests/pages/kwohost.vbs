' The first example of docs/kwohost.md.
' arguments: one "two words"
' expect-output: ^argument: one$
' expect-output: ^argument: two words$
' expect-output: ^1 entry$
Dim count
count = 0
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub

'@example

Check "one entry", numbers.Count = 1
WScript.Echo "done " & count
