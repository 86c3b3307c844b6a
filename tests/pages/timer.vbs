' The example of docs/timer.md for a good two seconds.
' expect-output: ^tick$
' expect-output: ^alarm 7$
Dim count
count = 0
Sub Check(name, good)
    count = count + 1
    If good Then
        WScript.Echo "ok " & name
    Else
        WScript.Echo "not ok " & name
    End If
End Sub

'@example

WScript.Sleep 2300
Check "the tick goes on", clock.Enabled
clock.CancelTimers
WScript.Echo "done " & count
