' The first example of docs/kwohost.md.
' arguments: one "two words"
' expect-output: ^argument: one$
' expect-output: ^argument: two words$
' expect-output: ^1 entry$
'@include checks.vbs

'@example

Check "one entry", numbers.Count = 1
WScript.Echo "done " & count
