' The example of docs/registry.md: the second run counts on.
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
Set before = CreateObject("KWOUtil.KWORegistry")
before.KWO_RegSetValue &H80000001, "Software\My Program", "Runs", "41"

'@example

before.KWO_RegGetValue &H80000001, "Software\My Program", "Runs", value
Check "counted", value = "42"
before.KWO_RegDeleteKey &H80000001, "Software\My Program"
WScript.Echo "done " & count
