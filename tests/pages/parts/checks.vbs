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
