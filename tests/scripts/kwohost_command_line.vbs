Dim gChecks
Sub Check(name, good)
    gChecks = gChecks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim shell, files, errorFile
Set shell = CreateObject("WScript.Shell")
Set files = CreateObject("Scripting.FileSystemObject")
errorFile = files.GetSpecialFolder(2).Path & "\" & files.GetTempName()

' Runs the host on other arguments: its exit code is `code`, and its standard error contains `text`.
Sub CheckRun(name, arguments, code, text)
    Dim got, told, stream
    got = shell.Run("cmd /c """"" & WScript.FullName & """ " & arguments & " 2>""" & errorFile & """""", 0, True)
    Set stream = files.OpenTextFile(errorFile, 1)
    If Not stream.AtEndOfStream Then told = stream.ReadAll
    stream.Close
    Check name & ": exit code " & got, got = code
    If text = "" Then
        Check name & ": nothing told" & told, told = ""
    Else
        Check name & ": " & text, InStr(told, text) > 0
    End If
End Sub

CheckRun "no script", "", 2, "usage: kwohost [--read] script"
CheckRun "missing file", "broken\no_such_file.vbs", 2, "kwohost: cannot read the script broken\no_such_file.vbs: "
CheckRun "other extension", "broken\script.txt", 2, "the name of a script ends in .vbs or .js"
CheckRun "folder", "broken", 2, "the name of a script ends in .vbs or .js"
CheckRun "neither encoding", "broken\ansi.vbs", 2, "neither UTF-8 nor UTF-16"
CheckRun "null character", "broken\null.vbs", 2, "null character in line 2"
CheckRun "swapped bytes", "broken\swapped.vbs", 2, "high byte first"
CheckRun "empty", "broken\empty.vbs", 0, ""
CheckRun "empty JScript", "broken\empty.js", 0, ""
CheckRun "only a byte order mark", "broken\only_a_mark.vbs", 0, ""
CheckRun "syntax error", "broken\syntax.vbs", 1, "syntax.vbs(2, "
CheckRun "syntax error in JScript", "broken\syntax.js", 1, "syntax.js(1, "
CheckRun "negative exit code", "broken\quit_negative.vbs", -5, ""
files.DeleteFile errorFile
WScript.Echo "done " & gChecks
