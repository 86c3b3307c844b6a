' Facts about the machine from KWOUtil.KWOUtility; a program that is started and then activated.
Option Explicit

Const NormalWindow = 1
Dim utility, found
Set utility = CreateObject("KWOUtil.KWOUtility")

WScript.Echo "Windows " & utility.KWO_WinMajorVersion & "." & utility.KWO_WinMinorVersion & ", NT family:", utility.KWO_IsWinNT
WScript.Echo "system folder:", utility.KWO_SystemDir
WScript.Echo "the same for a file name behind it:", utility.KWO_SystemDir(True)
WScript.Echo "Windows folder:", utility.KWO_WindowsDir

' Looks beside the library first, then along the path.
WScript.Echo "the library itself:", utility.KWO_FindInPath("KWOUtil.dll")
WScript.Echo "along the path:", utility.KWO_FindInPath("notepad.exe")
found = utility.KWO_FindInPath("no such file.txt")
WScript.Echo "what is not there: '" & found & "'"

' 200 means milliseconds; up to 32 would mean seconds.
Dim started
started = Timer
utility.KWO_Pause 200
WScript.Echo "paused for at least 0.2 s:", Timer - started >= 0.19

' Starts it once and activates it the second time. The quotation marks are for folder names with blanks: without them
' Windows would take C:\My.exe for C:\My Tools\tool.exe.
Dim task
task = utility.KWO_LoadApp("""" & utility.KWO_SystemDir(True), "notepad.exe""", "", NormalWindow, "Untitled - Notepad")
WScript.Echo "started:", task > 1
WScript.Sleep 1500
WScript.Echo "activated:", utility.KWO_LoadApp("""" & utility.KWO_SystemDir(True), "notepad.exe""", "", NormalWindow, "Untitled - Notepad") = 1
