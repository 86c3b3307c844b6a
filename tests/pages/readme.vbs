' The example of README.md: what is stored is read back, and nothing stays.
' expect-output: ^Hello$
'@include checks.vbs

'@example

Check "read", value = "Hello"
Check "the key is gone", registry.KWO_RegGetValue(CurrentUser, "Software\My Program", "Greeting", value) = 2
WScript.Echo "done " & count
