' The example of docs/utility.md, and where a started program writes.
' expect-output: ^from the child
'@include checks.vbs

'@example

Check "no such tool", path = ""

' A child that may write, and one that is kept from it. Each makes a file when it has ended.
Set files = CreateObject("Scripting.FileSystemObject")
Function Ended(name)
    For turn = 1 To 400
        If files.FileExists(name) Then Exit For
        WScript.Sleep 50
    Next
    Ended = files.FileExists(name)
    If Ended Then files.DeleteFile name
End Function
utility.KWO_LoadApp "cmd.exe", "", "/c echo from the child& echo x >page-child.txt", 0, ""
Check "the child has ended", Ended("page-child.txt")
utility.KWO_LoadApp "cmd.exe", "", "/c (echo not ok a child that is kept from writing >nul 2>nul <nul)& echo x >page-child.txt", 0, ""
Check "the quiet child has ended", Ended("page-child.txt")
WScript.Echo "done " & count
