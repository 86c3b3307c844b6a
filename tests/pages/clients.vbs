' The VBScript example of docs/clients.md.
'@include checks.vbs

'@example

Check "read by reference", value = "Hello"
registry.KWO_RegDeleteKey &H80000001, "Software\My Program"
WScript.Echo "done " & count
