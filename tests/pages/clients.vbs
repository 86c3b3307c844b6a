' The VBScript example of docs/clients.md.
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

Check "read by reference", value = "Hello"
registry.KWO_RegDeleteKey &H80000001, "Software\My Program"
WScript.Echo "done " & count
