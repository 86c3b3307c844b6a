' The example of docs/utility.md, and where a started program writes.
' expect-output: ^from the child
'@include checks.vbs

'@example

Check "no such tool", path = ""

' A child that may write, and one that is kept from it. Each makes a file when it has ended.
Set files = CreateObject("Scripting.FileSystemObject")
Function Ended(name)
    deadline = Timer + 20
    Do Until files.FileExists(name) Or Timer > deadline
        WScript.Sleep 50
    Loop
    Ended = files.FileExists(name)
    If Ended Then files.DeleteFile name
End Function
utility.KWO_LoadApp "cmd.exe", "", "/c echo from the child& echo x >page-child.txt", 0, ""
Check "the child has ended", Ended("page-child.txt")
utility.KWO_LoadApp "cmd.exe", "", "/c (echo not ok a child that is kept from writing >nul 2>nul <nul)& echo x >page-child.txt", 0, ""
Check "the quiet child has ended", Ended("page-child.txt")
WScript.Echo "done " & count
