' A fault inside a procedure that the host calls is told with its name. Take this away when Wine can do what it does.
' expect-exit: 3
' expect-error: kwohost_fault_in_procedure\.vbs\(8\): -1073741819 .*: The script engine or a component has failed in frm_Load;
Dim list()
Sub frm_Load
    WScript.Echo "ok before the fault"
    WScript.Echo "done 1"
    ReDim list(3)
End Sub
Host.CreateForm "frm"
WScript.Echo "not ok Wine can do it"
