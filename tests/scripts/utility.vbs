' The example of docs/utility.md with a program in a folder that has a blank in its name, beside a program that an
' unquoted command line would start.
Option Explicit

Dim checks
Sub Check(name, good)
    checks = checks + 1
    If good Then WScript.Echo "ok " & name Else WScript.Echo "not ok " & name
End Sub

Dim files, utility, folder, path, answer, task
Set files = CreateObject("Scripting.FileSystemObject")
Set utility = CreateObject("KWOUtil.KWOUtility")
folder = files.GetSpecialFolder(2).Path & "\" & files.GetTempName()
files.CreateFolder folder
files.CreateFolder folder & "\My Tools"
path = folder & "\My Tools\tool.exe"
answer = folder & "\answer.txt"
files.CopyFile WScript.FullName, path
files.CopyFile WScript.FullName, folder & "\My.exe"

' Both programs are this host; the script that they run says which one it is.
Dim script, stream
script = folder & "\tell.vbs"
Set stream = files.CreateTextFile(script)
stream.Write "Set files = CreateObject(""Scripting.FileSystemObject"")" & vbCrLf & _
    "Set stream = files.CreateTextFile(""" & answer & ".new"")" & vbCrLf & _
    "stream.Write WScript.FullName" & vbCrLf & "stream.Close" & vbCrLf & _
    "files.MoveFile """ & answer & ".new"", """ & answer & """" & vbCrLf
stream.Close

' What the started program says; empty when it says nothing.
Function Told()
    Dim waited, text
    For waited = 1 To 200
        If files.FileExists(answer) Then
            Set text = files.OpenTextFile(answer, 1)
            Told = text.ReadAll
            text.Close
            files.DeleteFile answer
            Exit Function
        End If
        WScript.Sleep 50
    Next
End Function

' The call of the page, with a parameter and a title of this test: not every script engine can execute a line as it is.
Dim page, line, example
Set page = files.OpenTextFile(files.GetParentFolderName(WScript.ScriptFullName) & "\..\..\docs\utility.md", 1)
Do Until page.AtEndOfStream
    line = page.ReadLine
    If example = "" And InStr(line, "utility.KWO_LoadApp(") > 0 Then example = line
Loop
page.Close
Check "the page quotes the path", _
    example = "If path <> """" Then task = utility.KWO_LoadApp("""", """""""" & path & """""""", ""/quiet"", 1, ""My Tool"")"
If path <> "" Then task = utility.KWO_LoadApp("", """" & path & """", """" & script & """", 1, "")
Check "a task was started", task > 1
Check "it is the program in the folder with a blank", LCase(Told()) = LCase(path)

task = utility.KWO_LoadApp("""" & folder & "\My Tools\", "tool.exe""", """" & script & """", 1, "")
Check "a task was started from path and name", task > 1
Check "it is that program again", LCase(Told()) = LCase(path)

' A program that has not quite ended yet cannot be deleted.
Dim turns
On Error Resume Next
For turns = 1 To 200
    files.DeleteFolder folder, True
    If Not files.FolderExists(folder) Then Exit For
    WScript.Sleep 50
Next
On Error GoTo 0
Check "both programs end", Not files.FolderExists(folder)
WScript.Echo "done " & checks
