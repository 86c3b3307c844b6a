' The example of docs/registry.md: the second run counts on.
'@include checks.vbs
Set before = CreateObject("KWOUtil.KWORegistry")
before.KWO_RegSetValue &H80000001, "Software\My Program", "Runs", "41"
Function ReadLike(text, default)
    before.KWO_RegSetValue &H80000001, "Software\My Program", "Bytes", text
    ReadLike = before.KWO_RegGetValueEx(before.KWO_RegCreateKey(&H80000001, "Software\My Program"), "Bytes", default)
End Function
Check "a text's bytes as a number", ReadLike("1", 0) = 49
Check "a text's bytes as a Boolean", ReadLike("0", False)
Check "too many bytes for a number", ReadLike("12345", 7) = 7

'@example

before.KWO_RegGetValue &H80000001, "Software\My Program", "Runs", value
Check "counted", value = "42"
before.KWO_RegGetValue &H80000001, "Software\My Program", "Quiet", value
Check "not quiet at first", CBool(value) = False And Not quiet
before.KWO_RegDeleteKey &H80000001, "Software\My Program"
WScript.Echo "done " & count
