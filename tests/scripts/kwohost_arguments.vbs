' arguments: one 'two words' '' 'ünï'
Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim word, joined
Check "count", WScript.Arguments.Count = 4
Check "length is the same", WScript.Arguments.length = 4
Check "default member", WScript.Arguments(0) = "one"
Check "item", WScript.Arguments.Item(1) = "two words"
Check "empty argument stays", WScript.Arguments(2) = ""
Check "beyond ASCII", WScript.Arguments(3) = "ünï"
For Each word In WScript.Arguments
    joined = joined & "[" & word & "]"
Next
Check "for each", joined = "[one][two words][][ünï]"
joined = ""
For Each word In WScript.Arguments
    joined = joined & Left(word, 1)
Next
Check "for each starts anew", joined = "otü"
Check "index by text", WScript.Arguments("1") = "two words"

On Error Resume Next
word = WScript.Arguments(4)
Check "index behind the last", Err.Number = 9
Err.Clear
word = WScript.Arguments(-1)
Check "index before the first", Err.Number = 9
Err.Clear
word = WScript.Arguments("x")
Check "index that is no number", Err.Number = 13
Err.Clear
word = WScript.Arguments(0, 1)
Check "two indexes", Err.Number = 450
Err.Clear
WScript.Arguments.Count = 3
Check "count cannot be set", Err.Number = 438
WScript.Echo "done " & gChecks
