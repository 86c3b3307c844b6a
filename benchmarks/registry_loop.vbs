' What reading a value of the registry costs in a script's loop, beside the same by the platform's own component.
' Both read 100,000 times, in turns.
Option Explicit

Const CurrentUser = &H80000001
Const KeyName = "Software\KWOUtil Benchmark"
Const Rounds = 10
Const ReadsPerRound = 10000

Dim registry, shell, ours, theirs, round, verdict
Set registry = CreateObject("KWOUtil.KWORegistry")
Set shell = CreateObject("WScript.Shell")
registry.KWO_RegSetValue CurrentUser, KeyName, "Greeting", "Hello from a script"

Function SecondsOfOurs()
    Dim begin, i, status, value
    begin = Timer
    For i = 1 To ReadsPerRound
        status = registry.KWO_RegGetValue(CurrentUser, KeyName, "Greeting", value)
    Next
    SecondsOfOurs = Timer - begin
    If status <> 0 Or value <> "Hello from a script" Then WScript.Echo "KWO_RegGetValue failed: " & status
End Function

Function SecondsOfTheirs()
    Dim begin, i, value
    begin = Timer
    For i = 1 To ReadsPerRound
        value = shell.RegRead("HKCU\" & KeyName & "\Greeting")
    Next
    SecondsOfTheirs = Timer - begin
    If value <> "Hello from a script" Then WScript.Echo "RegRead failed"
End Function

ours = 0
theirs = 0
For round = 1 To Rounds
    ours = ours + SecondsOfOurs()
    theirs = theirs + SecondsOfTheirs()
Next
registry.KWO_RegDeleteKey CurrentUser, KeyName

WScript.Echo
WScript.Echo "Reading a value " & Rounds * ReadsPerRound & " times in a script's loop"
WScript.Echo "  KWORegistry.KWO_RegGetValue  " & FormatNumber(ours, 2) & " s"
WScript.Echo "  WScript.Shell.RegRead        " & FormatNumber(theirs, 2) & " s"
verdict = "NOT MET"
If ours < theirs Then verdict = "met"
WScript.Echo "    -> KWOUtil against WScript.Shell  " & FormatNumber(ours / theirs, 2) & "  (under 1: " & verdict & ")"
