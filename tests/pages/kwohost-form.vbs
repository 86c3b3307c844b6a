' The form of docs/kwohost.md: pressed and closed by an alarm while it runs.
' expect-output: ^pressed at 495 600$
'@include checks.vbs
Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.AddRelativeAlarm 20, 1
turns = 0
Sub clock_Alarm(sender, tag, newDateTime)
    turns = turns + 1
    If Screen.ActiveForm Is Nothing And turns < 400 Then
        sender.AddRelativeAlarm 20, tag
        Exit Sub
    End If
    Check "it is shown", form.Visible
    Host.Click box, 495, 600
    form.Close
End Sub

'@example

Check "it ran until the end of the form", count = 1
WScript.Echo "done " & count
