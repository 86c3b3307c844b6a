' Writes, reads and deletes values of the current user's registry with KWOUtil.KWORegistry.
Option Explicit

Const CurrentUser = &H80000001
Const KeyName = "Software\KWOUtil Sample"

Dim registry, status, value, key
Set registry = CreateObject("KWOUtil.KWORegistry")

Sub Show(what, result)
    WScript.Echo Left(what & Space(34), 34) & result
End Sub

' Members return the system's status code; 0 is success.
status = registry.KWO_RegSetValue(CurrentUser, KeyName, "Greeting", "Hello from a script")
Show "KWO_RegSetValue Greeting", "status " & status

status = registry.KWO_RegGetValue(CurrentUser, KeyName, "Greeting", value)
Show "KWO_RegGetValue Greeting", "status " & status & ", """ & value & """"

' An empty text is stored as one blank, and reading removes trailing blanks.
status = registry.KWO_RegSetValue(CurrentUser, KeyName, "Empty", "")
status = registry.KWO_RegGetValue(CurrentUser, KeyName, "Empty", value)
Show "KWO_RegGetValue Empty", "status " & status & ", """ & value & """"

status = registry.KWO_RegGetValue(CurrentUser, KeyName, "Missing", value)
Show "KWO_RegGetValue Missing", "status " & status & ", """ & value & """"

' Open a key and read a value as the type of a default. The key stays open until the program ends.
key = registry.KWO_RegCreateKey(CurrentUser, KeyName)
status = registry.KWO_RegSetValue(key, "", "Released", "12/31/1999")
value = registry.KWO_RegGetValueEx(key, "Released", DateSerial(2000, 1, 1))
Show "KWO_RegGetValueEx as a date", TypeName(value) & ", year " & Year(value)
value = registry.KWO_RegGetValueEx(key, "Missing", "the default")
Show "KWO_RegGetValueEx of none", TypeName(value) & " """ & value & """"

status = registry.KWO_RegDeleteValue(CurrentUser, KeyName, "Greeting")
Show "KWO_RegDeleteValue Greeting", "status " & status
status = registry.KWO_RegDeleteValue(CurrentUser, KeyName, "Greeting")
Show "the same again", "status " & status & " (not found)"
status = registry.KWO_RegDeleteKey(CurrentUser, KeyName)
Show "KWO_RegDeleteKey", "status " & status
