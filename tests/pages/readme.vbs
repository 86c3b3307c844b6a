' The example of README.md: what is stored is read back, and nothing stays.
' expect-output: ^Hello$
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

Check "read", value = "Hello"
Check "the key is gone", registry.KWO_RegGetValue(CurrentUser, "Software\My Program", "Greeting", value) = 2
WScript.Echo "done " & count
