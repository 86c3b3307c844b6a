' The example of docs/sys-metrics.md.
' expect-output: ^[1-9][0-9]+ pixels$
' expect-output: ^[1-9][0-9]+ twips$
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

Check "twips", metrics.ScreenX(1) = metrics.ScreenX * Screen.TwipsPerPixelX
WScript.Echo "done " & count
