' A fault inside the engine of Wine is told with the line. Take this away when Wine can do what the last line does.
' expect-exit: 3
' expect-error: kwohost_engine_fault\.vbs\(9\): -1073741819 \(0xC0000005\) vbscript\.dll\+0x[0-9a-f]+: The script engine
Dim list()
WScript.Echo "ok before the fault"
WScript.Echo "done 1"

' The next line ends the engine.
ReDim list(3)
WScript.Echo "not ok Wine can do it"
