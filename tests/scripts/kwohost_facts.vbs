Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim fso, dictionary, text
Check "name", WScript.Name = "kwohost"
Check "name is the default", WScript = "kwohost"
Check "version", WScript.Version = "4.5"
Check "script name", WScript.ScriptName = "kwohost_facts.vbs"
Check "script path ends in the name", Right(WScript.ScriptFullName, 18) = "\" & WScript.ScriptName
Check "script path is complete", Mid(WScript.ScriptFullName, 2, 2) = ":\"
Check "program", LCase(Right(WScript.FullName, 12)) = "\kwohost.exe"
Check "names in any case", wscript.SCRIPTNAME = WScript.ScriptName

Set dictionary = WScript.CreateObject("Scripting.Dictionary")
dictionary.Add "a", 1
Check "create object", dictionary.Count = 1
Set dictionary = CreateObject("Scripting.Dictionary")
Check "create object of the language", dictionary.Count = 0

On Error Resume Next
WScript.Unknown
Check "unknown member", Err.Number = 438
Err.Clear
WScript.Name = "other"
Check "read-only member", Err.Number = 438
Err.Clear
WScript.Sleep
Check "argument missing", Err.Number = 450
Err.Clear
WScript.Sleep 1, 2
Check "argument too many", Err.Number = 450
Err.Clear
WScript.Sleep "soon"
Check "argument of a wrong type", Err.Number = 13
Err.Clear
WScript.Sleep 3000000000
Check "argument out of range", Err.Number = 6
Err.Clear
WScript.Sleep -1
Check "sleep of less than nothing", Err.Number = 5
Check "own errors tell their source", Err.Source = "kwohost"
Err.Clear
WScript.CreateObject "No.SuchClass"
Check "object that does not exist", Err.Number = 429
Check "its name is told", InStr(Err.Description, "No.SuchClass") > 0
Err.Clear
WScript.ConnectObject dictionary, "d"
Check "object without events", Err.Number = 459
Err.Clear
WScript.ConnectObject 5, "d"
Check "events of no object", Err.Number = 424
Err.Clear
WScript.ConnectObject Nothing, "d"
Check "events of nothing", Err.Number = 91
Err.Clear
WScript.ConnectObject dictionary, ""
Check "empty prefix", Err.Number = 5
Err.Clear
WScript.CreateObject "Scripting.Dictionary", "d"
Check "created object without events", Err.Number = 459
Err.Clear
WScript.DisconnectObject dictionary
Check "disconnecting what is not connected", Err.Number = 0
WScript.Echo "done " & gChecks
